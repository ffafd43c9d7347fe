#pragma once

#include <chrono>
#include <condition_variable>
#include <list>
#include <mutex>
#include <thread>

class QJSEngine;

namespace runtime::script {

/// Interrupts scripts that run too long. One thread watches all engines of the process; it starts
/// with the first script.
class ScriptWatchdog {
  using Clock = std::chrono::steady_clock;
  struct Watch {
    QJSEngine* engine = nullptr;
    Clock::time_point deadline;
    bool expired = false;
  };

 public:
  static ScriptWatchdog& shared();
  ~ScriptWatchdog();

  /// Watches an engine for the length of a scope.
  class Guard {
   public:
    Guard(QJSEngine& engine, std::chrono::milliseconds limit);
    ~Guard();
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;
    /// The engine was interrupted.
    [[nodiscard]] bool expired() const;

   private:
    std::list<Watch> m_watch;  // one entry, which moves into the watchdog's list and back
    std::list<Watch>::iterator m_place;
  };

 private:
  ScriptWatchdog() = default;
  void run();

  std::mutex m_mutex;
  std::condition_variable m_changed;
  std::list<Watch> m_watches;
  Clock::time_point m_wakeAt = Clock::time_point::max();
  std::thread m_thread;
  bool m_ends = false;
};

}  // namespace runtime::script
