#include <cmath>

#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/PortHelpers.h"

namespace runtime::patches {

namespace {

double applied(quint64 operation, double a, double b) {
  switch (operation) {
    case 0:
      return a + b;
    case 1:
      return a - b;
    case 2:
      return a * b;
    case 3:
      return a / b;
    case 4:
      return std::fmod(a, b);
    case 5:
      return std::pow(a, b);
    case 6:
      return std::fmin(a, b);
    case 7:
      return std::fmax(a, b);
    default:
      return a;
  }
}

int operationCount(const NodeDescription& node) {
  const bool named = node.state.value(u"numberOfOperations").isNumeric();
  return stateCount(node, named ? u"numberOfOperations" : u"operationCount", 1, 0, 1000);
}

/// Applies a row of operations to its value, one after the other.
class MathEvaluator : public PatchEvaluator {
 public:
  explicit MathEvaluator(const NodeDescription& node) : m_operations(operationCount(node)) {}
  void execute(Execution& x) override {
    double value = x.number(0);
    for (int i = 0; i < m_operations; ++i)
      value = applied(x.index(1 + 2 * i), value, x.number(2 + 2 * i));
    x.setOutput(0, value);
  }

 private:
  int m_operations;
};

void addMathPorts(const NodeDescription& node, PatchPorts& ports) {
  const QStringList signs{QStringLiteral("+"),       QStringLiteral("-"),
                          QStringLiteral("×"),       QStringLiteral("÷"),
                          QStringLiteral("Modulo"),  QStringLiteral("Power"),
                          QStringLiteral("Minimum"), QStringLiteral("Maximum")};
  for (int i = 1; i <= operationCount(node); ++i) {
    ports.inputs.append(Port(QStringLiteral("operation_%1").arg(i), PortType::Index, {},
                             QStringLiteral("Operation #%1").arg(i))
                            .titles(signs));
    ports.inputs.append(Port(QStringLiteral("operand_%1").arg(i), PortType::Number, {},
                             QStringLiteral("Operand #%1").arg(i)));
  }
}

class RoundEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const double value = x.number(0);
    x.setOutput(0, std::round(value));
    x.setOutput(1, std::floor(value));
    x.setOutput(2, std::ceil(value));
  }
};

class RangeEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const double value = x.number(0);
    const double low = x.number(1);
    const double high = x.number(2);
    // Files hold NaN as a limit: such a limit does not limit.
    double clip = value;
    if (clip < low) clip = low;
    if (clip > high) clip = high;
    x.setOutput(0, clip);
    x.setOutput(1, rolled(value, low, high));
  }

 private:
  static double rolled(double value, double low, double high) {
    if (!(high > low)) return low;
    const double size = high - low;
    if (!std::isfinite(size) || !std::isfinite(value)) return value;
    double rest = std::fmod(value - low, size);
    if (rest < 0) rest += size;
    return rest < size ? low + rest : low;
  }
};

class ConditionalEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    enum { First, Test, Second, Tolerance };
    x.setOutput(0, holds(x.index(Test), x.number(First), x.number(Second),
                         std::fmax(x.number(Tolerance), 0)));
  }

 private:
  static bool holds(quint64 test, double a, double b, double tolerance) {
    const bool equal = a == b || std::abs(a - b) <= tolerance;
    switch (test) {
      case 0:
        return equal;
      case 1:
        return !equal;
      case 2:
        return a > b + tolerance;
      case 3:
        return a < b - tolerance;
      case 4:
        return a >= b - tolerance;
      default:
        return a <= b + tolerance;
    }
  }
};

class LogicEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    x.setOutput(0, result(x.index(1), x.boolean(0), x.boolean(2)));
  }

 private:
  static bool result(quint64 operation, bool a, bool b) {
    switch (operation) {
      case 0:
        return a && b;
      case 1:
        return a || b;
      case 2:
        return a != b;
      case 3:
        return !a;
      case 4:
        return !(a && b);
      case 5:
        return !(a || b);
      default:
        return a == b;
    }
  }
};

}  // namespace

void registerMathPatches(PatchRegistry& registry) {
  registry.add({.className = QStringLiteral("QCMath"),
                .title = QStringLiteral("Math"),
                .ports = {{numberPort("inputValue", 0, "Initial Value")},
                          {numberOutput("outputValue", "Resulting Value")}},
                .dynamicPorts = QStringLiteral("operation_n, operand_n"),
                .addPorts = addMathPorts,
                .make = makeFromNode<MathEvaluator>});
  registry.add({.className = QStringLiteral("QCRoundValue"),
                .title = QStringLiteral("Round"),
                .ports = {{numberPort("inputValue", 0, "Value")},
                          {numberOutput("outputRound", "Rounded Value"),
                           numberOutput("outputFloor", "Floor Value"),
                           numberOutput("outputCeil", "Ceil Value")}},
                .make = makeEvaluator<RoundEvaluator>});
  registry.add(
      {.className = QStringLiteral("QCRangeValue"),
       .title = QStringLiteral("Range"),
       .ports = {{numberPort("inputValue", 0, "Value"), numberPort("inputMin", 0, "Range Min"),
                  numberPort("inputMax", 1, "Range Max")},
                 {numberOutput("outputClip", "Clipped Value"),
                  numberOutput("outputRoll", "Rolled-Over Value")}},
       .make = makeEvaluator<RangeEvaluator>});
  registry.add({.className = QStringLiteral("QCConditional"),
                .title = QStringLiteral("Conditional"),
                .ports = {{numberPort("inputValue1", 0, "First value"),
                           menuPort("inputTest", 0, "Condition",
                                    {"Is Equal", "Is Not Equal", "Is Greater Than", "Is Lower Than",
                                     "Is Greater Than or Equal To", "Is Lower Than or Equal To"}),
                           numberPort("inputValue2", 0, "Second Value"),
                           numberPort("inputTolerance", 0, "Tolerance")},
                          {booleanOutput("outputResult", "Result")}},
                .make = makeEvaluator<ConditionalEvaluator>});
  registry.add({.className = QStringLiteral("QCLogic"),
                .title = QStringLiteral("Logic"),
                .ports = {{booleanPort("inputValue1", false, "First Operand"),
                           menuPort("inputOperation", 0, "Operation",
                                    {"AND", "OR", "XOR", "NOT", "NAND", "NOR", "NXOR"}),
                           booleanPort("inputValue2", false, "Second Operand")},
                          {booleanOutput("outputResult", "Result")}},
                .make = makeEvaluator<LogicEvaluator>});
}

}  // namespace runtime::patches
