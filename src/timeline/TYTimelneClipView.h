#pragma once

#include <QWidget>

namespace timeline {

class TYTimelineView;

/// The window onto the rows. Drawing and events are the timeline view's.
class TYTimelneClipView : public QWidget {
  Q_OBJECT
 public:
  explicit TYTimelneClipView(TYTimelineView& view);

  /// Pixels painted since the program began, in logical units.
  [[nodiscard]] qint64 paintedPixels() const { return m_paintedPixels; }

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  TYTimelineView& m_view;
  qint64 m_paintedPixels = 0;
};

}  // namespace timeline
