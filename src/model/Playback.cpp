#include "model/Playback.h"

#include <cmath>

#include "model/Composition.h"
#include "model/EditorClock.h"

namespace model {

namespace {

constexpr double slowestInterval = 0.02;  ///< seconds; for formats that know no rate
/// A frame that is about to begin by as much (frames) counts as begun, or it would come twice.
constexpr double nearly = 0.05;

}  // namespace

Playback::Playback(Composition& composition)
    : m_composition(composition), m_clock(&EditorClock::system()) {}

void Playback::setPlaying(bool playing) {
  if (!playing) {
    if (!isPlaying()) return;
    m_state = State::Stopping;
    m_wasSetSince = false;
    return;
  }
  m_state = State::Playing;
  m_startTime = m_clock->now() - m_composition.editorTimepoint();
  ++m_run;
  scheduleUpdate();
}

void Playback::editorTimeWasSet(double timepoint) {
  if (m_isUpdating || m_state == State::Standing) return;
  m_startTime = m_clock->now() - timepoint;
  m_wasSetSince = true;
}

void Playback::scheduleUpdate() {
  const double rate = m_composition.videoResolution().framesPerSecond();
  const double interval = rate > 0 ? 1 / rate : slowestInterval;
  const double time = m_clock->now() - m_startTime;
  const double nextFrame = std::floor(time / interval + nearly) + 1;
  m_clock->callAfter(nextFrame * interval - time,
                     [this, alive = std::weak_ptr(m_alive), run = m_run] {
                       if (!alive.expired() && run == m_run) update();
                     });
}

void Playback::update() {
  double time = m_clock->now() - m_startTime;
  if (isPlaying() && time > m_composition.duration()) {
    m_composition.setPlayMode(false);
    if (isPlaying()) return;  // somebody who heard of the end began anew
    time = 0;
  }
  if (!isPlaying()) return finish(time);
  m_isUpdating = true;
  m_composition.setEditorTimepoint(time);
  m_isUpdating = false;
  if (isPlaying()) scheduleUpdate();
}

void Playback::finish(double time) {
  m_state = State::Standing;
  if (!m_wasSetSince) m_composition.setEditorTimepointForNearestTick(time);
  m_composition.sendChangeNotificationForValues();
}

}  // namespace model
