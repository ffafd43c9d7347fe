#include "timeline/TYTimelineView.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QPainter>
#include <cmath>

#include "model/Composition.h"
#include "timeline/ClipPainter.h"
#include "timeline/TYTimelineRulerView.h"
#include "timeline/TYTimelineScrollView.h"
#include "timeline/TYTimelineViewAccessible.h"
#include "timeline/TYTimelneClipView.h"
#include "timeline/TimeRulerPainter.h"
#include "timeline/TimelineButtons.h"
#include "timeline/TimelineEditors.h"
#include "timeline/TimelineInput.h"
#include "timeline/TimelineKeyboard.h"
#include "timeline/TimelineMenu.h"
#include "timeline/TimelineObserver.h"
#include "timeline/TitlePainter.h"
#include "widgets/TYStyleKit.h"

namespace timeline {

using model::Composition;
using model::QuartzComponent;
using Measures = TimelineMeasures;
using Space = TYTimelineGeometry::Space;

namespace {

constexpr int narrowView = 1080;
constexpr double pageShare = 0.1;  // of the width, before the marker on a new page
constexpr double revealMargin = 16;

TimelineHost& silentHost() {
  static TimelineHost host;
  return host;
}

}  // namespace

TYTimelineView::TYTimelineView(QWidget* parent)
    : QWidget(parent),
      m_host(&silentHost()),
      m_scene(std::make_unique<TimelineScene>()),
      m_painter(std::make_unique<ClipPainter>()),
      m_buttons(std::make_unique<TimelineButtons>()),
      m_keyboard(std::make_unique<TimelineKeyboard>(*this)),
      m_input(std::make_unique<TimelineInput>(*this)),
      m_editors(std::make_unique<TimelineEditors>(*this)),
      m_scrollView(new TYTimelineScrollView(*this)) {
  TYTimelineViewAccessible::install();
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName(tr("Timeline"));
  setMinimumHeight(
      static_cast<int>(TYTimelineGeometry::rulerThickness + 4 * Measures::componentHeight));
  connect(&widgets::TYStyleKit::shared(), &widgets::TYStyleKit::themeChanged, this, [this] {
    m_painter->rowPainter().forgetStamps();
    updateAll();
  });
}

TYTimelineView::~TYTimelineView() {
  cleanUp();
  delete m_scrollView;  // it hands its events to what ends with this
}

void TYTimelineView::setComposition(Composition* composition) {
  m_input->cancelGesture();
  m_editors->close();
  m_observer.reset();
  m_painter->rowPainter().forgetAllCurves();
  m_composition = composition;
  m_scene->composition = composition;
  m_scene->rows.setComposition(composition);
  setCurrentRow(0);
  m_scene->componentMouseOverRow = -1;
  m_input->selecting().forgetLast();
  if (composition)
    m_observer = std::make_unique<TimelineObserver>(
        *composition,
        TimelineObserver::Callbacks{
            .rowsChanged = [this] { setNeedsRows(); },
            .componentChanged =
                [this](const QuartzComponent& component) {
                  updateRow(m_scene->rows.rowOf(component));
                },
            .attributeChanged = [this](const model::Attribute& a) { attributeChanged(a); },
            .selectionChanged = [this] { updateComponentsRuler(); },
            .stopFramesChanged =
                [this] {
                  updateTimelineRuler();
                  updateClipView();
                },
            .timeChanged = [this] { timeChanged(); },
            .durationChanged = [this] { updateSize(); },
            .playModeChanged = [this] { updateTimelineRuler(); }});
  updateSize();
  m_scrollView->scrollTo({0, 0});
  if (composition && isVisible() && m_isFitted) zoomToFit();
}

const TYTimelineGeometry& TYTimelineView::timelineGeometry() const {
  return m_scene->geometry;
}

TimelineRows& TYTimelineView::rows() {
  return m_scene->rows;
}

void TYTimelineView::takeContent() {
  TYTimelineGeometry::Content content;
  if (m_composition)
    content = {.duration = m_composition->duration(),
               .editorTimepoint = m_composition->editorTimepoint(),
               .ticksPerSecond = m_composition->ticksPerSecond(),
               .rate = TYTimelineGeometry::rateOf(*m_composition),
               .rows = m_scene->rows.count()};
  m_scene->geometry.setContent(content);
  m_markerX = static_cast<int>(m_scene->geometry.positionOfEditorTimeInRuler(Space::Ruler));
}

// Zoom

void TYTimelineView::zoomKeeping(double time, double x, double zoom) {
  updateZoomRange();
  TYTimelineGeometry& geometry = m_scene->geometry;
  const double before = geometry.zoom();
  geometry.setZoom(zoom);
  if (geometry.zoom() == before) return;
  m_editors->finish();
  updateSize();
  m_scrollView->scrollTo({TYTimelineGeometry::xOffset + geometry.xPositionAtTime(time) - x,
                          geometry.visibleOrigin().y()});
  Q_EMIT zoomChanged(geometry.zoom());
}

void TYTimelineView::zoomAround(double x, double zoom) {
  m_isFitted = false;
  zoomKeeping(m_scene->geometry.secondsAt(x, Space::Ruler), x, zoom);
}

void TYTimelineView::setZoom(double zoom) {
  const double marker = m_scene->geometry.positionOfEditorTimeInRuler(Space::Ruler);
  const double width = visibleSize().width();
  zoomAround(marker >= 0 && marker <= width ? marker : width / 2, zoom);
}

void TYTimelineView::visibleSizeChanged() {
  scrolled();
  updateZoomRange();
  if (m_composition && isVisible() && m_isFitted && visibleSize().width() != m_fittedWidth)
    zoomToFit();
}

void TYTimelineView::zoomToFit() {
  m_fittedWidth = visibleSize().width();
  const double room = visibleSize().width() - TYTimelineGeometry::spaceBehindEnd;
  const double duration = std::max(m_scene->geometry.content().duration, 0.001);
  zoomKeeping(0, TYTimelineGeometry::xOffset,
              TYTimelineGeometry::zoomForUnitWidth(room / duration));
  m_scrollView->scrollTo({0, m_scene->geometry.visibleOrigin().y()});
  m_isFitted = true;
}

// Scrolling

QSizeF TYTimelineView::visibleSize() const {
  return m_scrollView->clipView().size();
}

void TYTimelineView::scrollBy(const QPointF& points) {
  m_scrollView->scrollTo(QPointF(m_scrollView->visibleOrigin()) + points);
}

void TYTimelineView::revealTime(double seconds) {
  const double x = m_scene->geometry.xPositionAtTime(seconds, Space::Ruler);
  const double width = visibleSize().width();
  if (x < revealMargin)
    scrollBy({x - revealMargin, 0});
  else if (x > width - revealMargin)
    scrollBy({x - width + revealMargin, 0});
}

void TYTimelineView::followEditorTime() {
  const double x = m_scene->geometry.positionOfEditorTimeInRuler(Space::Ruler);
  const double width = visibleSize().width();
  if (x < 0 || x > width - revealMargin) scrollBy({x - width * pageShare, 0});
}

void TYTimelineView::revealRow(int row) {
  if (row < 0) return;
  const double top = row * Measures::componentHeight - m_scene->geometry.visibleOrigin().y();
  const double room = visibleSize().height() - Measures::componentHeight;
  if (top < 0)
    scrollBy({0, top});
  else if (top > room)
    scrollBy({0, std::min(top, top - room)});
}

void TYTimelineView::scrolled() {
  const QPoint origin = m_scrollView->visibleOrigin();
  const QPoint moved = m_scene->geometry.visibleOrigin().toPoint() - origin;
  m_scene->geometry.setVisibleOrigin(origin);
  m_markerX = static_cast<int>(m_scene->geometry.positionOfEditorTimeInRuler(Space::Ruler));
  followVisibleRows();
  // What stays in sight is moved, not painted.
  m_scrollView->clipView().scroll(moved.x(), moved.y());
  m_scrollView->verticalRuler().scroll(0, moved.y());
  m_editors->scrolled(moved);
  if (moved.x() != 0) updateTimelineRuler();
}

std::pair<int, int> TYTimelineView::visibleRows() const {
  const double top = m_scene->geometry.visibleOrigin().y();
  return {static_cast<int>(top / Measures::componentHeight),
          static_cast<int>((top + visibleSize().height()) / Measures::componentHeight)};
}

void TYTimelineView::followVisibleRows() {
  if (!m_observer) return;
  const auto [first, last] = visibleRows();
  QList<model::Attribute*> attributes;
  for (int row = first; row <= last; ++row)
    if (model::Attribute* attribute = m_scene->rows.at(row).attribute) attributes.append(attribute);
  m_scene->rows.keepOnly(first, last);
  m_painter->rowPainter().keepOnly(attributes);
  m_observer->followAttributes(attributes);
}

// Bringing up to date

void TYTimelineView::updateZoomRange() {
  TYTimelineGeometry& geometry = m_scene->geometry;
  const double before = geometry.leastZoom();
  geometry.setVisibleWidth(visibleSize().width());
  if (geometry.leastZoom() != before) Q_EMIT leastZoomChanged(geometry.leastZoom());
}

void TYTimelineView::updateSize() {
  takeContent();
  updateZoomRange();
  m_scrollView->setDocumentSize(m_scene->geometry.timeAxisSize());
  scrolled();
  updateAll();
}

void TYTimelineView::updateTimelineRuler() {
  m_scrollView->horizontalRuler().update();
}

void TYTimelineView::updateComponentsRuler() {
  m_scrollView->verticalRuler().update();
}

void TYTimelineView::updateClipView() {
  m_scrollView->clipView().update();
}

void TYTimelineView::updateAll() {
  updateTimelineRuler();
  updateComponentsRuler();
  updateClipView();
}

void TYTimelineView::updateRow(int row) {
  if (row < 0) return;
  const int height = static_cast<int>(Measures::componentHeight);
  const int top = row * height - qRound(m_scene->geometry.visibleOrigin().y());
  m_scrollView->clipView().update(0, top, m_scrollView->clipView().width(), height);
  m_scrollView->verticalRuler().update(0, top, m_scrollView->verticalRuler().width(), height);
}

void TYTimelineView::setNeedsRows() {
  m_scene->rows.setNeedsUpdate();
  // Once for all changes of an event.
  if (std::exchange(m_rowsAreDue, true)) return;
  QMetaObject::invokeMethod(this, &TYTimelineView::rowsChanged, Qt::QueuedConnection);
}

void TYTimelineView::rowsChanged() {
  m_rowsAreDue = false;
  m_painter->rowPainter().forgetAllCurves();
  findCurrentRow();
  m_scene->componentMouseOverRow = -1;
  updateSize();
  QAccessibleEvent event(this, QAccessible::ObjectReorder);
  QAccessible::updateAccessibility(&event);
}

void TYTimelineView::attributeChanged(const model::Attribute& attribute) {
  m_painter->rowPainter().forgetCurve(attribute);
  updateRow(m_scene->rows.rowOf(attribute));
}

void TYTimelineView::timeChanged() {
  const int before = m_markerX;
  takeContent();
  if (m_composition->playMode()) followEditorTime();
  const int now = m_markerX;
  if (now == before) return;
  const int height = m_scrollView->clipView().height();
  const int left = static_cast<int>(m_scene->componentsWidth);
  for (const int x : {before, now}) {
    m_scrollView->clipView().update(ClipPainter::markerStrip(x, height));
    QRect mark = TimeRulerPainter::markerRect(x).toRect().translated(left, 0);
    // Standing on a second it moves the number aside.
    if (!m_composition->playMode()) mark.setRight(mark.right() + TimeRulerPainter::widestLabel);
    m_scrollView->horizontalRuler().update(mark);
  }
  updateButtons();
}

void TYTimelineView::setTime(double time, UpdateAttributes updateAttributes) {
  if (!m_composition) return;
  m_composition->setEditorTimepointForNearestTick(time);
  if (updateAttributes == UpdateAttributes::Yes) m_composition->sendChangeNotificationForValues();
}

void TYTimelineView::updateButtons() {
  const auto flags = m_buttons->flags(*m_scene);
  if (flags == std::exchange(m_buttonFlags, flags)) return;
  m_scrollView->horizontalRuler().update(m_buttons->cornerRect(*m_scene).toAlignedRect());
  if (m_scene->rows.at(m_scene->componentMouseOverRow).attribute)
    m_scrollView->verticalRuler().update(
        m_buttons->rowRect(*m_scene, m_scene->componentMouseOverRow).toAlignedRect());
}

// Rows under pointer and keyboard

int TYTimelineView::currentRow() const {
  return m_scene->currentRow;
}

void TYTimelineView::findCurrentRow() {
  if (m_scene->currentRow < 0) return;
  store::ManagedObject* object = m_composition->context()->objectWithId(m_currentObject);
  const auto* attribute = dynamic_cast<model::Attribute*>(object);
  int row = attribute ? m_scene->rows.rowOf(*attribute) : -1;
  // Of a row that was closed the component's is left.
  if (attribute && row < 0) object = attribute->component();
  if (const auto* component = dynamic_cast<QuartzComponent*>(object))
    row = m_scene->rows.rowOf(*component);
  if (row < 0 || !m_scene->rows.at(row).attribute) m_scene->currentTime.reset();
  m_scene->currentRow = row >= 0 ? row : std::min(m_scene->currentRow, m_scene->rows.count() - 1);
}

void TYTimelineView::setCurrentRow(int row) {
  m_scene->currentTime.reset();
  const TimelineRow content = m_scene->rows.at(row);
  m_currentObject = content.attribute   ? content.attribute->objectId()
                    : content.component ? content.component->objectId()
                                        : 0;
  const int before = std::exchange(m_scene->currentRow, row);
  updateRow(before);
  updateRow(row);
  updateTimelineRuler();
}

int TYTimelineView::componentMouseOverRow() const {
  return m_scene->componentMouseOverRow;
}

void TYTimelineView::setMouseOver(int row, bool eye) {
  if (row == m_scene->componentMouseOverRow && eye == m_scene->mouseOverEye) return;
  const int before = std::exchange(m_scene->componentMouseOverRow, row);
  m_scene->mouseOverEye = eye;
  const int height = static_cast<int>(Measures::componentHeight);
  for (const int one : {before, row})
    m_scrollView->verticalRuler().update(
        0, one * height - qRound(m_scene->geometry.visibleOrigin().y()),
        m_scrollView->verticalRuler().width(), height);
}

void TYTimelineView::setExpanded(QuartzComponent& component, bool expanded, Expanded which) {
  m_editors->finish();
  if (which == Expanded::One) return component.setExpanded(expanded);
  for (QuartzComponent* one : m_composition->components()) one->setExpanded(expanded);
}

// Drawing

void TYTimelineView::drawClipInView(QPainter& painter, const QRectF& rect) {
  m_painter->drawClip(painter, *m_scene, rect, visibleSize());
}

void TYTimelineView::drawRulerInView(QPainter& painter, Qt::Orientation orientation,
                                     const QRectF& rect) {
  if (orientation == Qt::Horizontal) {
    TimeRulerPainter::drawRuler(painter, *m_scene, rect, m_scrollView->horizontalRuler().width());
    if (rect.left() < m_scene->componentsWidth) m_buttons->drawInCorner(painter, *m_scene);
  } else {
    TitlePainter::drawRuler(painter, *m_scene, rect);
    m_buttons->drawInRow(painter, *m_scene);
  }
}

bool TYTimelineView::clickInCorner(const QPointF& point) {
  return m_buttons->clickInCorner(*m_scene, point);
}

bool TYTimelineView::clickOnAttributeButtons(int row, const QPointF& point) {
  return m_buttons->clickInRow(*m_scene, row, point);
}

bool TYTimelineView::isOnAttributeButtons(int row, const QPointF& point) const {
  return m_buttons->isInRow(*m_scene, row, point);
}

// Events

bool TYTimelineView::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    const auto& key = static_cast<QKeyEvent&>(*event);
    // No command changes anything while it is being dragged.
    if (m_input->isInGesture() || (m_composition && m_keyboard->claims(key))) {
      event->accept();
      return true;
    }
  }
  return QWidget::event(event);
}

