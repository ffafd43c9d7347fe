#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include "canvas/CanvasKeyboard.h"
#include "canvas/CanvasObserver.h"
#include "canvas/CanvasReporter.h"
#include "canvas/CanvasScene.h"
#include "canvas/GestureRunner.h"
#include "canvas/RulerScale.h"
#include "canvas/ZoomInput.h"
#include "model/StandardComponents.h"

namespace canvas {

class GesturePicker;
class InPlaceTextEditor;
class TYZoomScrollView;

/// The editing surface of a document: shows a composition at its broadcast size, zoomed and
/// centred, and edits it by mouse and keyboard. Works without a composition, showing nothing.
/// Positions of components are pixels of the picture, y up; everything else logical pixels, y down.
class CompositionView : public QWidget {
  Q_OBJECT
 public:
  explicit CompositionView(
      model::StandardComponents standardComponents = model::StandardComponents::located(),
      QWidget* parent = nullptr);
  ~CompositionView() override;

  [[nodiscard]] model::Composition* composition() const { return m_composition; }
  /// Shows another composition, or none. It must outlive the view or be taken away before it ends.
  void setComposition(model::Composition* composition, CompositionLayer::Clocks clocks = {});
  /// Ends every observation and whatever is going on.
  void cleanUp() { setComposition(nullptr); }
  /// The host must outlive the view.
  void setHost(CanvasHost& host) { m_reporter.setHost(host); }
  void setScrollView(TYZoomScrollView* scrollView) { m_scrollView = scrollView; }
  [[nodiscard]] TYZoomScrollView* scrollView() const { return m_scrollView; }

  // Geometry
  [[nodiscard]] const CanvasGeometry& geometryOfPicture() const { return m_geometry; }
  [[nodiscard]] float zoomFactor() const { return m_geometry.zoomFactor(); }
  [[nodiscard]] double zoomedDocumentWidth() const { return m_geometry.zoomedDocumentWidth(); }
  [[nodiscard]] double zoomedDocumentHeight() const { return m_geometry.zoomedDocumentHeight(); }
  [[nodiscard]] RulerUnit rulerUnit() const;
  /// Around all selected components, in pixels of the picture; null without a selection.
  [[nodiscard]] QRectF selectionExtent() const;
  /// Follows the zoom mode, the size of the window and that of the picture.
  void updateBoundsForZoom();
  void setRulerOffsets();
  /// A step up or down around the middle of what is seen.
  void zoomIn() { m_zoomInput.step(1, visiblePart().center()); }
  void zoomOut() { m_zoomInput.step(-1, visiblePart().center()); }

  // Selection
  [[nodiscard]] QList<model::QuartzComponent*> selectedComponents() const;
  void moveSelectedComponentsByDelta(double deltaX, double deltaY);
  void moveSelectedComponentsByDeltaX(double delta) { moveSelectedComponentsByDelta(delta, 0); }
  void moveSelectedComponentsByDeltaY(double delta) { moveSelectedComponentsByDelta(0, delta); }
  [[nodiscard]] bool canAlign() const { return selectedComponents().size() >= 2; }
  [[nodiscard]] bool canDistribute() const { return selectedComponents().size() >= 3; }
  void updateActionButtons() { Q_EMIT actionButtonsChanged(canAlign(), canDistribute()); }
  void togglePlay();
  [[nodiscard]] static bool hasText(const model::QuartzComponent& component);
  /// Begins editing the text of the component; false when it has none.
  bool editText(model::QuartzComponent& component);
  [[nodiscard]] InPlaceTextEditor* textEditor() const;

  // Time code
  [[nodiscard]] bool showTimecode() const { return m_timecodeTimer.isActive(); }
  void setShowTimecode(bool shows);
  void hideTimecode() { setShowTimecode(false); }

  // Components from files
  [[nodiscard]] static QVariantHash argumentsAtTime(double time, bool playing);
  /// See ComponentDrop. What is added stands in the middle of the picture.
  bool addComponentsFromPaths(const QStringList& paths, bool commandKeyPressed);

  /// Adds the component of an item of the toolbar, or of an entry of its menu. False when there is
  /// none, or it could not be made.
  bool addToolbarComponent(const QString& identifier, int subcomponent = -1);

  // Guides, for the rulers
  /// Locked guides stay where they are and take no clicks.
  void setGuidesLocked(bool locked) { m_guidesLocked = locked; }
  [[nodiscard]] bool guidesLocked() const { return m_guidesLocked; }
  /// Pulls a new guide until the gesture ends. Points are those of the screen.
  void pullGuide(Qt::Orientation orientation);
  /// A double click in a ruler sets a guide across the other direction.
  void addGuideFromRuler(Qt::Orientation ruler, const QPointF& globalPoint);
  void continueGesture(const QPointF& globalPoint, Qt::KeyboardModifiers modifiers);
  void endGesture(const QPointF& globalPoint, Qt::KeyboardModifiers modifiers);
  void cancelGesture();
  [[nodiscard]] bool isInGesture() const { return m_gestures.isActive(); }

  /// Brings the picture up to date now, instead of when events are through.
  void displayIfNeeded() { display({}); }
  /// None without a composition.
  [[nodiscard]] CanvasScene* scene() const { return m_scene.get(); }

 Q_SIGNALS:
  void actionButtonsChanged(bool canAlign, bool canDistribute);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  class Stage;
  /// Asks for painting of what changed, less what is about to be painted anyway.
  void display(const QRegion& beingPainted);
  void observeComposition();
  void setNeedsDisplay();
  void scheduleRefresh();
  [[nodiscard]] QRect visiblePart() const;
  [[nodiscard]] Pointer pointerAt(const QPointF& viewPoint, Qt::KeyboardModifiers modifiers) const;
  [[nodiscard]] GesturePicker picker() const;
  void updateCursor(const Pointer& pointer);
  void setDropTarget(bool isTarget);

  model::StandardComponents m_standardComponents;
  model::Composition* m_composition = nullptr;
  CanvasReporter m_reporter{*this};
  TYZoomScrollView* m_scrollView = nullptr;
  CanvasGeometry m_geometry;
  std::unique_ptr<CanvasScene> m_scene;
  std::unique_ptr<CanvasObserver> m_observer;
  std::unique_ptr<CanvasKeyboard> m_keyboard;
  std::unique_ptr<Stage> m_stage;
  GestureRunner m_gestures;  // ends before what it works on
  QPointer<InPlaceTextEditor> m_textEditor;
  ZoomInput m_zoomInput{*this};
  bool m_guidesLocked = false;
  QTimer m_displayTimer;
  QTimer m_refreshTimer;
  QTimer m_timecodeTimer;
};

}  // namespace canvas
