#pragma once

#include "runtime/patches/Expression.h"

namespace runtime::patches {

/// A function that formulas may call.
struct ExpressionFunction {
  const char* name;
  int fewest;  ///< arguments
  int most;
  Expression::Step::Function function;
};

/// Nothing for a name that is not known.
[[nodiscard]] const ExpressionFunction* expressionFunction(const QString& name);

/// A binary operator; level 0 binds loosest.
struct ExpressionOperator {
  const char16_t* token;
  int level;
  Expression::Step::Function function;
};
constexpr int operatorLevels = 9;

/// The operator of the level at the start of the text, or nothing.
[[nodiscard]] const ExpressionOperator* expressionOperator(QStringView text, int level);

}  // namespace runtime::patches
