#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"

namespace runtime::patches {

namespace {

/// Groups patches; no transformation of its own.
class MacroEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override { x.runContent(x.context()); }
};

/// Runs its content `inputCount` times in a frame.
class IteratorEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const auto count = static_cast<qint64>(x.index(0));
    const ContentContext context = x.context();
    for (qint64 i = 0; i < count && i < x.budget().iterations; ++i)
      x.runIteration(context, i, count);
    x.endIterations();
  }
};

class IteratorVariablesEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const auto index = static_cast<double>(x.iterationIndex());
    const auto count = static_cast<double>(x.iterationCount());
    x.setOutput(0, Value::index(static_cast<quint64>(index)));
    x.setOutput(1, count > 1 ? index / (count - 1) : 0.0);
    x.setOutput(2, Value::index(static_cast<quint64>(count)));
  }
  [[nodiscard]] bool followsTimeAndInputs() const override { return true; }
};

}  // namespace

void registerMacroPatches(PatchRegistry& registry) {
  using K = PatchClass::Kind;
  registry.add({.className = QStringLiteral("QCPatch"),
                .title = QStringLiteral("Macro Patch"),
                .kind = K::Macro,
                .dynamicPorts = QStringLiteral("its published ports"),
                .make = makeEvaluator<MacroEvaluator>});
  registry.add({.className = QStringLiteral("QCIterator"),
                .title = QStringLiteral("Iterator"),
                .kind = K::Macro,
                .ports = {{Port(QStringLiteral("inputCount"), PortType::Index, Value::index(1),
                                QStringLiteral("Iterations"))},
                          {}},
                .dynamicPorts = QStringLiteral("its published ports"),
                .alwaysConsumer = true,
                .repeatsContent = true,
                .make = makeEvaluator<IteratorEvaluator>});
  registry.add({.className = QStringLiteral("QCIteratorVariables"),
                .title = QStringLiteral("Iterator Variables"),
                .kind = K::Provider,
                .ports = {{},
                          {Port(QStringLiteral("outputIndex"), PortType::Index, {},
                                QStringLiteral("Current Index")),
                           Port(QStringLiteral("outputPosition"), PortType::Number, {},
                                QStringLiteral("Current Position")),
                           Port(QStringLiteral("outputCount"), PortType::Index, {},
                                QStringLiteral("Iterations"))}},
                .make = makeEvaluator<IteratorVariablesEvaluator>});
}

}  // namespace runtime::patches
