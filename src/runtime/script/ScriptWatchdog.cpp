#include "runtime/script/ScriptWatchdog.h"

#include <QJSEngine>

namespace runtime::script {

ScriptWatchdog& ScriptWatchdog::shared() {
  static ScriptWatchdog watchdog;
  return watchdog;
}

ScriptWatchdog::~ScriptWatchdog() {
  {
    const std::lock_guard lock(m_mutex);
    m_ends = true;
  }
  m_changed.notify_one();
  if (m_thread.joinable()) m_thread.join();
}

ScriptWatchdog::Guard::Guard(QJSEngine& engine, std::chrono::milliseconds limit)
    : m_watch{{&engine, Clock::now() + limit, false}}, m_place(m_watch.begin()) {
  ScriptWatchdog& dog = shared();
  const std::lock_guard lock(dog.m_mutex);
  dog.m_watches.splice(dog.m_watches.end(), m_watch);
  if (!dog.m_thread.joinable()) dog.m_thread = std::thread([&dog] { dog.run(); });
  // Mostly the thread sleeps for an earlier, finished script and need not be woken.
  if (m_place->deadline < dog.m_wakeAt) dog.m_changed.notify_one();
}

ScriptWatchdog::Guard::~Guard() {
  ScriptWatchdog& dog = shared();
  const std::lock_guard lock(dog.m_mutex);
  m_watch.splice(m_watch.end(), dog.m_watches, m_place);
  if (m_place->expired) m_place->engine->setInterrupted(false);
}

bool ScriptWatchdog::Guard::expired() const {
  const std::lock_guard lock(shared().m_mutex);
  return m_place->expired;
}

void ScriptWatchdog::run() {
  std::unique_lock lock(m_mutex);
  while (!m_ends) {
    m_wakeAt = Clock::time_point::max();
    const Clock::time_point now = Clock::now();
    for (Watch& watch : m_watches) {
      if (watch.expired) continue;
      if (watch.deadline <= now) {
        watch.expired = true;
        watch.engine->setInterrupted(true);
      } else {
        m_wakeAt = std::min(m_wakeAt, watch.deadline);
      }
    }
    if (m_wakeAt == Clock::time_point::max())
      m_changed.wait(lock);
    else
      m_changed.wait_until(lock, m_wakeAt);
  }
}

}  // namespace runtime::script
