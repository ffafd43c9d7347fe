#include <cmath>

#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/PortHelpers.h"
#include "runtime/patches/SeededNoise.h"

namespace runtime::patches {

namespace {

SeededNoise seededBy(const NodeDescription& node) {
  return SeededNoise(static_cast<quint64>(node.state.value(u"randomSeed").toInteger()));
}

int dimensionsOf(const NodeDescription& node) {
  for (const QStringView key : {u"numberOfDimensions", u"dimensions", u"numberOfInputs"})
    if (node.state.value(key).isNumeric()) return stateCount(node, key, 1, 1, 4);
  return 1;
}

class NoiseEvaluator : public PatchEvaluator {
 public:
  explicit NoiseEvaluator(const NodeDescription& node)
      : m_noise(seededBy(node)), m_dimensions(static_cast<size_t>(dimensionsOf(node))) {}
  void execute(Execution& x) override {
    double point[4] = {};
    for (size_t i = 0; i < m_dimensions; ++i) point[i] = x.number(static_cast<int>(i));
    x.setOutput(0, m_noise.smooth({point, m_dimensions}));
  }

 private:
  SeededNoise m_noise;
  size_t m_dimensions;
};

void addNoisePorts(const NodeDescription& node, PatchPorts& ports) {
  for (int i = 1; i <= dimensionsOf(node); ++i)
    ports.inputs.append(Port(QStringLiteral("input_%1").arg(i), PortType::Number, {},
                             QStringLiteral("Input #%1").arg(i)));
}

/// A value that changes with the time of its time base and depends on nothing else, so that any
/// frame can be drawn again, alone or out of order.
class RandomEvaluator : public PatchEvaluator {
 public:
  explicit RandomEvaluator(const NodeDescription& node)
      : m_noise(seededBy(node)),
        m_variability(std::clamp(node.state.value(u"variability").toDouble(0.5), 0.0, 1.0)),
        m_isSmooth(node.state.value(u"usePerlinNoise").toBool()) {}

  void execute(Execution& x) override {
    const double low = x.number(0);
    const double high = x.number(1);
    const double position = m_isSmooth ? smooth(x.time()) : m_noise.uniform(stepAt(x.time()));
    x.setOutput(0, low + (high - low) * position);
  }

 private:
  static qint64 stepAt(double time) {
    // Times that differ by less than this belong to one frame.
    constexpr double stepsPerSecond = 1e4;
    return static_cast<qint64>(std::llround(std::min(time, 1e12) * stepsPerSecond));
  }
  [[nodiscard]] double smooth(double time) const {
    const double point = time * (0.25 + 3.75 * m_variability) + 0.5;
    return 0.5 + 0.5 * m_noise.smooth({&point, 1});
  }
  SeededNoise m_noise;
  double m_variability;
  bool m_isSmooth;
};

}  // namespace

void registerNoisePatches(PatchRegistry& registry) {
  registry.add({.className = QStringLiteral("QCNoise"),
                .title = QStringLiteral("Noise"),
                .ports = {{}, {numberOutput("outputValue", "Result")}},
                .dynamicPorts = QStringLiteral("input_n"),
                .status = QStringLiteral("gradient noise of our own: same character, other values"),
                .addPorts = addNoisePorts,
                .make = makeFromNode<NoiseEvaluator>});
  registry.add(
      {.className = QStringLiteral("QCRandom"),
       .title = QStringLiteral("Random"),
       .kind = PatchClass::Kind::Provider,
       .timeMode = PatchClass::TimeMode::TimeBase,
       .memory = PatchClass::Memory::Shared,
       .ports = {{numberPort("inputMin", -1, "Min"), numberPort("inputMax", 1, "Max")},
                 {numberOutput("outputValue", "Value")}},
       .status = QStringLiteral("values follow from seed and time by a generator of our own; "
                                "without noise the variability has no effect"),
       .make = makeFromNode<RandomEvaluator>});
}

}  // namespace runtime::patches
