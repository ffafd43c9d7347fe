#include "model/EditorClock.h"

#include <QElapsedTimer>
#include <QTimer>
#include <cmath>

namespace model {

namespace {

class SystemClock : public EditorClock {
 public:
  SystemClock() { m_timer.start(); }
  [[nodiscard]] double now() const override {
    return static_cast<double>(m_timer.nsecsElapsed()) * 1e-9;
  }
  void callAfter(double seconds, std::function<void()> callback) override {
    // Never early: a callback that comes before its frame would be called again for it.
    QTimer::singleShot(std::chrono::milliseconds(std::lround(std::ceil(seconds * 1000))),
                       Qt::PreciseTimer, std::move(callback));
  }

 private:
  QElapsedTimer m_timer;
};

}  // namespace

EditorClock& EditorClock::system() {
  static SystemClock clock;
  return clock;
}

}  // namespace model
