#include "canvas/PoolTasks.h"

#include <QSemaphore>
#include <QThreadPool>

namespace canvas {

void runInPool(const std::vector<std::function<void()>>& tasks) {
  QSemaphore done;
  for (const auto& task : tasks)
    QThreadPool::globalInstance()->start([&done, &task] {
      task();
      done.release();
    });
  done.acquire(static_cast<int>(tasks.size()));
}

}  // namespace canvas
