#include "render/BackgroundThread.h"

#include <sys/resource.h>

namespace render {

void BackgroundThread::enter() {
  // Priorities of QThread mean nothing under the usual scheduling policy; niceness does, and on
  // Linux each thread has its own. A refusal leaves it as it was, which is no fault.
  constexpr int niceness = 10;
  (void)setpriority(PRIO_PROCESS, 0, niceness);
}

}  // namespace render
