#include "widgets/NumberExpression.h"

#include <QCoreApplication>
#include <cmath>

namespace widgets {
namespace {

constexpr int kMostCharacters = 500;
constexpr int kDeepest = 50;

QString tr(const char* text) {
  return QCoreApplication::translate("NumberExpression", text);
}

/// Recursive descent; the first complaint counts.
class ExpressionParser {
 public:
  ExpressionParser(QStringView text, const NumberExpression::Rules& rules)
      : m_text(text), m_rules(rules) {}

  foundation::Result<double> parse() {
    const double value = sum();
    if (m_complaint.isEmpty() && !atEnd())
      complain(tr("“%1” was not expected.").arg(m_text.at(m_at)));
    if (m_complaint.isEmpty() && !std::isfinite(value)) complain(tr("The result is no number."));
    if (!m_complaint.isEmpty()) return foundation::failure(m_complaint);
    return value;
  }

 private:
  double sum() {
    double value = product();
    while (true) {
      if (take('+')) {
        value += product();
      } else if (take('-') || take(0x2212)) {
        value -= product();
      } else {
        return value;
      }
    }
  }

  double product() {
    double value = factor();
    while (true) {
      if (take('*') || take(0xD7)) {
        value *= factor();
      } else if (take('/') || take(0xF7)) {
        const double divisor = factor();
        if (divisor == 0) complain(tr("A number cannot be divided by zero."));
        value /= divisor;
      } else {
        return value;
      }
    }
  }

  double factor() {
    if (++m_depth > kDeepest) {
      complain(tr("The entry is nested too deeply."));
      m_at = m_text.size();
      return 0;
    }
    double value = 0;
    if (take('-') || take(0x2212)) {
      value = -factor();
    } else if (take('+')) {
      value = factor();
    } else if (take('(')) {
      value = sum();
      if (!take(')')) complain(tr("A closing bracket is missing."));
      value *= unit();
    } else {
      value = number() * unit();
    }
    --m_depth;
    return value;
  }

  // Digits with groups of three, one decimal point, an exponent.
  double number() {
    skipSpace();
    QString digits;
    digits.append(digitsWithGroups());
    if (m_at < m_text.size() && isDecimalPoint(m_text.at(m_at))) {
      ++m_at;
      digits.append(QLatin1Char('.'));
      while (m_at < m_text.size() && m_text.at(m_at).isDigit()) digits.append(m_text.at(m_at++));
    }
    appendExponent(digits);
    bool ok = false;
    const double value = digits.toDouble(&ok);
    // Too large a number is infinite, which the result then is.
    if (!ok && !std::isinf(value)) {
      complain(atEnd() ? tr("A number is missing at the end.")
                       : tr("A number is missing before “%1”.").arg(m_text.at(m_at)));
    }
    return value;
  }

  QString digitsWithGroups() {
    QString digits;
    qsizetype sinceSeparator = -1;
    while (m_at < m_text.size()) {
      const QChar c = m_text.at(m_at);
      if (c.isDigit()) {
        digits.append(QChar(u'0' + c.digitValue()));
        if (sinceSeparator >= 0) ++sinceSeparator;
      } else if (startsGroup()) {
        sinceSeparator = 0;
      } else {
        break;
      }
      ++m_at;
    }
    return digits;
  }

  // A group separator stands between digits and before exactly three of them.
  [[nodiscard]] bool startsGroup() const {
    const QString separator = m_rules.locale.groupSeparator();
    if (separator.isEmpty() || m_text.at(m_at) != separator.at(0)) return false;
    if (m_at == 0 || !m_text.at(m_at - 1).isDigit()) return false;
    qsizetype count = 0;
    while (m_at + 1 + count < m_text.size() && m_text.at(m_at + 1 + count).isDigit()) ++count;
    return count == 3;
  }

  [[nodiscard]] bool isDecimalPoint(QChar c) const {
    return c == QLatin1Char('.') || m_rules.locale.decimalPoint().startsWith(c);
  }

  void appendExponent(QString& digits) {
    if (m_at >= m_text.size() || m_text.at(m_at).toLower() != QLatin1Char('e')) return;
    qsizetype ahead = m_at + 1;
    if (ahead < m_text.size() && (m_text.at(ahead) == u'+' || m_text.at(ahead) == u'-')) ++ahead;
    if (ahead >= m_text.size() || !m_text.at(ahead).isDigit()) return;
    while (m_at < ahead) digits.append(m_text.at(m_at++));
    while (m_at < m_text.size() && m_text.at(m_at).isDigit()) digits.append(m_text.at(m_at++));
  }

  double unit() {
    skipSpace();
    qsizetype end = m_at;
    while (end < m_text.size() && isUnitCharacter(m_text.at(end))) ++end;
    if (end == m_at) return 1;
    const QString name = m_text.sliced(m_at, end - m_at).toString();
    const auto found = m_rules.units.find(name);
    if (found == m_rules.units.end()) {
      complain(tr("“%1” is no unit of this field.").arg(name));
      return 1;
    }
    m_at = end;
    return *found;
  }

  static bool isUnitCharacter(QChar c) {
    return c.isLetter() || c == u'%' || c == u'°' || c == u'"';
  }

  bool take(char16_t c) {
    skipSpace();
    if (m_at >= m_text.size() || m_text.at(m_at) != c) return false;
    ++m_at;
    return true;
  }

  bool atEnd() {
    skipSpace();
    return m_at >= m_text.size();
  }

  void skipSpace() {
    while (m_at < m_text.size() && m_text.at(m_at).isSpace()) ++m_at;
  }

  void complain(const QString& what) {
    if (m_complaint.isEmpty()) m_complaint = what;
  }

  QStringView m_text;
  const NumberExpression::Rules& m_rules;
  qsizetype m_at = 0;
  int m_depth = 0;
  QString m_complaint;
};

NumberExpression::Change changeOf(QChar sign) {
  switch (sign.unicode()) {
    case u'+':
      return NumberExpression::Change::Add;
    case u'*':
      return NumberExpression::Change::Multiply;
    case u'/':
      return NumberExpression::Change::Divide;
    default:
      return NumberExpression::Change::Subtract;
  }
}

}  // namespace

foundation::Result<NumberExpression> NumberExpression::parse(const QString& text,
                                                             const Rules& rules) {
  const QString trimmed = text.trimmed();
  if (trimmed.isEmpty()) return foundation::failure(tr("A number is missing."));
  if (trimmed.size() > kMostCharacters) return foundation::failure(tr("The entry is too long."));
  const bool relative = trimmed.size() > 2 && trimmed.at(1) == QLatin1Char('=') &&
                        QStringLiteral("+-*/").contains(trimmed.at(0));
  const QStringView rest = relative ? QStringView(trimmed).sliced(2) : QStringView(trimmed);
  const auto value = ExpressionParser(rest, rules).parse();
  if (!value) return tl::unexpected(value.error());
  const Change change = relative ? changeOf(trimmed.at(0)) : Change::Set;
  if (change == Change::Divide && *value == 0)
    return foundation::failure(tr("A number cannot be divided by zero."));
  return NumberExpression(change, *value);
}

double NumberExpression::appliedTo(double current) const {
  double result = m_operand;
  switch (m_change) {
    case Change::Set:
      break;
    case Change::Add:
      result = current + m_operand;
      break;
    case Change::Subtract:
      result = current - m_operand;
      break;
    case Change::Multiply:
      result = current * m_operand;
      break;
    case Change::Divide:
      result = current / m_operand;
      break;
  }
  return std::isfinite(result) ? result : current;
}

}  // namespace widgets