void TYTimelineView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  m_scene->componentsWidth =
      width() < narrowView ? Measures::narrowComponentsWidth : Measures::componentsWidth;
  m_scrollView->setComponentsWidth(static_cast<int>(m_scene->componentsWidth));
  m_scrollView->setGeometry(rect());
}

void TYTimelineView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (m_composition && m_isFitted) zoomToFit();
}

bool TYTimelineView::press(const QKeyEvent& event) {
  if (m_input->isInGesture()) {
    if (event.key() == Qt::Key_Escape) m_input->cancelGesture();
    m_input->updateModifiers(event.modifiers());
    return true;
  }
  if (!m_keyboard->press(event)) return false;
  m_scene->hasFocus = true;  // whoever clicked before uses the keyboard now
  updateAll();
  return true;
}

void TYTimelineView::keyPressEvent(QKeyEvent* event) {
  if (!press(*event)) QWidget::keyPressEvent(event);
}

void TYTimelineView::keyReleaseEvent(QKeyEvent* event) {
  m_input->updateModifiers(event->modifiers());
  QWidget::keyReleaseEvent(event);
}

void TYTimelineView::focusInEvent(QFocusEvent* event) {
  // The frame around the current row is for those who use the keyboard.
  m_scene->hasFocus = event->reason() != Qt::MouseFocusReason;
  updateAll();
}

void TYTimelineView::focusOutEvent(QFocusEvent* event) {
  if (event->reason() != Qt::PopupFocusReason) m_input->cancelGesture();
  m_scene->hasFocus = false;
  updateAll();
}

void TYTimelineView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange) updateAll();
}

void TYTimelineView::contextMenuEvent(QContextMenuEvent* event) {
  if (m_composition) TimelineMenu::popUp(*this, *event);
}

}  // namespace timeline
