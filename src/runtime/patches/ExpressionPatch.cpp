#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/Expression.h"
#include "runtime/patches/PortHelpers.h"
#include "runtime/patches/SeededRandom.h"

namespace runtime::patches {

namespace {

Expression expressionOf(const NodeDescription& node) {
  return Expression(node.state.value(u"expression").toString());
}

class ExpressionEvaluator : public PatchEvaluator {
 public:
  explicit ExpressionEvaluator(const NodeDescription& node)
      : m_expression(expressionOf(node)),
        m_values(static_cast<size_t>(m_expression.variables().size())) {}

  void execute(Execution& x) override {
    if (!m_expression.isValid())
      x.report(QStringLiteral("faulty expression: %1").arg(m_expression.error()));
    if (x.firstExecution()) m_random = seedOf(x.node().path) + quint64(x.iterationIndex());
    for (size_t i = 0; i < m_values.size(); ++i) m_values[i] = x.number(static_cast<int>(i));
    x.setOutput(0, m_expression.evaluate(m_values, m_random));
  }

 private:
  Expression m_expression;
  std::vector<double> m_values;
  quint64 m_random = 0;
};

void addVariables(const NodeDescription& node, PatchPorts& ports) {
  const QStringList names = expressionOf(node).variables();
  for (const QString& name : names)
    ports.inputs.append(Port(name, PortType::Number, 0.0, name));
}

}  // namespace

void registerExpressionPatch(PatchRegistry& registry) {
  registry.add({.className = QStringLiteral("QCExpression"),
                .title = QStringLiteral("Mathematical Expression"),
                .ports = {{}, {numberOutput("outputResult", "Result")}},
                .dynamicPorts = QStringLiteral("one number input a variable"),
                .status = QStringLiteral("log is the logarithm to base 10; rand() repeats itself "
                                         "from one rendering to the next"),
                .addPorts = addVariables,
                .make = makeFromNode<ExpressionEvaluator>});
}

}  // namespace runtime::patches
