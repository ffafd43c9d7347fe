#include <cmath>

#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/Easing.h"
#include "runtime/patches/PortHelpers.h"

namespace runtime::patches {

namespace {

enum Repeat : quint64 { None, Loop, MirroredLoop, MirroredLoopOnce };

/// How far (0…1) the interpolation is after a number of durations.
double progressAfter(double durations, quint64 repeat) {
  switch (repeat) {
    case None:
      return std::min(durations, 1.0);
    case Loop:
      return durations - std::floor(durations);
    default:
      break;
  }
  if (repeat == MirroredLoopOnce && durations >= 2) return 0;
  const double q = std::fmod(durations, 2);
  return q <= 1 ? q : 2 - q;
}

class InterpolationEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    enum { Start, End, Duration, Tension, RepeatMode, Curve };
    const double start = x.number(Start);
    const double end = x.number(End);
    const double duration = x.number(Duration);
    if (!(duration > 0)) {
      x.setOutput(0, end);
      return;
    }
    const double p = eased(x.index(Curve), progressAfter(x.time() / duration, x.index(RepeatMode)));
    x.setOutput(0, p == 1 ? end : start + (end - start) * p);
  }
};

/// Follows its input with a delay: each new target is reached along a curve from where the output
/// is at that moment.
class SmoothEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    enum { Target, IncreasingDuration, IncreasingCurve, DecreasingDuration, DecreasingCurve };
    const double target = x.number(Target);
    if (x.firstExecution() || x.timeStep() < 0) {
      m_from = m_target = target;
      m_start = x.time();
    }
    const bool rises = m_target >= m_from;
    const double now = outputAt(x.time(), x.number(rises ? IncreasingDuration : DecreasingDuration),
                                x.index(rises ? IncreasingCurve : DecreasingCurve));
    if (target == m_target) {
      x.setOutput(0, now);
      return;
    }
    m_from = now;
    m_target = target;
    m_start = x.time();
    const double duration = x.number(m_target >= m_from ? IncreasingDuration : DecreasingDuration);
    x.setOutput(0, duration > 0 ? m_from : m_target);
  }

 private:
  [[nodiscard]] double outputAt(double time, double duration, quint64 curve) const {
    const double passed = time - m_start;
    if (m_from == m_target || !(duration > 0) || passed >= duration) return m_target;
    return m_from + (m_target - m_from) * eased(curve, passed / duration);
  }
  double m_from = 0;
  double m_target = 0;
  double m_start = 0;
};

}  // namespace

void registerInterpolationPatches(PatchRegistry& registry) {
  registry.add(
      {.className = QStringLiteral("QCInterpolation"),
       .title = QStringLiteral("Interpolation"),
       .kind = PatchClass::Kind::Provider,
       .timeMode = PatchClass::TimeMode::TimeBase,
       .memory = PatchClass::Memory::Shared,
       .ports = {{numberPort("inputValue1", 0, "Start Value"),
                  numberPort("inputValue2", 1, "End Value"),
                  numberPort("inputDuration", 1, "Duration"),
                  numberPort("inputTension", 0, "Tension"),
                  menuPort("inputRepeat", 0, "Repeat Mode",
                           {"None", "Loop", "Mirrored Loop", "Mirrored Loop Once"}),
                  curvePort("inputInterpolation", "Interpolation")},
                 {numberOutput("outputValue", "Result")}},
       .status = QStringLiteral("custom curves run linearly and the tension has no effect"),
       .make = makeEvaluator<InterpolationEvaluator>});
  registry.add(
      {.className = QStringLiteral("QCSmooth"),
       .title = QStringLiteral("Smooth"),
       .timeMode = PatchClass::TimeMode::TimeBase,
       .ports = {{numberPort("inputValue", 0, "Value"),
                  numberPort("inputIncreasingDuration", 1, "Increasing Duration"),
                  curvePort("inputIncreasingInterpolation", "Increasing Interpolation"),
                  numberPort("inputDecreasingDuration", 1, "Decreasing Duration"),
                  curvePort("inputDecreasingInterpolation", "Decreasing Interpolation")},
                 {numberOutput("outputValue", "Smoothed Value")}},
       .status = QStringLiteral("a new target always starts a new curve (no tangent mode)"),
       .make = makeEvaluator<SmoothEvaluator>});
}

}  // namespace runtime::patches
