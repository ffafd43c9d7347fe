#include "foundation/rtf/RtfTokenizer.h"

#include <limits>

namespace foundation {

using Type = RtfToken::Type;

namespace {

bool isLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool isLineEnd(char c) {
  return c == '\n' || c == '\r';
}

int hexDigit(char c) {
  if (isDigit(c)) return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

RtfToken tokenOf(Type type) {
  RtfToken token;
  token.type = type;
  return token;
}

RtfToken characterToken(Type type, char character) {
  RtfToken token = tokenOf(type);
  token.character = character;
  return token;
}

}  // namespace

RtfToken RtfTokenizer::next() {
  while (!atEnd()) {
    const char c = current();
    if (c == '{' || c == '}') {
      ++m_position;
      return tokenOf(c == '{' ? Type::GroupBegin : Type::GroupEnd);
    }
    if (c == '\\') {
      if (const auto token = escape()) return *token;
    } else if (isLineEnd(c)) {
      ++m_position;  // lines are only for the reader of the source
    } else {
      return text();
    }
  }
  return {};
}

/// Nothing for an escape that says nothing, such as a hexadecimal byte without digits.
std::optional<RtfToken> RtfTokenizer::escape() {
  ++m_position;
  if (atEnd()) return std::nullopt;
  const char c = current();
  if (isLetter(c)) return word();
  ++m_position;
  if (c == '\'') return hexByte();
  if (!isLineEnd(c)) return characterToken(Type::Symbol, c);
  if (c == '\r' && !atEnd() && current() == '\n') ++m_position;
  RtfToken token = tokenOf(Type::Word);
  token.word = QLatin1String("par");
  return token;
}

RtfToken RtfTokenizer::word() {
  const qsizetype start = m_position;
  while (!atEnd() && isLetter(current())) ++m_position;
  RtfToken token = tokenOf(Type::Word);
  token.word = QLatin1String(m_bytes.data() + start, m_position - start);
  token.parameter = parameter();
  if (!atEnd() && current() == ' ') ++m_position;
  if (token.word == QLatin1String("bin")) return binary(token.parameter.value_or(0));
  return token;
}

std::optional<int> RtfTokenizer::parameter() {
  qsizetype digits = m_position;
  const bool negative = !atEnd() && current() == '-';
  if (negative) ++digits;
  if (digits >= m_bytes.size() || !isDigit(m_bytes[digits])) return std::nullopt;
  qint64 value = 0;
  for (; digits < m_bytes.size() && isDigit(m_bytes[digits]); ++digits)
    value = qMin<qint64>(value * 10 + (m_bytes[digits] - '0'), std::numeric_limits<int>::max());
  m_position = digits;
  return static_cast<int>(negative ? -value : value);
}

std::optional<RtfToken> RtfTokenizer::hexByte() {
  int value = 0;
  int digits = 0;
  for (; digits < 2 && !atEnd() && hexDigit(current()) >= 0; ++digits, ++m_position)
    value = value * 16 + hexDigit(current());
  if (digits == 0) return std::nullopt;
  return characterToken(Type::Byte, static_cast<char>(value));
}

RtfToken RtfTokenizer::binary(int length) {
  RtfToken token = tokenOf(Type::Binary);
  const qsizetype size = qMin(qsizetype(qMax(length, 0)), m_bytes.size() - m_position);
  token.text = m_bytes.sliced(m_position, size);
  m_position += size;
  return token;
}

RtfToken RtfTokenizer::text() {
  const qsizetype start = m_position;
  while (!atEnd() && !isLineEnd(current()) && current() != '\\' && current() != '{' &&
         current() != '}')
    ++m_position;
  RtfToken token = tokenOf(Type::Text);
  token.text = m_bytes.sliced(start, m_position - start);
  return token;
}

}  // namespace foundation
