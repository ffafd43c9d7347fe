#include "timeline/TimelineInput.h"

#include <QGestureEvent>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QToolTip>
#include <cmath>

#include "model/Composition.h"
#include "timeline/ComponentGesture.h"
#include "timeline/KeyFrameGesture.h"
#include "timeline/MarqueeGesture.h"
#include "timeline/ReorderGesture.h"
#include "timeline/RowVisibility.h"
#include "timeline/RulerGestures.h"
#include "timeline/TYTimelineScrollView.h"
#include "timeline/TYTimelineView.h"
#include "timeline/TYTimelneClipView.h"
#include "timeline/TimelineEditors.h"
#include "timeline/TimelineHints.h"
#include "timeline/TitlePainter.h"
#include "widgets/TYTooltipWindow.h"

namespace timeline {

using widgets::TYTooltipWindow;

namespace {

constexpr int autoscrollInterval = 30;  // ms
constexpr double autoscrollShare = 0.25;
constexpr double wheelStep = 120;  // eighths of a degree

}  // namespace

/// What gestures see of the view.
class TimelineInput::Stage : public TimelineStage {
 public:
  explicit Stage(TimelineInput& input) : m_input(input), m_view(input.m_view) {}

  model::Composition& composition() override { return *m_view.composition(); }
  const TYTimelineGeometry& geometry() const override { return m_view.timelineGeometry(); }
  const TimelineRows& rows() const override { return m_view.rows(); }
  RowSelecting& selecting() override { return m_input.m_selecting; }
  DragDistance& distance() override { return m_input.m_distance; }
  void setTime(double time) override { m_view.setTime(time); }
  void showCursor(Qt::CursorShape shape) override { m_view.scrollView().setCursor(shape); }
  void showMarks(const TimelineMarks& marks) override {
    m_view.scene().marks = marks;
    m_view.updateClipView();
    if (m_input.m_area == Area::Titles) m_view.updateComponentsRuler();
  }

  void beginTooltip() override { finishTooltip(); }
  void updateTooltipTime(double time, const QPointF& position) override {
    const QPoint mouse = m_input.m_last.screen.toPoint();
    const QPointF origin = geometry().visibleOrigin();
    const QPoint there = m_view.scrollView().clipView().mapToGlobal((position - origin).toPoint());
    const double width = m_view.visibleSize().width();
    const double seen = qBound(0.0, position.x() - origin.x(), width);
    const QPoint left = m_view.scrollView().clipView().mapToGlobal(QPoint(qRound(seen), 0));
    const auto& rate = geometry().content().rate;
    const foundation::Timecode code(std::llround(time * rate.framesPerSecond()), rate);
    TYTooltipWindow& tooltip = TYTooltipWindow::sharedWindow();
    tooltip.updateTipWithString(code.toString(),
                                {position.x() < 0 ? mouse.x() : left.x(),
                                 position.y() < 0 ? mouse.y() + mouseDistance : there.y()});
    tooltip.showTooltip();
  }
  void finishTooltip() override { TYTooltipWindow::sharedWindow().hideTooltip(); }

