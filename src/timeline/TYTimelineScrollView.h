#pragma once

#include <QAbstractScrollArea>

namespace timeline {

class TYTimelineRulerView;
class TYTimelineView;
class TYTimelneClipView;

/// Scrolls the rows below the time ruler and beside the title column.
class TYTimelineScrollView : public QAbstractScrollArea {
  Q_OBJECT
 public:
  explicit TYTimelineScrollView(TYTimelineView& view);

  [[nodiscard]] TYTimelneClipView& clipView() const { return *m_clipView; }
  [[nodiscard]] TYTimelineRulerView& horizontalRuler() const { return *m_horizontal; }
  [[nodiscard]] TYTimelineRulerView& verticalRuler() const { return *m_vertical; }
  /// The size of all rows, in logical pixels.
  void setDocumentSize(const QSizeF& size);
  void setComponentsWidth(int width);
  [[nodiscard]] QPoint visibleOrigin() const;
  void scrollTo(const QPointF& origin);
  /// With Shift the wheel goes sideways.
  void turnWheel(QWheelEvent& event);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  bool viewportEvent(QEvent* event) override;

 private:
  void placeRulers();
  void updateRanges();

  TYTimelineView& m_view;
  TYTimelneClipView* m_clipView;
  TYTimelineRulerView* m_horizontal;
  TYTimelineRulerView* m_vertical;
  QSizeF m_documentSize;
  int m_componentsWidth = 0;
};

}  // namespace timeline
