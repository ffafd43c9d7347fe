#include "runtime/patches/NumberPattern.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "runtime/Value.h"

namespace runtime::patches {

namespace {

constexpr int mostDigits = 40;

/// Reads literal text up to one of the stop characters; quotes are resolved.
QString literal(QStringView text, qsizetype& at, QStringView stops, double& scale) {
  QString result;
  bool inQuotes = false;
  for (; at < text.size(); ++at) {
    const QChar c = text[at];
    if (c == QLatin1Char('\'')) {
      const bool doubled = at + 1 < text.size() && text[at + 1] == c;
      if (doubled)
        result += text[at++];
      else
        inQuotes = !inQuotes;
      continue;
    }
    if (!inQuotes && stops.contains(c)) break;
    if (!inQuotes && c == QLatin1Char('%')) scale = 100;
    if (!inQuotes && c == QChar(0x2030)) scale = 1000;
    result += !inQuotes && c == QChar(0xA4) ? QLatin1Char('$') : c;
  }
  return result;
}

bool isNumberCharacter(QChar c) {
  return QStringView(u"#0123456789,.").contains(c);
}

/// The end of the number part that starts at `at`.
qsizetype numberEnd(QStringView text, qsizetype at) {
  while (at < text.size() && isNumberCharacter(text[at])) ++at;
  if (at >= text.size() || text[at] != QLatin1Char('E')) return at;
  qsizetype end = at + 1;
  if (end < text.size() && text[end] == QLatin1Char('+')) ++end;
  const qsizetype digits = end;
  while (end < text.size() && text[end] == QLatin1Char('0')) ++end;
  return end > digits ? end : at;
}

/// Decimal digits without exponent; ties go to the even digit, as in Unicode number formats.
QString fixedDigits(double size, int places) {
  char buffer[400];
  const auto end =
      std::to_chars(buffer, buffer + sizeof buffer, size, std::chars_format::fixed, places);
  return QString::fromLatin1(buffer, end.ptr - buffer);
}

int clampedCount(qsizetype count) {
  return static_cast<int>(std::min<qsizetype>(count, mostDigits));
}

}  // namespace

NumberPattern::NumberPattern(const QString& pattern) {
  const QStringView text(pattern);
  qsizetype at = 0;
  m_positive.prefix = literal(text, at, u"#0123456789,.;", m_scale);
  const qsizetype end = numberEnd(text, at);
  readNumber(text.mid(at, end - at));
  at = end;
  m_positive.suffix = literal(text, at, u";", m_scale);
  m_negative = {QLatin1Char('-') + m_positive.prefix, m_positive.suffix};
  if (at >= text.size()) return;
  double unused = 1;
  m_negative.prefix = literal(text, ++at, u"#0123456789,.;", unused);
  at = numberEnd(text, at);
  m_negative.suffix = literal(text, at, u";", unused);
}

void NumberPattern::readNumber(QStringView body) {
  const qsizetype e = body.indexOf(QLatin1Char('E'));
  if (e >= 0) {
    m_exponent = clampedCount(body.mid(e).count(QLatin1Char('0')));
    m_exponentSign = body.mid(e).contains(QLatin1Char('+'));
    body = body.left(e);
  }
  const qsizetype point = body.indexOf(QLatin1Char('.'));
  readInteger(point < 0 ? body : body.left(point));
  if (point < 0) return;
  const QStringView fraction = body.mid(point + 1);
  m_minimumFraction = clampedCount(fraction.count(QLatin1Char('0')));
  m_maximumFraction = clampedCount(fraction.size());
}

void NumberPattern::readInteger(QStringView digits) {
  for (const QChar c : digits) m_minimumInteger += c.isDigit() ? 1 : 0;
  m_minimumInteger = std::min(m_minimumInteger, mostDigits);
  const qsizetype last = digits.lastIndexOf(QLatin1Char(','));
  if (last < 0) return;
  m_group = clampedCount(digits.size() - last - 1);
  const qsizetype before = last > 0 ? digits.left(last).lastIndexOf(QLatin1Char(',')) : -1;
  m_outerGroup = before < 0 ? m_group : clampedCount(last - before - 1);
}

QString NumberPattern::format(double number) const {
  if (std::isnan(number)) return QStringLiteral("NaN");
  const double size = std::abs(number) * m_scale;
  const QString text = std::isinf(size) ? QStringLiteral("∞")
                       : m_exponent > 0 ? exponentDigits(size)
                                        : digits(size);
  const Affixes& affixes = std::signbit(number) ? m_negative : m_positive;
  return affixes.prefix + text + affixes.suffix;
}

QString NumberPattern::digits(double size) const {
  QString text = fixedDigits(size, m_maximumFraction);
  qsizetype point = text.indexOf(QLatin1Char('.'));
  if (point < 0) point = text.size();
  QString fraction = text.mid(point + 1);
  while (fraction.size() > m_minimumFraction && fraction.endsWith(QLatin1Char('0')))
    fraction.chop(1);
  QString integer = text.left(point);
  if (m_minimumInteger == 0 && integer == QLatin1String("0") && !fraction.isEmpty())
    integer.clear();
  integer = grouped(integer.rightJustified(m_minimumInteger, QLatin1Char('0')));
  return fraction.isEmpty() ? integer : integer + QLatin1Char('.') + fraction;
}

QString NumberPattern::exponentDigits(double size) const {
  const int integers = std::max(m_minimumInteger, 1);
  int exponent = size > 0 ? static_cast<int>(std::floor(std::log10(size))) - integers + 1 : 0;
  // Six digits where the pattern does not say how many.
  const bool open = m_minimumInteger == 0 && m_maximumFraction == 0;
  const int places = open ? 6 : m_maximumFraction;
  QString mantissa = fixedDigits(size / std::pow(10.0, exponent), places);
  if (mantissa.section(QLatin1Char('.'), 0, 0).size() > integers) {  // 9.99 rounded up
    ++exponent;
    mantissa = fixedDigits(size / std::pow(10.0, exponent), places);
  }
  if (places > 0) {
    const qsizetype least = mantissa.size() - places + m_minimumFraction;
    while (mantissa.size() > least && mantissa.endsWith(QLatin1Char('0'))) mantissa.chop(1);
    if (mantissa.endsWith(QLatin1Char('.'))) mantissa.chop(1);
  }
  const QString sign = exponent < 0     ? QStringLiteral("-")
                       : m_exponentSign ? QStringLiteral("+")
                                        : QString();
  return mantissa + QLatin1Char('E') + sign +
         QString::number(std::abs(exponent)).rightJustified(m_exponent, QLatin1Char('0'));
}

QString NumberPattern::grouped(const QString& integer) const {
  if (m_group <= 0) return integer;
  QString text = integer;
  qsizetype place = text.size() - m_group;
  while (place > 0) {
    text.insert(place, QLatin1Char(','));
    if (m_outerGroup <= 0) break;
    place -= m_outerGroup;
  }
  return text;
}

namespace {

QString wordsBelowThousand(int n) {
  static const char* const ones[] = {"zero",    "one",     "two",       "three",    "four",
                                     "five",    "six",     "seven",     "eight",    "nine",
                                     "ten",     "eleven",  "twelve",    "thirteen", "fourteen",
                                     "fifteen", "sixteen", "seventeen", "eighteen", "nineteen"};
  static const char* const tens[] = {"",      "",      "twenty",  "thirty", "forty",
                                     "fifty", "sixty", "seventy", "eighty", "ninety"};
  if (n >= 100) {
    const QString hundreds = QString::fromLatin1(ones[n / 100]) + QStringLiteral(" hundred");
    return n % 100 == 0 ? hundreds : hundreds + QLatin1Char(' ') + wordsBelowThousand(n % 100);
  }
  if (n < 20) return QString::fromLatin1(ones[n]);
  const QString ten = QString::fromLatin1(tens[n / 10]);
  return n % 10 == 0 ? ten : ten + QLatin1Char('-') + QString::fromLatin1(ones[n % 10]);
}

QString wholeWords(quint64 n) {
  static const char* const powers[] = {"", " thousand", " million", " billion", " trillion"};
  QStringList parts;
  for (const char* power : powers) {
    const int part = static_cast<int>(n % 1000);
    if (part > 0) parts.prepend(wordsBelowThousand(part) + QString::fromLatin1(power));
    n /= 1000;
  }
  return parts.isEmpty() ? QStringLiteral("zero") : parts.join(QLatin1Char(' '));
}

}  // namespace

QString spelledOut(double number) {
  if (!std::isfinite(number) || std::abs(number) >= 1e15) return numberText(number);
  const QString digits = numberText(std::abs(number));
  QString text = wholeWords(static_cast<quint64>(std::abs(number)));
  const QString fraction = digits.section(QLatin1Char('.'), 1);
  if (!fraction.isEmpty() && !digits.contains(QLatin1Char('e'))) {
    text += QStringLiteral(" point");
    for (const QChar digit : fraction)
      text += QLatin1Char(' ') + wordsBelowThousand(digit.digitValue());
  }
  return number < 0 ? QStringLiteral("minus ") + text : text;
}

}  // namespace runtime::patches
