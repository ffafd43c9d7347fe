#pragma once

#include <QWidget>
#include <memory>
#include <vector>

#include "store/Observation.h"
#include "timeline/KeyFrameSelection.h"
#include "timeline/TYTimelineGeometry.h"
#include "timeline/TimelineHost.h"
#include "timeline/TimelineRows.h"

namespace store {
struct ChangeSet;
}

namespace timeline {

class ClipPainter;
class TYTimelineScrollView;
class TimelineButtons;
class TimelineEditors;
class TimelineInput;
class TimelineKeyboard;
class TimelineObserver;
struct TimelineScene;

/// The timeline of a composition: title column, time ruler and rows, with their scroll bars. Shows
/// components as bars and key frames as diamonds over time and edits them by mouse and keyboard.
/// Works without a composition, showing nothing.
class TYTimelineView : public QWidget {
  Q_OBJECT
 public:
  explicit TYTimelineView(QWidget* parent = nullptr);
  ~TYTimelineView() override;

  [[nodiscard]] model::Composition* composition() const { return m_composition; }
  /// Shows another composition, or none. It must outlive the view or be taken away before it ends.
  void setComposition(model::Composition* composition);
  /// Ends every observation and whatever is going on.
  void cleanUp() { setComposition(nullptr); }
  /// The host must outlive the view.
  void setHost(TimelineHost& host) { m_host = &host; }
  [[nodiscard]] TimelineHost& host() const { return *m_host; }

  [[nodiscard]] const TYTimelineGeometry& timelineGeometry() const;
  [[nodiscard]] TimelineScene& scene() { return *m_scene; }
  [[nodiscard]] TimelineRows& rows();
  [[nodiscard]] TYTimelineScrollView& scrollView() const { return *m_scrollView; }
  [[nodiscard]] TimelineInput& input() const { return *m_input; }
  [[nodiscard]] TimelineEditors& editors() const { return *m_editors; }

  // Zoom
  /// From 0 to 1; below 0 where that is needed to see the whole duration.
  [[nodiscard]] double zoom() const { return timelineGeometry().zoom(); }
  /// Around the editor marker where it is seen, else around the middle.
  void setZoom(double zoom);
  /// The place that has this x in the rows' window stays there.
  void zoomAround(double x, double zoom);
  void zoomIn() { setZoom(zoom() + zoomStep); }
  void zoomOut() { setZoom(zoom() - zoomStep); }
  /// The whole duration from its beginning; short ones as large as the zoom goes. It is kept
  /// so when the view becomes wider or narrower, until another zoom is chosen.
  void zoomToFit();
  static constexpr double zoomStep = 0.08;

  // Scrolling
  /// Scrolls so far that the time is seen.
  void revealTime(double seconds);
  /// The same for the editor time, a page at a time, as is pleasant while playing.
  void followEditorTime();
  void revealRow(int row);
  [[nodiscard]] QSizeF visibleSize() const;
  void scrollBy(const QPointF& points);

  // What is to be brought up to date
  void updateSize();
  void updateTimelineRuler();
  void updateComponentsRuler();
  void updateClipView();
  void updateRow(int row);
  void updateAll();

  /// Attributes are announced with their values at the new time.
  enum class UpdateAttributes { No, Yes };
  /// Moves the editor time to the nearest tick.
  void setTime(double time, UpdateAttributes updateAttributes = UpdateAttributes::Yes);
  /// The row that the keyboard works on; -1 is the time ruler with its stop frames.
  [[nodiscard]] int currentRow() const;
  void setCurrentRow(int row);
  /// The row that the pointer is over, or -1.
  [[nodiscard]] int componentMouseOverRow() const;
  void setMouseOver(int row, bool eye);
  enum class Expanded { One, All };
  /// Shows or hides the attributes of a component, or of all.
  void setExpanded(model::QuartzComponent& component, bool expanded, Expanded which);
  /// The buttons in the corner and in rows; the point is one of the ruler they are in. False where
  /// there is no button.
  bool clickInCorner(const QPointF& point);
  bool clickOnAttributeButtons(int row, const QPointF& point);
  /// Whether a click there would do something.
  [[nodiscard]] bool isOnAttributeButtons(int row, const QPointF& point) const;

  /// A key as if it was pressed here. True when it did something.
  bool press(const QKeyEvent& event);

  // Drawing, for the widgets inside; pixels of the widget
  void drawClipInView(QPainter& painter, const QRectF& rect);
  void drawRulerInView(QPainter& painter, Qt::Orientation orientation, const QRectF& rect);

 Q_SIGNALS:
  void zoomChanged(double zoom);
  /// 0, or less where the duration needs it to be seen whole.
  void leastZoomChanged(double zoom);

 protected:
  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  friend class TYTimelineScrollView;
  void scrolled();
  /// Through the window, or by a scroll bar that comes or goes.
  void visibleSizeChanged();
  void takeContent();
  void timeChanged();
  void rowsChanged();
  void findCurrentRow();
  void followVisibleRows();
  void attributeChanged(const model::Attribute& attribute);
  void updateZoomRange();
  void zoomKeeping(double time, double x, double zoom);
  void setNeedsRows();
  void updateButtons();
  [[nodiscard]] std::pair<int, int> visibleRows() const;

  model::Composition* m_composition = nullptr;
  TimelineHost* m_host;
  std::unique_ptr<TimelineScene> m_scene;
  std::unique_ptr<ClipPainter> m_painter;
  std::unique_ptr<TimelineButtons> m_buttons;
  std::unique_ptr<TimelineKeyboard> m_keyboard;
  std::unique_ptr<TimelineObserver> m_observer;
  std::unique_ptr<TimelineInput> m_input;
  std::unique_ptr<TimelineEditors> m_editors;
  TYTimelineScrollView* m_scrollView;
  store::ObjectId m_currentObject = 0;  ///< the component or attribute of the current row
  int m_markerX = 0;                    ///< where the editor marker was painted last
  bool m_rowsAreDue = false;
  double m_fittedWidth = 0;
  bool m_isFitted = true;             ///< and stays so while nobody chooses a zoom
  std::pair<int, int> m_buttonFlags;  ///< that were painted
};

}  // namespace timeline
