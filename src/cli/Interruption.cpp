#include "cli/Interruption.h"

#include <atomic>

namespace cli {

namespace {
std::atomic<bool> requested = false;
static_assert(std::atomic<bool>::is_always_lock_free);
constexpr int signals[] = {SIGINT, SIGTERM};

void request(int) {
  requested = true;
}
}  // namespace

Interruption::Interruption() {
  requested = false;
  struct sigaction action = {};
  action.sa_handler = request;
  action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
  for (int i = 0; i < 2; ++i) {
    sigaction(signals[i], nullptr, &m_previous[i]);
    // Who started the program may have told it not to listen.
    if (m_previous[i].sa_handler != SIG_IGN) sigaction(signals[i], &action, nullptr);
  }
}

Interruption::~Interruption() {
  for (int i = 0; i < 2; ++i) sigaction(signals[i], &m_previous[i], nullptr);
}

bool Interruption::isRequested() {
  return requested;
}

}  // namespace cli
