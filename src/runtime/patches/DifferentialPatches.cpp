#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/Edge.h"
#include "runtime/patches/PortHelpers.h"

namespace runtime::patches {

namespace {

class IntegratorEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const bool resets = m_reset.rises(x.boolean(1));
    if (resets || x.timeStep() < 0)
      m_sum = 0;
    else if (x.timeStep() > 0)
      m_sum += x.number(0) * x.timeStep();
    x.setOutput(0, m_sum);
  }

 private:
  Edge m_reset;
  double m_sum = 0;
};

class DerivatorEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const double value = x.number(0);
    const double step = x.timeStep();
    const bool resets = m_reset.rises(x.boolean(1));
    const bool restarts = x.firstExecution() || resets || step < 0;
    // Asked again within one moment, it keeps its answer.
    if (restarts)
      x.setOutput(0, 0.0);
    else if (step > 0)
      x.setOutput(0, (value - m_last) / step);
    if (restarts || step > 0) m_last = value;
  }

 private:
  Edge m_reset;
  double m_last = 0;
};

}  // namespace

void registerDifferentialPatches(PatchRegistry& registry) {
  const QList<Port> inputs{numberPort("inputValue", 0, "Value"),
                           booleanPort("inputResetSignal", false, "Reset Signal")};
  registry.add({.className = QStringLiteral("QCDifferentialValue"),
                .identifier = QStringLiteral("integrator"),
                .title = QStringLiteral("Integrator"),
                .timeMode = PatchClass::TimeMode::TimeBase,
                .memory = PatchClass::Memory::Shared,
                .ports = {inputs, {numberOutput("outputValue", "Integrated Value")}},
                .make = makeEvaluator<IntegratorEvaluator>});
  registry.add({.className = QStringLiteral("QCDifferentialValue"),
                .identifier = QStringLiteral("derivator"),
                .title = QStringLiteral("Derivator"),
                .timeMode = PatchClass::TimeMode::TimeBase,
                .memory = PatchClass::Memory::Shared,
                .ports = {inputs, {numberOutput("outputValue", "Derived Value")}},
                .make = makeEvaluator<DerivatorEvaluator>});
}

}  // namespace runtime::patches
