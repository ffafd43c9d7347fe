#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"

namespace runtime::patches {

namespace {

/// Hands its input on; gives a published port its type, limits and menu.
class SplitterEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override { x.setOutput(0, x.value(0)); }
};

std::optional<double> limit(const foundation::PropertyDictionary& state, QStringView key) {
  const foundation::PropertyValue& value = state.value(key);
  if (!value.isNumeric()) return {};
  return value.toDouble();
}

void addSplitterPorts(const NodeDescription& node, PatchPorts& ports) {
  const PortType type = portTypeForClass(node.state.value(u"portClass").toString());
  Port input(QStringLiteral("input"), type, {}, QStringLiteral("Input"));
  input.minimum = limit(node.state, u"inputMin");
  input.maximum = limit(node.state, u"inputMax");
  for (const foundation::PropertyValue& title : node.state.value(u"indexLabels").array())
    if (title.toString() != QLatin1String("-")) input.menu.append(title.toString());
  if (type == PortType::Index && !input.menu.isEmpty() && !input.maximum)
    input.maximum = static_cast<double>(input.menu.size() - 1);
  ports.inputs.append(input);
  ports.outputs.append(Port(QStringLiteral("output"), type, {}, QStringLiteral("Output")));
}

}  // namespace

void registerSplitterPatches(PatchRegistry& registry) {
  registry.add({.className = QStringLiteral("QCSplitter"),
                .title = QStringLiteral("Input Splitter"),
                .dynamicPorts = QStringLiteral("input, output of portClass"),
                .addPorts = addSplitterPorts,
                .make = makeEvaluator<SplitterEvaluator>});
}

}  // namespace runtime::patches
