#include "canvas/CompositionView.h"

#include <QDragEnterEvent>
#include <QGestureEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPainter>
#include <QWheelEvent>
#include <cmath>

#include "canvas/CanvasHost.h"
#include "canvas/ComponentDrop.h"
#include "canvas/ComponentWalk.h"
#include "canvas/CompositionStage.h"
#include "canvas/CompositionViewAccessible.h"
#include "canvas/GesturePicker.h"
#include "canvas/GuideGesture.h"
#include "canvas/InPlaceTextEditor.h"
#include "canvas/PanGesture.h"
#include "canvas/RulerPainter.h"
#include "canvas/TYZoomScrollView.h"
#include "canvas/TimecodePlate.h"
#include "canvas/ToolbarComponents.h"
#include "model/Composition.h"
#include "model/PlayoutArguments.h"
#include "widgets/TYStyleKit.h"

namespace canvas {

using model::QuartzComponent;

namespace {

constexpr int refreshInterval = 1000;   // milliseconds, while the picture stands
constexpr int timecodeDuration = 1500;  // milliseconds after the last change of time

}  // namespace

CompositionView::CompositionView(model::StandardComponents standardComponents, QWidget* parent)
    : QWidget(parent), m_standardComponents(std::move(standardComponents)) {
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setAcceptDrops(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  grabGesture(Qt::PinchGesture);
  setAccessibleName(tr("Canvas"));
  CompositionViewAccessible::install();
  m_displayTimer.setSingleShot(true);
  m_refreshTimer.setSingleShot(true);
  m_timecodeTimer.setSingleShot(true);
  m_refreshTimer.setInterval(refreshInterval);
  m_timecodeTimer.setInterval(timecodeDuration);
  connect(&m_displayTimer, &QTimer::timeout, this, &CompositionView::displayIfNeeded);
  connect(&m_refreshTimer, &QTimer::timeout, this, [this] {
    m_scene->componentsLayer().setNeedsRefresh();
    displayIfNeeded();
  });
  connect(&m_timecodeTimer, &QTimer::timeout, this, &CompositionView::hideTimecode);
  connect(&widgets::TYStyleKit::shared(), &widgets::TYStyleKit::themeChanged, this, [this] {
    if (m_scene) m_scene->dropGround();
    update();
  });
}

CompositionView::~CompositionView() {
  cleanUp();
}

void CompositionView::setComposition(model::Composition* composition,
                                     CompositionLayer::Clocks clocks) {
  m_gestures.cancel();
  if (m_textEditor) m_textEditor->drop();
  m_displayTimer.stop();
  m_refreshTimer.stop();
  m_timecodeTimer.stop();
  m_observer.reset();
  m_keyboard.reset();
  m_stage.reset();
  m_scene.reset();
  m_composition = composition;
  if (composition) {
    m_scene = std::make_unique<CanvasScene>(*composition, std::move(clocks));
    m_scene->componentsLayer().setReady([this] { m_displayTimer.start(0); });
    m_stage = std::make_unique<Stage>(*this);
    m_keyboard = std::make_unique<CanvasKeyboard>(*composition);
    observeComposition();
  }
  updateBoundsForZoom();
  updateActionButtons();
  update();
}

void CompositionView::observeComposition() {
  CanvasObserver::Callbacks callbacks;
  callbacks.componentChanged = [this](const QuartzComponent& component) {
    m_scene->componentsLayer().setNeedsDisplay(component);
    m_displayTimer.start(0);
  };
  callbacks.componentsChanged = [this] { m_displayTimer.start(0); };
  callbacks.zoomChanged = [this] {
    const QPointF middle = m_geometry.picturePoint(QRectF(visiblePart()).center());
    updateBoundsForZoom();
    const QPointF moved = m_geometry.viewPoint(middle) - QRectF(visiblePart()).center();
    if (m_scrollView) m_scrollView->scrollBy(moved);
  };
  callbacks.timeChanged = [this] {
    setNeedsDisplay();
    setShowTimecode(true);
  };
  callbacks.playModeChanged = [this] { setNeedsDisplay(); };
  callbacks.selectionChanged = [this] {
    m_displayTimer.start(0);
    updateActionButtons();
    m_reporter.tellSelection();
  };
  callbacks.overlaysChanged = [this] { update(); };
  m_observer = std::make_unique<CanvasObserver>(*m_composition, std::move(callbacks));
}

// What is shown

void CompositionView::setNeedsDisplay() {
  if (!m_scene) return;
  m_scene->componentsLayer().setNeedsDisplay();
  m_displayTimer.start(0);
}

void CompositionView::display(const QRegion& beingPainted) {
  m_displayTimer.stop();
  if (!m_scene || !isVisible()) return;
  const QRegion changed =
      m_scene->display(m_geometry, visiblePart(), devicePixelRatioF()) - beingPainted;
  if (!changed.isEmpty()) update(changed);
  if (m_scene->backgroundChanged()) update();
  if (m_textEditor) m_textEditor->place(m_geometry);
  setRulerOffsets();
  scheduleRefresh();
}

void CompositionView::scheduleRefresh() {
  // Clocks and the like go on while nobody does anything.
  if (m_composition && !m_composition->playMode()) m_refreshTimer.start();
}

QRect CompositionView::visiblePart() const {
  if (!parentWidget()) return rect();
  return rect() & QRect(-pos(), parentWidget()->size());
}

void CompositionView::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  if (!m_scene) {
    painter.fillRect(event->rect(), widgets::TYStyleKit::colour(widgets::Token::CanvasSurround));
    return;
  }
  if (!m_scene->isDisplayed(m_geometry, visiblePart(), devicePixelRatioF()))
    display(event->region());
  m_scene->paint(painter);
}

void CompositionView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  setNeedsDisplay();
}

