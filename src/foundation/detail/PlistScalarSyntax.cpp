#include "foundation/detail/PlistScalarSyntax.h"

#include <QDate>
#include <array>
#include <charconv>
#include <limits>

namespace foundation::detail {

namespace {

using Table = std::array<quint8, 256>;

constexpr Table kTextTable = [] {
  Table t{};
  for (size_t c = 0; c < 256; ++c) t[c] = c < 0x20 ? kControlCharacter : c >= 0x80 ? kNotAscii : 0;
  t['\t'] = t['\n'] = t['\r'] = 0;
  t['&'] = kAmpersand;
  return t;
}();

// Each byte of base64 text counts 1 when it carries bits or padding and 0 when it is white space;
// anything else sets the top bit of the sum's summands.
constexpr Table kBase64Table = [] {
  Table t{};
  t.fill(0x80);
  for (char c = 'a'; c <= 'z'; ++c) t[static_cast<quint8>(c)] = 1;
  for (char c = 'A'; c <= 'Z'; ++c) t[static_cast<quint8>(c)] = 1;
  for (char c = '0'; c <= '9'; ++c) t[static_cast<quint8>(c)] = 1;
  t['+'] = t['/'] = t['='] = 1;
  t[' '] = t['\t'] = t['\n'] = t['\r'] = 0;
  return t;
}();

constexpr std::string_view kSpaces = " \t\r\n";

std::string_view trimmed(std::string_view text) {
  const size_t first = text.find_first_not_of(kSpaces);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kSpaces) - first + 1);
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

size_t skipDigits(std::string_view text, size_t at) {
  while (at < text.size() && isDigit(text[at])) ++at;
  return at;
}

bool isXmlCharacter(quint32 code) {
  if (code < 0x20) return code == '\t' || code == '\n' || code == '\r';
  return code <= 0x10FFFF && !(code >= 0xD800 && code <= 0xDFFF) && code != 0xFFFE &&
         code != 0xFFFF;
}

// Base 10 or 16, the whole text.
bool parseUnsigned(std::string_view text, int base, quint64& value) {
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value, base);
  return !text.empty() && error == std::errc() && stop == end;
}

bool isSpecialReal(std::string_view text) {
  if (text.size() > 8) return false;
  std::array<char, 8> lower{};
  for (size_t i = 0; i < text.size(); ++i)
    lower[i] = text[i] >= 'A' && text[i] <= 'Z' ? static_cast<char>(text[i] + 32) : text[i];
  const std::string_view word(lower.data(), text.size());
  return word == "nan" || word == "inf" || word == "infinity";
}

int number(std::string_view digits) {
  int value = 0;
  for (const char c : digits) value = value * 10 + (c - '0');
  return value;
}

}  // namespace

quint8 textTraits(std::string_view text) {
  quint8 seen = 0;
  for (const char c : text) seen |= kTextTable[static_cast<quint8>(c)];
  return seen;
}

bool startsWithEntity(std::string_view text) {
  const size_t end = text.substr(0, 12).find(';');
  if (end == std::string_view::npos || end < 2) return false;
  const std::string_view name = text.substr(1, end - 1);
  if (name[0] != '#')
    return name == "amp" || name == "lt" || name == "gt" || name == "quot" || name == "apos";
  const bool hex = name.size() > 1 && name[1] == 'x';
  quint64 code = 0;
  return parseUnsigned(name.substr(hex ? 2 : 1), hex ? 16 : 10, code) && code <= 0x10FFFF &&
         isXmlCharacter(static_cast<quint32>(code));
}

bool isPlistInteger(std::string_view text) {
  text = trimmed(text);
  const bool negative = !text.empty() && text.front() == '-';
  if (!text.empty() && (negative || text.front() == '+')) text.remove_prefix(1);
  const std::string_view prefix = text.substr(0, 2);
  const bool hex = prefix == "0x" || prefix == "0X";
  // Readers disagree whether a leading zero means octal.
  if (!hex && text.size() > 1 && text.front() == '0') return false;
  quint64 value = 0;
  if (!parseUnsigned(hex ? text.substr(2) : text, hex ? 16 : 10, value)) return false;
  return !negative || value <= quint64(1) << 63;
}

bool isPlistReal(std::string_view text) {
  text = trimmed(text);
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
  size_t at = skipDigits(text, 0);
  size_t digits = at;
  if (at < text.size() && text[at] == '.') {
    const size_t fraction = skipDigits(text, at + 1);
    digits += fraction - at - 1;
    at = fraction;
  }
  if (digits == 0) return isSpecialReal(text);
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    ++at;
    if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
    const size_t end = skipDigits(text, at);
    if (end == at) return false;
    at = end;
  }
  return at == text.size();
}

bool isPlistDate(std::string_view text) {
  text = trimmed(text);
  constexpr std::string_view kPattern = "0000-00-00T00:00:00Z";
  if (text.size() != kPattern.size()) return false;
  for (size_t i = 0; i < text.size(); ++i)
    if (kPattern[i] == '0' ? !isDigit(text[i]) : text[i] != kPattern[i]) return false;
  const int year = number(text.substr(0, 4));
  return year > 0 && QDate::isValid(year, number(text.substr(5, 2)), number(text.substr(8, 2))) &&
         number(text.substr(11, 2)) < 24 && number(text.substr(14, 2)) < 60 &&
         number(text.substr(17, 2)) < 60;
}

bool isBase64(std::string_view text) {
  quint64 count = 0;
  quint8 seen = 0;
  for (const char c : text) {
    const quint8 kind = kBase64Table[static_cast<quint8>(c)];
    seen |= kind;
    count += kind;
  }
  if (seen & 0x80) return false;
  if (count % 4 != 0) return false;
  const size_t padding = text.find('=');
  if (padding == std::string_view::npos) return true;
  const std::string_view rest = trimmed(text.substr(padding));
  return rest == "=" || rest == "==";
}

}  // namespace foundation::detail