 private:
  static constexpr int mouseDistance = 6;
  TimelineInput& m_input;
  TYTimelineView& m_view;
};

TimelineInput::TimelineInput(TYTimelineView& view)
    : m_view(view), m_stage(std::make_unique<Stage>(*this)) {
  m_autoscroll.setInterval(autoscrollInterval);
  QObject::connect(&m_autoscroll, &QTimer::timeout, &m_autoscroll, [this] { autoscroll(); });
}

TimelineInput::~TimelineInput() = default;

double TimelineInput::xInRows(Area area, double x) const {
  const double title = area == Area::Rows ? 0 : m_view.scene().componentsWidth;
  return x - title + m_view.timelineGeometry().visibleOrigin().x();
}

TimelinePointer TimelineInput::pointerAt(Area area, const QPointF& position,
                                         Qt::KeyboardModifiers modifiers) const {
  const QPointF origin = m_view.timelineGeometry().visibleOrigin();
  const double above = area == Area::TimeRuler ? TYTimelineGeometry::rulerThickness : 0;
  return {
      {xInRows(area, position.x()), position.y() - above + origin.y()}, QCursor::pos(), modifiers};
}

bool TimelineInput::handle(Area area, QEvent& event) {
  const bool hasComposition = m_view.composition() != nullptr;
  switch (event.type()) {
    case QEvent::MouseButtonPress:
      if (hasComposition) press(area, static_cast<QMouseEvent&>(event));
      return true;
    case QEvent::MouseMove:
      if (hasComposition) move(area, static_cast<QMouseEvent&>(event));
      return true;
    case QEvent::MouseButtonRelease:
      if (hasComposition) release(area, static_cast<QMouseEvent&>(event));
      return true;
    case QEvent::MouseButtonDblClick:
      if (hasComposition) doubleClick(area, static_cast<QMouseEvent&>(event));
      return true;
    case QEvent::Leave:
      leave();
      return false;
    case QEvent::Wheel:
      turnWheel(area, static_cast<QWheelEvent&>(event));
      return true;
    case QEvent::Gesture:
    case QEvent::NativeGesture:
      return pinch(area, event);
    case QEvent::ToolTip:
      return showToolTip(area, static_cast<QHelpEvent&>(event));
    default:
      return false;
  }
}

void TimelineInput::begin(std::unique_ptr<TimelineGesture> gesture) {
  m_gesture = std::move(gesture);
}

void TimelineInput::cancelGesture() {
  m_autoscroll.stop();
  m_click = nullptr;
  if (const auto gesture = std::move(m_gesture)) gesture->cancel();
  m_view.scrollView().unsetCursor();
}

void TimelineInput::updateModifiers(Qt::KeyboardModifiers modifiers) {
  if (!m_gesture || m_last.modifiers == modifiers) return;
  m_last.modifiers = modifiers;
  m_gesture->update(m_last);
}

void TimelineInput::press(Area area, const QMouseEvent& event) {
  m_view.setFocus(Qt::MouseFocusReason);
  m_view.scene().hasFocus = false;
  if (event.button() != Qt::LeftButton) return;
  cancelGesture();
  m_area = area;
  const TimelinePointer pointer = pointerAt(area, event.position(), event.modifiers());
  m_last = pointer;
  m_last.screen = event.globalPosition();
  if (area == Area::Rows) pressInRows(m_last);
  if (area == Area::TimeRuler) pressInTimeRuler(m_last, event.position());
  if (area == Area::Titles) pressInTitles(m_last, event.position());
}

void TimelineInput::pressInRows(const TimelinePointer& pointer) {
  const TimelineHit hit = TimelinePicker(m_view.scene()).hitAt(pointer.rows);
  if (hit.row.component) m_view.setCurrentRow(hit.rowIndex);
  switch (hit.kind) {
    case TimelineHit::Kind::Component:
      return begin(std::make_unique<ComponentGesture>(*m_stage, hit, pointer));
    case TimelineHit::Kind::KeyFrame:
      return begin(std::make_unique<KeyFrameGesture>(*m_stage, hit, pointer));
    case TimelineHit::Kind::Nothing:
      return begin(std::make_unique<MarqueeGesture>(*m_stage, hit, pointer));
  }
}

void TimelineInput::pressInTimeRuler(const TimelinePointer& pointer, const QPointF& position) {
  const double left = m_view.scene().componentsWidth;
  if (position.x() < left) {
    m_click = [this](const QPointF& point) { m_view.clickInCorner(point); };
    return;
  }
  const QPointF inRuler(position.x() - left, position.y());
  const TimelinePicker picker(m_view.scene());
  if (model::StopFrame* stopFrame = picker.stopFrameAt(inRuler))
    begin(std::make_unique<StopFrameGesture>(*m_stage, *stopFrame, pointer));
  else if (picker.isOnEndHandle(inRuler))
    begin(std::make_unique<DurationGesture>(*m_stage, pointer));
  else
    begin(std::make_unique<ScrubGesture>(*m_stage, pointer));
}

void TimelineInput::pressInTitles(const TimelinePointer& pointer, const QPointF& position) {
  TimelineHit hit;
  hit.rowIndex = static_cast<int>(pointer.rows.y() / TimelineMeasures::componentHeight);
  hit.row = m_view.rows().at(hit.rowIndex);
  if (!hit.row.component) {
    RowSelecting::clear(*m_view.composition());
    return;
  }
  m_view.setCurrentRow(hit.rowIndex);
  if (m_view.isOnAttributeButtons(hit.rowIndex, position)) {
    m_click = [this, row = hit.rowIndex](const QPointF& point) {
      m_view.clickOnAttributeButtons(row, point);
    };
    return;
  }
  const QPointF inRow(position.x(), std::fmod(pointer.rows.y(), TimelineMeasures::componentHeight));
  const auto part = TitlePainter::partAt(hit.row, inRow, m_view.scene().componentsWidth);
  const bool option = pointer.holds(Qt::AltModifier);
  if (part == TitlePainter::Part::Disclosure) {
    m_view.setExpanded(*hit.row.component, !hit.row.component->expanded(),
                       option ? TYTimelineView::Expanded::All : TYTimelineView::Expanded::One);
  } else if (part == TitlePainter::Part::Eye) {
    option ? RowVisibility::solo(*hit.row.component) : RowVisibility::toggle(*hit.row.component);
  } else {
    hit.kind = TimelineHit::Kind::Component;
    begin(std::make_unique<ReorderGesture>(*m_stage, hit, pointer));
  }
}

void TimelineInput::move(Area area, const QMouseEvent& event) {
  if (!m_gesture) {
    hover(area, event);
    return;
  }
  m_last = pointerAt(area, event.position(), event.modifiers());
  m_last.screen = event.globalPosition();
  m_gesture->update(m_last);
  m_view.host().showHint(m_hint);  // selecting may have brought up another one
  const QRect room = m_view.scrollView().clipView().rect();
  const QPointF inClip = m_last.rows - m_view.timelineGeometry().visibleOrigin();
  const bool isOutside =
      inClip.x() < 0 || inClip.x() > room.width() ||
      (area != Area::TimeRuler && (inClip.y() < 0 || inClip.y() > room.height()));
  if (isOutside && !m_autoscroll.isActive()) m_autoscroll.start();
  if (!isOutside) m_autoscroll.stop();
}

void TimelineInput::autoscroll() {
  if (!m_gesture) return m_autoscroll.stop();
  const QPointF before = m_view.timelineGeometry().visibleOrigin();
  const QPointF inClip = m_last.rows - before;
  const QSizeF room = m_view.visibleSize();
  const auto beyond = [](double at, double length) {
    return at < 0 ? at : std::max(0.0, at - length);
  };
  const double sideways = m_area == Area::Titles ? 0 : beyond(inClip.x(), room.width());
  const double upwards = m_area == Area::TimeRuler ? 0 : beyond(inClip.y(), room.height());
  m_view.scrollBy(QPointF(sideways, upwards) * autoscrollShare);
  m_last.rows += m_view.timelineGeometry().visibleOrigin() - before;
  m_gesture->update(m_last);
}

void TimelineInput::release(Area area, const QMouseEvent& event) {
  m_autoscroll.stop();
  // Buttons act where the pointer is let go, so that a slip can be taken back beside them.
  if (event.button() == Qt::LeftButton && m_click)
    std::exchange(m_click, nullptr)(event.position());
  if (event.button() == Qt::LeftButton && m_gesture) {
    m_last = pointerAt(area, event.position(), event.modifiers());
    m_last.screen = event.globalPosition();
    const auto gesture = std::move(m_gesture);
    gesture->finish(m_last);
    m_view.scrollView().unsetCursor();
  }
  hover(area, event);
}

void TimelineInput::doubleClick(Area area, const QMouseEvent& event) {
  if (event.button() != Qt::LeftButton) return;
  cancelGesture();
  const TimelinePointer pointer = pointerAt(area, event.position(), event.modifiers());
  const TimelinePicker picker(m_view.scene());
  if (area == Area::TimeRuler) {
    const QPointF inRuler(event.position().x() - m_view.scene().componentsWidth,
                          event.position().y());
    model::StopFrame* stopFrame = inRuler.x() < 0 ? nullptr : picker.stopFrameAt(inRuler);
    if (stopFrame)
      m_view.editors().editTriggerText(*stopFrame);
    else
      press(area, event);
    return;
  }
  const TimelineHit hit = picker.hitAt(pointer.rows);
  if (area == Area::Rows && hit.kind == TimelineHit::Kind::KeyFrame)
    return m_view.editors().editKeyFrame(hit.keyFrame);
  if (area == Area::Titles && hit.row.isComponent()) {
    const QPointF inRow(event.position().x(),
                        std::fmod(pointer.rows.y(), TimelineMeasures::componentHeight));
    if (TitlePainter::partAt(hit.row, inRow, m_view.scene().componentsWidth) ==
        TitlePainter::Part::Title)
      return m_view.editors().rename(*hit.row.component);
  }
  press(area, event);
}

void TimelineInput::hover(Area area, const QMouseEvent& event) {
  if (!m_view.composition()) return;
  const TimelinePointer pointer = pointerAt(area, event.position(), event.modifiers());
  const TimelinePicker picker(m_view.scene());
  Qt::CursorShape shape = Qt::ArrowCursor;
  QString hint;
  int overRow = -1;
  bool overEye = false;
  if (area == Area::Rows) {
    const TimelineHit hit = picker.hitAt(pointer.rows);
    shape = hit.kind == TimelineHit::Kind::KeyFrame
                ? Qt::PointingHandCursor
                : TimelinePicker::cursorForDraggingPart(hit.part);
    hint = TimelineHints::inRows(hit);
    overRow = hit.row.component ? hit.rowIndex : -1;
  } else if (area == Area::TimeRuler) {
    const QPointF inRuler(event.position().x() - m_view.scene().componentsWidth,
                          event.position().y());
    const bool isStopFrame = picker.stopFrameAt(inRuler) != nullptr;
    const bool isEnd = picker.isOnEndHandle(inRuler);
    if (isStopFrame || isEnd) shape = Qt::SizeHorCursor;
    hint = inRuler.x() < 0 ? QString() : TimelineHints::inTimeRuler(isStopFrame, isEnd);
  } else {
    const int row = static_cast<int>(pointer.rows.y() / TimelineMeasures::componentHeight);
    const TimelineRow content = m_view.rows().at(row);
    overRow = content.component ? row : -1;
    const QPointF inRow(event.position().x(),
                        std::fmod(pointer.rows.y(), TimelineMeasures::componentHeight));
    const auto part = TitlePainter::partAt(content, inRow, m_view.scene().componentsWidth);
    overEye = part == TitlePainter::Part::Eye;
    hint = TimelineHints::inTitles(content, part);
  }
  m_view.scrollView().setCursor(shape);
  m_view.setMouseOver(overRow, overEye);
  m_hint = hint;
  m_view.host().showHint(hint);
}

void TimelineInput::leave() {
  if (m_gesture) return;
  m_view.setMouseOver(-1, false);
  m_view.host().showHint({});
}

void TimelineInput::turnWheel(Area area, QWheelEvent& event) {
  if (!event.modifiers().testFlag(Qt::ControlModifier)) return m_view.scrollView().turnWheel(event);
  event.accept();
  const double x = area == Area::Rows
                       ? event.position().x()
                       : std::max(0.0, event.position().x() - m_view.scene().componentsWidth);
  const double steps = event.angleDelta().y() / wheelStep;
  m_view.zoomAround(x, m_view.zoom() + steps * TYTimelineView::zoomStep);
}

bool TimelineInput::pinch(Area area, QEvent& event) {
  const auto zoomBy = [&](double factor, double x) {
    const double width = m_view.timelineGeometry().unitWidth() * factor;
    m_view.zoomAround(std::max(0.0, x), TYTimelineGeometry::zoomForUnitWidth(width));
  };
  if (event.type() == QEvent::NativeGesture) {
    const auto& native = static_cast<QNativeGestureEvent&>(event);
    if (native.gestureType() != Qt::ZoomNativeGesture) return false;
    const double left = area == Area::Rows ? 0 : m_view.scene().componentsWidth;
    zoomBy(1 + native.value(), native.position().x() - left);
    return true;
  }
  const auto* gesture = static_cast<const QPinchGesture*>(
      static_cast<QGestureEvent&>(event).gesture(Qt::PinchGesture));
  if (!gesture) return false;
  if (gesture->changeFlags().testFlag(QPinchGesture::ScaleFactorChanged))
    zoomBy(gesture->scaleFactor(),
           m_view.scrollView().clipView().mapFromGlobal(gesture->centerPoint()).x());
  return true;
}

bool TimelineInput::showToolTip(Area area, const QHelpEvent& event) {
  if (!m_view.composition() || area == Area::Rows) return false;
  if (area == Area::Titles) {
    const int row = static_cast<int>((event.y() + m_view.timelineGeometry().visibleOrigin().y()) /
                                     TimelineMeasures::componentHeight);
    QToolTip::showText(
        event.globalPos(),
        TitlePainter::fullTitle(m_view.rows().at(row), m_view.scene().componentsWidth), &m_view);
    return true;
  }
  const QPointF inRuler(event.x() - m_view.scene().componentsWidth, event.y());
  const model::StopFrame* stopFrame = TimelinePicker(m_view.scene()).stopFrameAt(inRuler);
  const QString text = stopFrame ? stopFrame->triggerInformation() : QString();
  QToolTip::showText(event.globalPos(), text, &m_view);
  return true;
}

}  // namespace timeline
