#pragma once

#include <QWidget>

namespace timeline {

class TYTimelineView;

/// The time ruler above the rows, with the corner at its left, or the title column beside them.
/// Drawing and events are the timeline view's.
class TYTimelineRulerView : public QWidget {
  Q_OBJECT
 public:
  TYTimelineRulerView(TYTimelineView& view, Qt::Orientation orientation, QWidget* parent);

  [[nodiscard]] Qt::Orientation orientation() const { return m_orientation; }
  [[nodiscard]] qint64 paintedPixels() const { return m_paintedPixels; }

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  TYTimelineView& m_view;
  Qt::Orientation m_orientation;
  qint64 m_paintedPixels = 0;
};

}  // namespace timeline
