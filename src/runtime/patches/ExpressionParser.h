#pragma once

#include "runtime/patches/Expression.h"

namespace runtime::patches {

/// Compiles a formula by recursive descent. Operators from loose to tight, as in C, with "^" as
/// right-associative power that binds tighter than a sign before it:
/// ?:  ||  &&  |  &  == !=  < > <= >=  << >>  + -  * / %  - ! ~  ^
class ExpressionParser {
 public:
  explicit ExpressionParser(const QString& text) : m_text(text) {}

  /// False when the formula is faulty; error() then says why and where.
  [[nodiscard]] bool parse();
  [[nodiscard]] std::vector<Expression::Step> takeSteps() { return std::move(m_steps); }
  [[nodiscard]] const QStringList& variables() const { return m_variables; }
  [[nodiscard]] const QString& error() const { return m_error; }

 private:
  using Function = Expression::Step::Function;

  bool ternary();
  bool binary(int level);
  bool unary();
  bool power();
  bool operand();
  bool number();
  bool name();
  bool call(const QString& function);

  void skipSpace();
  [[nodiscard]] QChar peek() const;
  bool accept(QStringView token);
  bool expect(QStringView token);
  bool fail(const QString& what);
  bool push(Expression::Step step);
  bool apply(Function function, int count);

  QString m_text;
  qsizetype m_at = 0;
  int m_nesting = 0;
  int m_depth = 0;  // of the stack at this point of the evaluation
  std::vector<Expression::Step> m_steps;
  QStringList m_variables;
  QString m_error;
};

}  // namespace runtime::patches
