// Tells the thread sanitizer what Qt's wait conditions, semaphores and thread pools order. Qt
// itself is not built with it: its headers announce locks and nothing more, so every wait and every
// task of a pool would look like a race. Linked into programs in place of Qt's own functions, which
// these call.
#include <dlfcn.h>

#include <QDeadlineTimer>
#include <QMutex>
#include <QSemaphore>
#include <QThreadPool>
#include <QWaitCondition>
#include <functional>
#include <memory>

extern "C" {
void __tsan_acquire(void* address);
void __tsan_release(void* address);
}

namespace {

template <typename Function>
Function original(const char* mangledName) {
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, mangledName));
}

using Task = std::function<void()>;

/// The task as one that sees what was written before it was handed in. Captures no more than a
/// pointer: what is larger would be read before the order is known.
Task ordered(Task* task) {
  __tsan_release(task);
  return [task] {
    __tsan_acquire(task);
    const std::unique_ptr<Task> owned(task);
    (*owned)();
  };
}

}  // namespace

bool QWaitCondition::wait(QMutex* mutex, QDeadlineTimer deadline) {
  static const auto wait = original<bool (*)(QWaitCondition*, QMutex*, QDeadlineTimer)>(
      "_ZN14QWaitCondition4waitEP6QMutex14QDeadlineTimer");
  QtTsan::mutexPreUnlock(mutex, 0U);
  QtTsan::mutexPostUnlock(mutex, 0U);
  const bool woken = wait(this, mutex, deadline);
  QtTsan::mutexPreLock(mutex, 0U);
  QtTsan::mutexPostLock(mutex, 0U, 0);
  return woken;
}

void QSemaphore::acquire(int count) {
  static const auto acquire = original<void (*)(QSemaphore*, int)>("_ZN10QSemaphore7acquireEi");
  acquire(this, count);
  __tsan_acquire(this);
}

void QSemaphore::release(int count) {
  static const auto release = original<void (*)(QSemaphore*, int)>("_ZN10QSemaphore7releaseEi");
  __tsan_release(this);
  release(this, count);
}

void QThreadPool::start(std::function<void()> task, int priority) {
  start(QRunnable::create(ordered(new Task(std::move(task)))), priority);
}

bool QThreadPool::tryStart(std::function<void()> task) {
  auto handedIn = std::make_unique<Task>(std::move(task));
  QRunnable* runnable = QRunnable::create(ordered(handedIn.get()));
  if (tryStart(runnable)) {
    (void)handedIn.release();
    return true;
  }
  delete runnable;
  return false;
}
