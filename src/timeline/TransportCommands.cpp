#include "timeline/TransportCommands.h"

#include <tuple>

#include "document/TimeCommands.h"
#include "model/Composition.h"
#include "store/ObjectContext.h"
#include "timeline/KeyFrameSelection.h"

namespace timeline {

using document::TimeCommands;
using model::Attribute;
using Action = TYTimelineControlButtons::Action;

namespace {

ControlFlags flagsAround(double time, const QList<double>& times) {
  ControlFlags flags;
  for (const double candidate : times) {
    const int order = model::compareTimeInterval(candidate, time);
    flags |= order == 0         ? ControlFlag::Here
             : candidate < time ? ControlFlag::Before
                                : ControlFlag::After;
  }
  return flags;
}

}  // namespace

void TransportCommands::controlAction(int segment) {
  TimeCommands commands(m_composition);
  switch (segment) {
    case Beginning:
      return commands.jumpToBeginning();
    case PreviousFrame:
      return commands.jumpToPreviousFrame();
    case Play:
      return togglePlay();
    case NextFrame:
      return commands.jumpToNextFrame();
    case End:
      return commands.jumpToEnd();
    default:
      return;
  }
}

void TransportCommands::togglePlay() {
  TimeCommands(m_composition).play();
}

void TransportCommands::setTime(double time, Updated attributes) {
  m_composition.setEditorTimepoint(time);
  if (attributes == Updated::Attributes) m_composition.sendChangeNotificationForValues();
}

ControlFlags TransportCommands::stopFrameControlFlagsAtTime(double time) const {
  return flagsAround(time, sortedStopFrames());
}

QList<double> TransportCommands::sortedStopFrames() const {
  return m_composition.stopFrameTimepoints();
}

double TransportCommands::nextStopFrame() const {
  return TimeCommands::nextOf(sortedStopFrames(), m_composition.editorTimepoint());
}

double TransportCommands::previousStopFrame() const {
  return TimeCommands::previousOf(sortedStopFrames(), m_composition.editorTimepoint());
}

void TransportCommands::moveStopFrame(model::StopFrame& stopFrame, double time) {
  double there = time;
  std::ignore = m_composition.validateEditorTimepoint(there);
  const store::UndoStep step(*m_composition.context(), tr("Move Stop Frame"));
  for (model::StopFrame* other : m_composition.stopFramesSortedByTime())
    if (other != &stopFrame && other->isTimepoint(there)) m_composition.removeStopFrame(*other);
  stopFrame.setTimepoint(there);
}

void TransportCommands::addStopFrame() {
  TimeCommands(m_composition).toggleStopframe();
}

void TransportCommands::removeStopFrame() {
  TimeCommands(m_composition).toggleStopframe();
}

void TransportCommands::perform(Action action) {
  switch (action) {
    case Action::Previous:
      return setTime(previousStopFrame(), Updated::Attributes);
    case Action::Next:
      return setTime(nextStopFrame(), Updated::Attributes);
    case Action::Add:
      return addStopFrame();
    case Action::Remove:
      return removeStopFrame();
    case Action::None:
      return;
  }
}

ControlFlags TransportCommands::keyFrameControlFlagsAtTime(double time,
                                                           const Attribute& attribute) {
  return flagsAround(time, sortedKeyFramesForAttribute(attribute));
}

QList<double> TransportCommands::sortedKeyFramesForAttribute(const Attribute& attribute) {
  return KeyFrameSelection::timesOf(attribute);
}

// Key frames stand at times in single precision, which lie a little beside those of the editor.
double TransportCommands::nextKeyFrameForAttribute(const Attribute& attribute) const {
  return TimeCommands::nextOf(sortedKeyFramesForAttribute(attribute),
                              model::roundedTimepoint(m_composition.editorTimepoint()));
}

double TransportCommands::previousKeyFrameForAttribute(const Attribute& attribute) const {
  return TimeCommands::previousOf(sortedKeyFramesForAttribute(attribute),
                                  model::roundedTimepoint(m_composition.editorTimepoint()));
}

void TransportCommands::toggleKeyFrameOnAttribute(Attribute& attribute) {
  const bool isThere =
      attribute.animateable() && attribute.hasKeyframeAtTimePoint(m_composition.editorTimepoint());
  const store::UndoStep step(*m_composition.context(),
                             isThere ? tr("Delete Key Frame") : tr("Add Key Frame"));
  if (isThere)
    attribute.deleteTimepoint(m_composition.editorTimepoint());
  else
    attribute.addTimepoint(m_composition.editorTimepoint(), attribute.currentValue());
}

void TransportCommands::addKeyFrameToAttribute(Attribute& attribute) {
  toggleKeyFrameOnAttribute(attribute);
}

void TransportCommands::removeKeyFrameFromAttribute(Attribute& attribute) {
  toggleKeyFrameOnAttribute(attribute);
}

void TransportCommands::performOnAttribute(Action action, Attribute& attribute) {
  switch (action) {
    case Action::Previous:
      return setTime(previousKeyFrameForAttribute(attribute), Updated::Attributes);
    case Action::Next:
      return setTime(nextKeyFrameForAttribute(attribute), Updated::Attributes);
    case Action::Add:
      return addKeyFrameToAttribute(attribute);
    case Action::Remove:
      return removeKeyFrameFromAttribute(attribute);
    case Action::None:
      return;
  }
}

}  // namespace timeline
