#include "document/TimeCommands.h"

#include "model/Composition.h"
#include "store/ObjectContext.h"

namespace document {

using model::Attribute;

void TimeCommands::moveTo(double timepoint) {
  m_composition.setEditorTimepoint(timepoint);
  // Fields show animated values at the editor time; while playing they wait for its end.
  if (!m_composition.playMode()) m_composition.sendChangeNotificationForValues();
}

void TimeCommands::jumpToBeginning() {
  const bool wasPlaying = m_composition.playMode();
  m_composition.setPlayMode(false);
  moveTo(0);
  m_composition.setPlayMode(wasPlaying);
}

void TimeCommands::jumpToEnd() {
  m_composition.setPlayMode(false);  // at the end playing would begin anew at once
  moveTo(m_composition.duration());
}

void TimeCommands::play() {
  m_composition.setPlayMode(!m_composition.playMode());
}

void TimeCommands::jumpByFrames(int frames) {
  if (m_composition.ticksPerSecond() == 0) return;
  m_composition.setPlayMode(false);  // a single frame is to be looked at
  const double frame =
      static_cast<double>(1.0F / static_cast<float>(m_composition.ticksPerSecond()));
  double timepoint = m_composition.editorTimepoint() + frames * frame;
  if (m_composition.validateEditorTimepoint(timepoint)) moveTo(timepoint);
}

void TimeCommands::forKeyFrames(const std::function<void(const Attribute&)>& visit) const {
  for (const model::QuartzComponent* component : m_composition.selectedComponents())
    for (const Attribute* attribute : component->attributes())
      if (attribute->animateable()) visit(*attribute);
}

void TimeCommands::jumpToNextKeyframe() {
  constexpr double none = 1e14;
  double nearest = none;
  forKeyFrames([&](const Attribute& attribute) {
    const double time = attribute.nextTimePoint(m_composition.editorTimepoint());
    if (time != model::noTimepoint) nearest = std::min(nearest, time);
  });
  if (nearest != none) moveTo(nearest);
}

void TimeCommands::jumpToPreviousKeyframe() {
  double nearest = 0;
  forKeyFrames([&](const Attribute& attribute) {
    nearest = std::max(nearest, attribute.previousTimePoint(m_composition.editorTimepoint()));
  });
  moveTo(nearest);
}

double TimeCommands::nextOf(const QList<double>& times, double time) {
  const auto found = std::find_if(times.begin(), times.end(),
                                  [time](double candidate) { return candidate > time; });
  return found == times.end() ? time : *found;
}

double TimeCommands::previousOf(const QList<double>& times, double time) {
  const auto found = std::find_if(times.rbegin(), times.rend(),
                                  [time](double candidate) { return candidate < time; });
  return found == times.rend() ? time : *found;
}

void TimeCommands::jumpToNextStopFrame() {
  moveTo(nextOf(m_composition.stopFrameTimepoints(), m_composition.editorTimepoint()));
}

void TimeCommands::jumpToPreviousStopFrame() {
  moveTo(previousOf(m_composition.stopFrameTimepoints(), m_composition.editorTimepoint()));
}

void TimeCommands::addStopFrame() {
  if (!m_composition.stopFrameAtTimepoint(m_composition.editorTimepoint()))
    m_composition.addStopFrame(m_composition.editorTimepoint());
}

void TimeCommands::toggleStopframe() {
  if (auto* present = m_composition.stopFrameAtTimepoint(m_composition.editorTimepoint()))
    m_composition.removeStopFrame(*present);
  else
    addStopFrame();
}

void TimeCommands::togglePosterframe() {
  const store::UndoStep step(*m_composition.context(), tr("Set Poster Frame"));
  m_composition.setPosterFrameTimepoint(m_composition.editorTimepoint());
}

}  // namespace document
