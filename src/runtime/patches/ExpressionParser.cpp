#include "runtime/patches/ExpressionParser.h"

#include <charconv>
#include <cmath>

#include "runtime/patches/ExpressionFunctions.h"

namespace runtime::patches {

namespace {

constexpr int deepestNesting = 200;
constexpr size_t mostSteps = 10'000;

bool startsName(QChar c) {
  return c.isLetter() || c == QLatin1Char('_');
}

bool continuesName(QChar c) {
  return startsName(c) || c.isDigit();
}

/// Counts levels of recursion for the length of a scope.
class Nesting {
 public:
  explicit Nesting(int& level) : m_level(level) { ++m_level; }
  ~Nesting() { --m_level; }
  Nesting(const Nesting&) = delete;
  Nesting& operator=(const Nesting&) = delete;
  [[nodiscard]] bool isTooDeep() const { return m_level > deepestNesting; }

 private:
  int& m_level;
};

}  // namespace

bool ExpressionParser::parse() {
  if (!ternary()) return false;
  skipSpace();
  if (m_at < m_text.size())
    return fail(QStringLiteral("unexpected \"%1\"").arg(m_text.mid(m_at, 8)));
  return true;
}

bool ExpressionParser::ternary() {
  const Nesting nesting(m_nesting);
  if (nesting.isTooDeep()) return fail(QStringLiteral("too deeply nested"));
  if (!binary(0)) return false;
  if (!accept(u"?")) return true;
  // Both branches are computed: formulas have no side effects.
  if (!ternary() || !expect(u":") || !ternary()) return false;
  return apply([](const double* v, int, quint64&) { return v[0] != 0 ? v[1] : v[2]; }, 3);
}

bool ExpressionParser::binary(int level) {
  if (level == operatorLevels) return unary();
  if (!binary(level + 1)) return false;
  for (;;) {
    skipSpace();
    const ExpressionOperator* found = expressionOperator(QStringView(m_text).mid(m_at), level);
    if (!found) return true;
    m_at += QStringView(found->token).size();
    if (!binary(level + 1) || !apply(found->function, 2)) return false;
  }
}

bool ExpressionParser::unary() {
  const Nesting nesting(m_nesting);
  if (nesting.isTooDeep()) return fail(QStringLiteral("too deeply nested"));
  if (accept(u"-"))
    return unary() && apply([](const double* v, int, quint64&) { return -v[0]; }, 1);
  if (accept(u"+")) return unary();
  if (accept(u"!"))
    return unary() &&
           apply([](const double* v, int, quint64&) { return v[0] == 0 ? 1.0 : 0.0; }, 1);
  if (accept(u"~"))
    return unary() &&
           apply([](const double* v, int, quint64&) { return -1 - std::trunc(v[0]); }, 1);
  return power();
}

bool ExpressionParser::power() {
  if (!operand()) return false;
  if (!accept(u"^")) return true;
  return unary() && apply([](const double* v, int, quint64&) { return std::pow(v[0], v[1]); }, 2);
}

bool ExpressionParser::operand() {
  if (accept(u"(")) return ternary() && expect(u")");
  const QChar c = peek();
  if (c.isDigit() || c == QLatin1Char('.')) return number();
  if (startsName(c)) return name();
  return fail(m_at < m_text.size() ? QStringLiteral("unexpected \"%1\"").arg(c)
                                   : QStringLiteral("ends too early"));
}

bool ExpressionParser::number() {
  const QByteArray rest = m_text.mid(m_at, 64).toLatin1();
  double value = 0;
  const auto [end, error] = std::from_chars(rest.begin(), rest.end(), value);
  if (error == std::errc::invalid_argument) return fail(QStringLiteral("not a number"));
  m_at += end - rest.begin();
  return push({.constant = value});
}

bool ExpressionParser::name() {
  const qsizetype start = m_at;
  while (m_at < m_text.size() && continuesName(m_text[m_at])) ++m_at;
  const QString name = m_text.mid(start, m_at - start);
  if (accept(u"(")) return call(name);
  if (name == QLatin1String("true")) return push({.constant = 1});
  if (name == QLatin1String("false")) return push({.constant = 0});
  qsizetype variable = m_variables.indexOf(name);
  if (variable < 0) {
    variable = m_variables.size();
    m_variables.append(name);
  }
  return push({.variable = static_cast<int>(variable)});
}

bool ExpressionParser::call(const QString& function) {
  const ExpressionFunction* known = expressionFunction(function);
  if (!known) return fail(QStringLiteral("unknown function \"%1\"").arg(function));
  int count = 0;
  if (!accept(u")")) {
    do {
      if (!ternary()) return false;
      ++count;
    } while (accept(u","));
    if (!expect(u")")) return false;
  }
  if (count < known->fewest || count > known->most)
    return fail(QStringLiteral("wrong number of arguments for \"%1\"").arg(function));
  return apply(known->function, count);
}

void ExpressionParser::skipSpace() {
  while (m_at < m_text.size() && m_text[m_at].isSpace()) ++m_at;
}

QChar ExpressionParser::peek() const {
  return m_at < m_text.size() ? m_text[m_at] : QChar();
}

bool ExpressionParser::accept(QStringView token) {
  skipSpace();
  if (!QStringView(m_text).mid(m_at).startsWith(token)) return false;
  m_at += token.size();
  return true;
}

bool ExpressionParser::expect(QStringView token) {
  return accept(token) || fail(QStringLiteral("\"%1\" is missing").arg(token));
}

bool ExpressionParser::fail(const QString& what) {
  if (m_error.isEmpty()) m_error = QStringLiteral("%1 (character %2)").arg(what).arg(m_at + 1);
  return false;
}

bool ExpressionParser::push(Expression::Step step) {
  if (++m_depth > Expression::deepestStack || m_steps.size() >= mostSteps)
    return fail(QStringLiteral("too long"));
  m_steps.push_back(step);
  return true;
}

bool ExpressionParser::apply(Function function, int count) {
  m_depth -= count;
  return push({.function = function, .count = count});
}

}  // namespace runtime::patches
