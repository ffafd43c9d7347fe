#pragma once

#include <functional>

namespace model {

/// The time that playback in the editor follows. Passed in, so that playback can be tested without
/// waiting.
class EditorClock {
 public:
  virtual ~EditorClock() = default;
  EditorClock() = default;
  EditorClock(const EditorClock&) = delete;
  EditorClock& operator=(const EditorClock&) = delete;

  /// Seconds since any fixed moment.
  [[nodiscard]] virtual double now() const = 0;
  /// Calls back once, on the same thread.
  virtual void callAfter(double seconds, std::function<void()> callback) = 0;

  /// The machine's clock and the event loop of the thread that asks.
  [[nodiscard]] static EditorClock& system();
};

}  // namespace model
