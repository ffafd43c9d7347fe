#pragma once

#include <csignal>

namespace cli {

/// While it lives, Ctrl+C and SIGTERM ask the work to stop instead of ending the program, so that
/// nothing half written stays. The second signal ends the program at once.
class Interruption {
 public:
  Interruption();
  ~Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;

  [[nodiscard]] static bool isRequested();

 private:
  struct sigaction m_previous[2];
};

}  // namespace cli
