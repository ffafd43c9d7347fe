#include <cmath>
#include <numbers>

#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/PortHelpers.h"
#include "runtime/patches/SeededNoise.h"

namespace runtime::patches {

namespace {

enum Wave : quint64 { Sin, Cos, Triangle, Square, SawtoothUp, SawtoothDown, PulseWidth, Random };

/// The value (−1…1) of a wave at a place within its period (0 ≤ f < 1).
double waveAt(quint64 wave, double f, double ratio) {
  switch (wave) {
    case Sin:
      return std::sin(2 * std::numbers::pi * f);
    case Cos:
      return std::cos(2 * std::numbers::pi * f);
    case Triangle:
      return f < 0.5 ? 4 * f - 1 : 3 - 4 * f;
    case Square:
      return f < 0.5 ? -1 : 1;
    case SawtoothUp:
      return 2 * f - 1;
    case SawtoothDown:
      return 1 - 2 * f;
    default:
      return f < ratio ? -1 : 1;
  }
}

class LfoEvaluator : public PatchEvaluator {
 public:
  explicit LfoEvaluator(const NodeDescription& node)
      : m_noise(static_cast<quint64>(node.state.value(u"randomSeed").toInteger())) {}

  void execute(Execution& x) override {
    enum { Type, Period, Phase, Amplitude, Offset, Ratio };
    double turns = x.time() / x.number(Period) - x.number(Phase) / 360;
    if (x.number(Period) == 0 || !(std::abs(turns) < 1e15)) turns = 0;
    const double period = std::floor(turns);
    const double w = x.index(Type) == Random
                         ? 2 * m_noise.uniform(static_cast<qint64>(period)) - 1
                         : waveAt(x.index(Type), turns - period, x.number(Ratio));
    x.setOutput(0, x.number(Offset) + x.number(Amplitude) * w);
  }

 private:
  SeededNoise m_noise;
};

}  // namespace

void registerWavePatches(PatchRegistry& registry) {
  registry.add(
      {.className = QStringLiteral("QCLFO"),
       .title = QStringLiteral("LFO"),
       .kind = PatchClass::Kind::Provider,
       .timeMode = PatchClass::TimeMode::TimeBase,
       .memory = PatchClass::Memory::Shared,
       .ports = {{menuPort("inputType", 0, "Type",
                           {"Sin", "Cos", "Triangle", "Square", "Sawtooth Up", "Sawtooth Down",
                            "PWM", "Random"}),
                  numberPort("inputPeriod", 1, "Period"), numberPort("inputPhase", 0, "Phase"),
                  numberPort("inputAmplitude", 1, "Amplitude"),
                  numberPort("inputOffset", 0, "Offset"),
                  numberPort("inputPWMRatio", 0.25, "PWM Ratio")},
                 {numberOutput("outputValue", "Result")}},
       .status = QStringLiteral("Random takes its values from a generator of our own"),
       .make = makeFromNode<LfoEvaluator>});
}

}  // namespace runtime::patches
