#pragma once

#include <functional>
#include <vector>

namespace canvas {

/// Runs the tasks in QThreadPool::globalInstance(), where painting is fastest, and waits for all.
/// Not to be called from a task of that pool.
void runInPool(const std::vector<std::function<void()>>& tasks);

}  // namespace canvas
