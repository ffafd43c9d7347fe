#pragma once

#include <memory>

namespace model {

class Composition;
class EditorClock;

/// Playing in the editor: the composition's editor time follows a clock.
class Playback {
 public:
  static constexpr double interval = 0.02;  ///< seconds between two updates

  explicit Playback(Composition& composition);
  /// The clock must outlive the composition.
  void setClock(EditorClock& clock) { m_clock = &clock; }
  [[nodiscard]] bool isPlaying() const { return m_playing; }
  /// On the clock: the moment at which the editor time was, or would have been, 0.
  [[nodiscard]] double startTime() const { return m_startTime; }
  void setPlaying(bool playing);
  /// Takes the editor time from the clock. At the end of the composition playing stops at 0.
  void update();

 private:
  void scheduleUpdate();

  Composition& m_composition;
  EditorClock* m_clock;
  bool m_playing = false;
  double m_startTime = 0;
  int m_run = 0;  ///< counts the starts; updates that an earlier one scheduled are dropped
  std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
};

}  // namespace model