void CompositionView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && m_scene) {
    m_scene->dropGround();
    update();
  }
}

void CompositionView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  m_geometry = CanvasGeometry(m_geometry.picture(), size(), m_geometry.zoomFactor());
  setRulerOffsets();
  m_displayTimer.start(0);
}

void CompositionView::moveEvent(QMoveEvent* event) {
  QWidget::moveEvent(event);
  if (m_scene) update(visiblePart());
}

void CompositionView::setShowTimecode(bool shows) {
  if (!m_scene) return;
  QString& shown = m_scene->transient().timecode;
  QRegion touched = m_scene->timecodePlace();
  shown.clear();
  if (shows) {
    shown = TimecodePlate::textFor(*m_composition);
    m_timecodeTimer.start();
  } else {
    m_timecodeTimer.stop();
  }
  touched += m_scene->timecodePlace();
  update(touched);
}

// Geometry

void CompositionView::updateBoundsForZoom() {
  const QSizeF picture = m_composition ? m_composition->size() : QSizeF();
  const QSizeF content = m_scrollView ? m_scrollView->viewport()->size() : size();
  const double ruler = m_scrollView ? RulerPainter::thickness : 0;
  const float zoom = CanvasGeometry::zoomFactor(m_composition ? m_composition->zoomMode() : 100,
                                                content, picture, {ruler, ruler});
  m_geometry = CanvasGeometry(picture, size(), zoom);
  if (m_scrollView) m_scrollView->updateDocumentView();
  m_geometry = CanvasGeometry(picture, size(), zoom);
  setRulerOffsets();
  setNeedsDisplay();
  update();
}

void CompositionView::setRulerOffsets() {
  if (m_scrollView) m_scrollView->updateRulers();
}

RulerUnit CompositionView::rulerUnit() const {
  return RulerUnit::forZoomMode(m_composition ? m_composition->zoomMode() : 100, zoomFactor());
}

QRectF CompositionView::selectionExtent() const {
  QRectF extent;
  for (const QuartzComponent* component : selectedComponents()) extent |= component->drawingFrame();
  return extent;
}

void CompositionView::wheelEvent(QWheelEvent* event) {
  if (event->modifiers().testFlag(Qt::ControlModifier))
    m_zoomInput.turnWheel(*event);
  else
    event->ignore();
}

// Selection

QList<QuartzComponent*> CompositionView::selectedComponents() const {
  return m_composition ? m_composition->selectedComponents() : QList<QuartzComponent*>();
}

void CompositionView::moveSelectedComponentsByDelta(double deltaX, double deltaY) {
  if (m_keyboard) m_keyboard->nudging().moveSelection(deltaX, deltaY);
}

void CompositionView::togglePlay() {
  if (m_composition) m_composition->setPlayMode(!m_composition->playMode());
}

InPlaceTextEditor* CompositionView::textEditor() const {
  return m_textEditor;
}

bool CompositionView::hasText(const QuartzComponent& component) {
  return InPlaceTextEditor::textOf(component) != nullptr;
}

bool CompositionView::editText(QuartzComponent& component) {
  model::Attribute* text = InPlaceTextEditor::textOf(component);
  if (!text) return false;
  if (m_textEditor) m_textEditor->keep();
  m_textEditor = new InPlaceTextEditor(component, *text, this);
  m_textEditor->place(m_geometry);
  m_textEditor->show();
  m_textEditor->setFocus();
  return true;
}

