#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/PortHelpers.h"

namespace runtime::patches {

namespace {

constexpr int maximumPorts = 10'000;

PortType portClassOf(const NodeDescription& node) {
  return portTypeForClass(node.state.value(u"portClass").toString());
}

Port indexTo(const char* key, const char* label, int count) {
  return indexPort(key, 0, label).range({}, count - 1);
}

int sourceCount(const NodeDescription& node) {
  return stateCount(node, u"inputCount", 2, 1, maximumPorts);
}

/// Hands on one of its sources and leaves the others alone.
class MultiplexerEvaluator : public PatchEvaluator {
 public:
  explicit MultiplexerEvaluator(const NodeDescription& node) : m_count(sourceCount(node)) {}

  void pullInputs(Execution& x) override {
    // What stands behind the sources: "_time" and ports that only a connection asked for.
    for (int i = 1 + m_count; i < x.inputCount(); ++i) x.pull(i);
    x.pull(0);
    x.pull(chosen(x));
  }
  void execute(Execution& x) override { x.setOutput(0, x.value(chosen(x))); }

 private:
  [[nodiscard]] int chosen(const Execution& x) const {
    return 1 + static_cast<int>(std::min<quint64>(x.index(0), static_cast<quint64>(m_count - 1)));
  }
  int m_count;
};

void addMultiplexerPorts(const NodeDescription& node, PatchPorts& ports) {
  const PortType type = portClassOf(node);
  const int count = sourceCount(node);
  ports.inputs.append(indexTo("inputIndex", "Source Index", count));
  for (int i = 0; i < count; ++i)
    ports.inputs.append(
        Port(QStringLiteral("source_%1").arg(i), type, {}, QStringLiteral("Source #%1").arg(i)));
  ports.outputs.append(portOf(type, "output", "Output"));
}

int destinationCount(const NodeDescription& node) {
  return stateCount(node, u"outputCount", 2, 1, maximumPorts);
}

/// Hands its input to one of its outputs; the others are reset or keep what they had.
class DemultiplexerEvaluator : public PatchEvaluator {
 public:
  explicit DemultiplexerEvaluator(const NodeDescription& node)
      : m_count(destinationCount(node)),
        m_resets(node.state.value(u"resetOutputs").toBool(false)) {}

  void execute(Execution& x) override {
    const int chosen =
        static_cast<int>(std::min<quint64>(x.index(0), static_cast<quint64>(m_count - 1)));
    for (int i = 0; i < m_count; ++i)
      if (i == chosen)
        x.setOutput(i, x.value(1));
      else if (m_resets)
        x.setOutput(i, x.value(2));
  }

 private:
  int m_count;
  bool m_resets;
};

void addDemultiplexerPorts(const NodeDescription& node, PatchPorts& ports) {
  const PortType type = portClassOf(node);
  const int count = destinationCount(node);
  ports.inputs.append(indexTo("inputIndex", "Destination Index", count));
  ports.inputs.append(portOf(type, "input", "Input"));
  ports.inputs.append(portOf(type, "inputReset", "Reset Value"));
  for (int i = 0; i < count; ++i)
    ports.outputs.append(Port(QStringLiteral("destination_%1").arg(i), type, {},
                              QStringLiteral("Destination #%1").arg(i)));
}

}  // namespace

void registerSwitchPatches(PatchRegistry& registry) {
  registry.add({.className = QStringLiteral("QCMultiplexer"),
                .title = QStringLiteral("Multiplexer"),
                .dynamicPorts = QStringLiteral("inputIndex, source_0 …, output of portClass"),
                .addPorts = addMultiplexerPorts,
                .make = makeFromNode<MultiplexerEvaluator>});
  registry.add({.className = QStringLiteral("QCDemultiplexer"),
                .title = QStringLiteral("Demultiplexer"),
                .dynamicPorts =
                    QStringLiteral("inputIndex, input, inputReset, destination_0 … of portClass"),
                .addPorts = addDemultiplexerPorts,
                .make = makeFromNode<DemultiplexerEvaluator>});
}

}  // namespace runtime::patches
