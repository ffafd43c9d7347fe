#include "model/Playback.h"

#include "model/Composition.h"
#include "model/EditorClock.h"

namespace model {

Playback::Playback(Composition& composition)
    : m_composition(composition), m_clock(&EditorClock::system()) {}

void Playback::setPlaying(bool playing) {
  m_playing = playing;
  if (!playing) return;
  m_startTime = m_clock->now() - m_composition.editorTimepoint();
  ++m_run;
  scheduleUpdate();
}

void Playback::scheduleUpdate() {
  m_clock->callAfter(interval, [this, alive = std::weak_ptr(m_alive), run = m_run] {
    if (!alive.expired() && run == m_run) update();
  });
}

void Playback::update() {
  double time = m_clock->now() - m_startTime;
  if (m_playing && time > m_composition.duration()) {
    m_composition.setPlayMode(false);
    time = 0;
  }
  if (m_playing) {
    m_composition.setEditorTimepoint(time);
    scheduleUpdate();
    return;
  }
  m_composition.setEditorTimepointForNearestTick(time);
  m_composition.sendChangeNotificationForValues();
}

}  // namespace model