// Components from files

QVariantHash CompositionView::argumentsAtTime(double time, bool playing) {
  return model::PlayoutArguments::argumentsAtTime(time, playing);
}

bool CompositionView::addComponentsFromPaths(const QStringList& paths, bool commandKeyPressed) {
  if (!m_composition) return false;
  return ComponentDrop(*m_composition, m_standardComponents, m_reporter.host())
      .addComponentsFromPaths(paths, commandKeyPressed);
}

bool CompositionView::addToolbarComponent(const QString& identifier, int subcomponent) {
  const QString name = ToolbarComponents::shared().componentFor(identifier, subcomponent);
  const auto path = m_standardComponents.pathOf(name);
  return path && addComponentsFromPaths({*path}, false);
}

void CompositionView::setDropTarget(bool isTarget) {
  if (!m_scene) return;
  m_scene->transient().isDropTarget = isTarget;
  update();
}

void CompositionView::dragEnterEvent(QDragEnterEvent* event) {
  if (!m_composition || !ComponentDrop::canTake(*event->mimeData())) return;
  event->setDropAction(Qt::CopyAction);
  event->accept();
  setDropTarget(true);
}

void CompositionView::dragLeaveEvent(QDragLeaveEvent*) {
  setDropTarget(false);
}

void CompositionView::dropEvent(QDropEvent* event) {
  setDropTarget(false);
  if (!m_composition) return;
  const bool commandKey = event->modifiers().testFlag(Qt::ControlModifier);
  ComponentDrop drop(*m_composition, m_standardComponents, m_reporter.host());
  drop.setPlace(m_geometry.picturePoint(event->position()));
  if (!drop.take(*event->mimeData(), commandKey)) return;
  event->setDropAction(Qt::CopyAction);
  event->accept();
  setFocus(Qt::OtherFocusReason);
}

// Mouse

Pointer CompositionView::pointerAt(const QPointF& viewPoint,
                                   Qt::KeyboardModifiers modifiers) const {
  return {m_geometry.picturePoint(viewPoint), viewPoint, viewPoint + pos(), modifiers,
          QRectF(visiblePart()).contains(viewPoint)};
}

void CompositionView::mousePressEvent(QMouseEvent* event) {
  if (!m_composition || m_gestures.isActive()) return;
  if (m_textEditor) m_textEditor->keep();
  m_keyboard->nudging().finish();
  const Pointer pointer = pointerAt(event->position(), event->modifiers());
  const bool pans = event->button() == Qt::MiddleButton ||
                    (event->button() == Qt::LeftButton && m_keyboard->holdsSpace());
  if (pans) {
    m_keyboard->useSpace();
    m_gestures.begin(std::make_unique<PanGesture>(*m_stage, pointer), event->button());
  } else if (event->button() == Qt::LeftButton) {
    m_gestures.begin(picker().press(*m_stage, pointer), event->button());
  } else {
    event->ignore();
  }
}

void CompositionView::mouseMoveEvent(QMouseEvent* event) {
  if (!m_composition) return;
  const Pointer pointer = pointerAt(event->position(), event->modifiers());
  m_reporter.tellPointer(event->position());
  if (m_gestures.isActive() && !event->buttons().testFlag(m_gestures.button()))
    m_gestures.finish(pointer);  // released where nobody told the view
  if (m_gestures.isActive())
    m_gestures.update(pointer);
  else
    updateCursor(pointer);
}

void CompositionView::mouseReleaseEvent(QMouseEvent* event) {
  if (!m_composition || event->button() != m_gestures.button()) return;
  const Pointer pointer = pointerAt(event->position(), event->modifiers());
  m_gestures.finish(pointer);
  updateCursor(pointer);
}

void CompositionView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (!m_composition || event->button() != Qt::LeftButton) return;
  const Pointer pointer = pointerAt(event->position(), event->modifiers());
  QuartzComponent* component = picker().componentAt(pointer);
  if (!component || event->modifiers() != Qt::NoModifier || !editText(*component))
    mousePressEvent(event);
}

GesturePicker CompositionView::picker() const {
  return {*m_composition, m_geometry,
          m_guidesLocked ? GesturePicker::Guides::Locked : GesturePicker::Guides::Free};
}

