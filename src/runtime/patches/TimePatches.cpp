#include <cmath>

#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/Edge.h"
#include "runtime/patches/PortHelpers.h"

namespace runtime::patches {

namespace {

class TimeEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override { x.setOutput(0, x.time()); }
};

/// The wall clock as the host states it; the composition's own time does not matter.
class SystemTimeEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    constexpr qint64 referenceDate = 978'307'200'000;  // 2001-01-01 00:00 GMT
    const QDateTime& now = x.arguments().wallClock;
    x.setOutput(0, now.isValid()
                       ? static_cast<double>(now.toMSecsSinceEpoch() - referenceDate) / 1000
                       : 0.0);
  }
};

class StopWatchEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    enum { Start, Stop, Reset };
    const double step = x.timeStep();
    if (step < 0) {
      m_elapsed = 0;
    } else if (m_running) {
      m_elapsed += step;
    }
    if (m_start.rises(x.boolean(Start))) m_running = true;
    if (m_stop.rises(x.boolean(Stop))) m_running = false;
    if (m_reset.rises(x.boolean(Reset))) m_elapsed = 0;
    x.setOutput(0, m_elapsed);
  }

 private:
  Edge m_start, m_stop, m_reset;
  bool m_running = false;
  double m_elapsed = 0;
};

/// True for one frame at moments that its mode and parameter choose.
class SignalEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    // In an iterator every pass asks; the answer is the frame's.
    if (m_started && x.frameNumber() == m_frame) return;
    m_frame = x.frameNumber();
    if (x.timeStep() < 0) m_started = false;
    m_on = fires(x.index(0), x.number(1), x.time());
    m_before = x.time();
    m_parameter = x.number(1);
    m_started = true;
    x.setOutput(0, m_on);
  }
  [[nodiscard]] bool wantsNextFrame() const override { return m_on; }

 private:
  enum Mode : quint64 { After, Every, StartThenEvery, Changes, StartThenChanges };

  [[nodiscard]] bool fires(quint64 mode, double parameter, double now) const {
    const bool isStart = !m_started;
    switch (mode) {
      case After:
        return now >= parameter && (isStart || m_before < parameter);
      case Every:
        return !isStart && passesMultiple(parameter, now);
      case StartThenEvery:
        return isStart || passesMultiple(parameter, now);
      case Changes:
        return !isStart && parameter != m_parameter;
      default:
        return isStart || parameter != m_parameter;
    }
  }
  [[nodiscard]] bool passesMultiple(double period, double now) const {
    if (!(period > 0)) return now > m_before;
    // A frame that should meet the moment may miss it by the last bit.
    constexpr double slack = 1e-9;
    return std::floor(now / period + slack) > std::floor(m_before / period + slack);
  }
  quint64 m_frame = 0;
  double m_before = 0;
  double m_parameter = 0;
  bool m_started = false;
  bool m_on = false;
};

}  // namespace

void registerTimePatches(PatchRegistry& registry) {
  using K = PatchClass::Kind;
  using T = PatchClass::TimeMode;
  using M = PatchClass::Memory;
  registry.add({.className = QStringLiteral("QCTime"),
                .title = QStringLiteral("Patch Time"),
                .kind = K::Provider,
                .timeMode = T::TimeBase,
                .ports = {{}, {numberOutput("outputTime", "Time")}},
                .make = makeEvaluator<TimeEvaluator>});
  registry.add({.className = QStringLiteral("QCSystemTime"),
                .title = QStringLiteral("System Time"),
                .kind = K::Provider,
                .ports = {{}, {numberOutput("outputTime", "Time")}},
                .make = makeEvaluator<SystemTimeEvaluator>});
  registry.add({.className = QStringLiteral("QCClock"),
                .title = QStringLiteral("Stop Watch"),
                .timeMode = T::TimeBase,
                .memory = M::Shared,
                .ports = {{booleanPort("inputStartSignal", false, "Start Signal"),
                           booleanPort("inputStopSignal", false, "Stop Signal"),
                           booleanPort("inputResetSignal", false, "Reset Signal")},
                          {numberOutput("outputTime", "Time")}},
                .make = makeEvaluator<StopWatchEvaluator>});
  registry.add({.className = QStringLiteral("QCSignal"),
                .title = QStringLiteral("Signal"),
                .kind = K::Provider,
                .timeMode = T::TimeBase,
                .memory = M::Shared,
                .ports = {{menuPort("inputMode", 0, "Mode",
                                    {"After [x] Seconds", "Every [x] Seconds",
                                     "On Start, Then Every [x] Seconds", "When [x] Changes",
                                     "On Start, Then When [x] Changes"}),
                           numberPort("inputParam", 10, "Parameter [x]")},
                          {booleanOutput("outputSignal", "Signal")}},
                .make = makeEvaluator<SignalEvaluator>});
}

}  // namespace runtime::patches
