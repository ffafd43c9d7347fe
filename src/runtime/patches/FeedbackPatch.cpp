#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/PortHelpers.h"

namespace runtime::patches {

namespace {

struct SavedPort {
  PortType type;
  QString name;
};

QList<SavedPort> savedPortsOf(const NodeDescription& node) {
  QList<SavedPort> ports;
  for (const foundation::PropertyValue& saved : node.state.value(u"savedPorts").array()) {
    const foundation::PropertyArray& pair = saved.array();
    if (pair.size() >= 2) ports.append({portTypeForClass(pair[0].toString()), pair[1].toString()});
  }
  return ports;
}

/// Gives what the enclosing macro published at the end of the frame before.
class FeedbackEvaluator : public PatchEvaluator {
 public:
  explicit FeedbackEvaluator(const NodeDescription& node) : m_ports(savedPortsOf(node)) {}

  void execute(Execution& x) override {
    const bool starts = x.firstExecution() || x.timeStep() < 0 || x.boolean(0);
    for (int i = 0; i < m_ports.size(); ++i) {
      const Value previous = starts ? Value() : x.previousPublishedValue(m_ports[i].name);
      x.setOutput(i, previous.isEmpty() ? x.value(1 + i) : previous);
    }
  }

 private:
  QList<SavedPort> m_ports;
};

void addFeedbackPorts(const NodeDescription& node, PatchPorts& ports) {
  for (const SavedPort& saved : savedPortsOf(node)) {
    ports.inputs.append(Port(QStringLiteral("Initial_") + saved.name, saved.type, {}, saved.name));
    ports.outputs.append(Port(saved.name, saved.type, {}, saved.name));
  }
}

}  // namespace

void registerFeedbackPatch(PatchRegistry& registry) {
  registry.add({.className = QStringLiteral("QCRecursor"),
                .title = QStringLiteral("Feedback"),
                .kind = PatchClass::Kind::Provider,
                .timeMode = PatchClass::TimeMode::TimeBase,
                .ports = {{booleanPort("inputInitialize", false, "Sample Value")}, {}},
                .dynamicPorts = QStringLiteral("Initial_<name> and <name> for each saved port"),
                .addPorts = addFeedbackPorts,
                .make = makeFromNode<FeedbackEvaluator>});
}

}  // namespace runtime::patches
