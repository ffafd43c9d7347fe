#include "runtime/patches/Expression.h"

#include <algorithm>
#include <array>

#include "runtime/patches/ExpressionParser.h"

namespace runtime::patches {

Expression::Expression(const QString& text) {
  ExpressionParser parser(text);
  if (parser.parse()) {
    m_steps = parser.takeSteps();
    m_variables = parser.variables();
  } else {
    m_error = parser.error();
  }
}

double Expression::evaluate(std::span<const double> values, quint64& random) const {
  // The parser has checked that the stack never gets deeper and never runs empty.
  std::array<double, deepestStack> stack;
  size_t top = 0;
  for (const Step& step : m_steps) {
    if (step.function) {
      top -= static_cast<size_t>(step.count);
      stack[top] = step.function(stack.data() + top, step.count, random);
    } else if (step.variable >= 0) {
      const auto i = static_cast<size_t>(step.variable);
      stack[top] = i < values.size() ? values[i] : 0;
    } else {
      stack[top] = step.constant;
    }
    ++top;
  }
  return top == 1 ? stack[0] : 0;
}

}  // namespace runtime::patches