void CompositionView::contextMenuEvent(QContextMenuEvent* event) {
  if (!m_composition || m_gestures.isActive()) return;
  const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
  const QRectF extent = m_geometry.viewRect(selectionExtent());
  const QPointF point =
      byMouse || selectionExtent().isNull() ? QPointF(event->pos()) : extent.center();
  if (byMouse) picker().selectForMenu(pointerAt(point, event->modifiers()));
  QMenu menu(this);
  m_reporter.host().fillContextMenu(menu, *m_composition);
  if (!menu.isEmpty()) menu.exec(mapToGlobal(point.toPoint()));
}

void CompositionView::updateCursor(const Pointer& pointer) {
  if (m_keyboard->holdsSpace())
    setCursor(Qt::OpenHandCursor);
  else
    setCursor(picker().cursorAt(pointer));
}

void CompositionView::leaveEvent(QEvent* event) {
  QWidget::leaveEvent(event);
  m_reporter.tellPointer(std::nullopt);
}

// Guides out of the rulers

void CompositionView::pullGuide(Qt::Orientation orientation) {
  if (!m_composition) return;
  setFocus(Qt::MouseFocusReason);  // for Escape
  m_gestures.begin(std::make_unique<GuideGesture>(*m_stage, orientation), Qt::LeftButton);
}

void CompositionView::addGuideFromRuler(Qt::Orientation ruler, const QPointF& globalPoint) {
  cancelGesture();
  if (!m_composition) return;
  const QPointF point = m_geometry.picturePoint(mapFromGlobal(globalPoint));
  const bool isHorizontal = ruler == Qt::Vertical;
  m_composition->addRulerAtPosition(isHorizontal ? point.y() : point.x(), isHorizontal);
}

void CompositionView::continueGesture(const QPointF& globalPoint, Qt::KeyboardModifiers modifiers) {
  const QPointF point = mapFromGlobal(globalPoint);
  if (m_gestures.isActive()) m_gestures.update(pointerAt(point, modifiers));
}

void CompositionView::endGesture(const QPointF& globalPoint, Qt::KeyboardModifiers modifiers) {
  if (!m_gestures.isActive()) return;
  m_gestures.finish(pointerAt(mapFromGlobal(globalPoint), modifiers));
  unsetCursor();
}

void CompositionView::cancelGesture() {
  m_gestures.cancel();
  unsetCursor();
}

// Keyboard

bool CompositionView::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool cancels = key->key() == Qt::Key_Escape && m_gestures.isActive();
    if (cancels || (m_keyboard && m_keyboard->claims(*key))) event->accept();
    return true;
  }
  // Nobody would tell the view when the button is released.
  if (event->type() == QEvent::Hide) cancelGesture();
  if (event->type() == QEvent::ToolTip)
    return m_reporter.tellProblem(*static_cast<QHelpEvent*>(event));
  if (event->type() == QEvent::NativeGesture) {
    m_zoomInput.pinch(*static_cast<QNativeGestureEvent*>(event));
    return true;
  }
  if (event->type() == QEvent::Gesture && m_zoomInput.pinch(*static_cast<QGestureEvent*>(event)))
    return true;
  return QWidget::event(event);
}

void CompositionView::keyPressEvent(QKeyEvent* event) {
  m_gestures.updateModifiers(event->modifiers());
  if (event->key() == Qt::Key_Escape && m_gestures.isActive()) {
    cancelGesture();
  } else if (event->key() == Qt::Key_F2 && selectedComponents().size() == 1) {
    editText(*selectedComponents().first());
  } else if (!m_keyboard || m_gestures.isActive() || !m_keyboard->press(*event)) {
    QWidget::keyPressEvent(event);
  } else if (m_keyboard->holdsSpace()) {
    setCursor(Qt::OpenHandCursor);
  }
}

void CompositionView::keyReleaseEvent(QKeyEvent* event) {
  m_gestures.updateModifiers(event->modifiers());
  if (!m_keyboard || !m_keyboard->release(*event))
    QWidget::keyReleaseEvent(event);
  else if (!m_gestures.isActive())
    unsetCursor();
}

void CompositionView::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  const bool forwards = event->reason() == Qt::TabFocusReason;
  if (m_composition && (forwards || event->reason() == Qt::BacktabFocusReason) &&
      selectedComponents().isEmpty())
    walkSelection(*m_composition, forwards);
}

void CompositionView::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  if (m_keyboard) m_keyboard->letGo();
}

bool CompositionView::focusNextPrevChild(bool next) {
  const bool walks = hasFocus() && m_composition && !m_gestures.isActive();
  return (walks && walkSelection(*m_composition, next)) || QWidget::focusNextPrevChild(next);
}

}  // namespace canvas
