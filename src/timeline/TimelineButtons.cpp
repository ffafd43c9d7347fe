#include "timeline/TimelineButtons.h"

#include <QPainter>

#include "model/Composition.h"
#include "timeline/TimelineScene.h"
#include "timeline/TransportCommands.h"
#include "widgets/TYStyleKit.h"

namespace timeline {

using Action = TYTimelineControlButtons::Action;

namespace {

constexpr double spacing = 5;

}  // namespace

TimelineButtons::TimelineButtons()
    : m_stopframeButtons(QStringLiteral("AddStopframe"), QStringLiteral("RemoveStopframe"),
                         spacing),
      m_keyframeButtons(QStringLiteral("AddKeyframe"), QStringLiteral("RemoveKeyframe"), spacing) {}

QRectF TimelineButtons::cornerRect(const TimelineScene& scene) const {
  const QRectF bounds(0, 0, scene.componentsWidth, TYTimelineGeometry::rulerThickness - 1);
  return m_stopframeButtons.rectInView(bounds, scene.componentsWidth);
}

QRectF TimelineButtons::rowRect(const TimelineScene& scene, int row) const {
  const double top = row * TimelineMeasures::componentHeight - scene.geometry.visibleOrigin().y();
  return m_keyframeButtons.rectInRect(
      {0, top, scene.componentsWidth, TimelineMeasures::componentHeight});
}

std::pair<int, int> TimelineButtons::flags(const TimelineScene& scene) const {
  if (!scene.composition) return {};
  const double time = scene.composition->editorTimepoint();
  const model::Attribute* attribute = scene.rows.at(scene.componentMouseOverRow).attribute;
  const ControlFlags corner =
      TransportCommands(*scene.composition).stopFrameControlFlagsAtTime(time);
  const ControlFlags row =
      attribute ? TransportCommands::keyFrameControlFlagsAtTime(time, *attribute) : ControlFlags();
  return {corner.toInt(), row.toInt()};
}

void TimelineButtons::drawInCorner(QPainter& painter, const TimelineScene& scene) const {
  if (!scene.composition) return;
  const TransportCommands commands(*scene.composition);
  m_stopframeButtons.drawAtPoint(
      painter, cornerRect(scene).topLeft(),
      commands.stopFrameControlFlagsAtTime(scene.composition->editorTimepoint()));
}

void TimelineButtons::drawInRow(QPainter& painter, const TimelineScene& scene) const {
  const model::Attribute* attribute = scene.rows.at(scene.componentMouseOverRow).attribute;
  if (!attribute) return;
  const QRectF rect = rowRect(scene, scene.componentMouseOverRow);
  // A long title ends before them.
  painter.fillRect(rect.adjusted(-4, 0, 0, 0),
                   widgets::TYStyleKit::colour(scene.componentMouseOverRow % 2 != 0
                                                   ? widgets::Token::TimelineRowAlt
                                                   : widgets::Token::TimelineRow));
  m_keyframeButtons.drawAtPoint(painter, rect.topLeft(),
                                TransportCommands::keyFrameControlFlagsAtTime(
                                    scene.composition->editorTimepoint(), *attribute));
}

bool TimelineButtons::clickInCorner(const TimelineScene& scene, const QPointF& point) const {
  TransportCommands commands(*scene.composition);
  const Action action = m_stopframeButtons.controlActionInRect(
      cornerRect(scene), point,
      commands.stopFrameControlFlagsAtTime(scene.composition->editorTimepoint()));
  if (action == Action::None) return false;
  commands.perform(action);
  return true;
}

TYTimelineControlButtons::Action TimelineButtons::actionInRow(const TimelineScene& scene, int row,
                                                              const QPointF& point) const {
  const model::Attribute* attribute = scene.rows.at(row).attribute;
  if (!attribute) return Action::None;
  return m_keyframeButtons.controlActionInRect(
      rowRect(scene, row), point,
      TransportCommands::keyFrameControlFlagsAtTime(scene.composition->editorTimepoint(),
                                                    *attribute));
}

bool TimelineButtons::isInRow(const TimelineScene& scene, int row, const QPointF& point) const {
  return actionInRow(scene, row, point) != Action::None;
}

bool TimelineButtons::clickInRow(const TimelineScene& scene, int row, const QPointF& point) const {
  const Action action = actionInRow(scene, row, point);
  if (action == Action::None) return false;
  TransportCommands(*scene.composition).performOnAttribute(action, *scene.rows.at(row).attribute);
  return true;
}

}  // namespace timeline
