#pragma once

#include <QString>
#include <QStringList>
#include <span>
#include <vector>

namespace runtime::patches {

/// A formula such as "a > 0 ? sin(90 * t) : -b ^ 2", compiled once and evaluated often. All values
/// are numbers; truth is 1, anything but 0 is true. Angles are in degrees. Evaluation neither fails
/// nor allocates.
class Expression {
 public:
  /// A faulty formula has no variables, says why in error() and always gives 0.
  explicit Expression(const QString& text);

  /// The free names in order of first appearance.
  [[nodiscard]] const QStringList& variables() const { return m_variables; }
  /// Empty when the formula is sound.
  [[nodiscard]] const QString& error() const { return m_error; }
  [[nodiscard]] bool isValid() const { return m_error.isEmpty(); }

  /// The result for the variables' values, in the order of variables(); missing ones are 0.
  /// `random` is the state of the generator behind rand().
  [[nodiscard]] double evaluate(std::span<const double> values, quint64& random) const;

  /// One step of the compiled formula; works on the top of a stack of numbers.
  struct Step {
    using Function = double (*)(const double* arguments, int count, quint64& random);
    Function function = nullptr;  ///< none: pushes
    int count = 0;                ///< arguments that the function takes off the stack
    int variable = -1;            ///< pushed when not negative
    double constant = 0;          ///< pushed otherwise
  };
  static constexpr int deepestStack = 128;

 private:
  std::vector<Step> m_steps;
  QStringList m_variables;
  QString m_error;
};

}  // namespace runtime::patches
