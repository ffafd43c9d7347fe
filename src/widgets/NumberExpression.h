#pragma once

#include <QHash>
#include <QLocale>
#include <QString>

#include "foundation/Result.h"

namespace widgets {

/// What may be typed into a number field: arithmetic ("1920/2-40"), or a change of what is there
/// ("+=10", "*=1.5"), with units behind numbers. A value: it can be kept and applied to several
/// numbers.
class NumberExpression {
 public:
  enum class Change { Set, Add, Subtract, Multiply, Divide };

  struct Rules {
    /// For the decimal point and digit groups; a point is always understood.
    QLocale locale = QLocale::c();
    /// Unit → how many of the field's unit it is, e.g. {"px", 1}.
    QHash<QString, double> units;
  };

  /// Says in one sentence what is wrong with the text; depth and length are bounded.
  [[nodiscard]] static foundation::Result<NumberExpression> parse(const QString& text,
                                                                  const Rules& rules);
  [[nodiscard]] static NumberExpression set(double value) { return {Change::Set, value}; }
  [[nodiscard]] static NumberExpression add(double delta) { return {Change::Add, delta}; }

  [[nodiscard]] bool isRelative() const { return m_change != Change::Set; }
  /// Dividing by zero and overflow leave the current value.
  [[nodiscard]] double appliedTo(double current) const;

  friend bool operator==(const NumberExpression&, const NumberExpression&) = default;

 private:
  NumberExpression(Change change, double operand) : m_change(change), m_operand(operand) {}

  Change m_change;
  double m_operand;
};

}  // namespace widgets
