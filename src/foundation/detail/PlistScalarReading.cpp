#include "foundation/detail/PlistScalarReading.h"

#include <locale.h>
#include <stdlib.h>

#include <QTimeZone>
#include <charconv>
#include <cmath>
#include <string>

namespace foundation::detail {

namespace {

std::string_view trimmed(std::string_view text) {
  const auto isSpace = [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; };
  while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
  return text;
}

template <typename T>
T number(std::string_view digits, int base = 10) {
  T value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
  return value;
}

void appendUtf8(quint32 code, std::string& out) {
  const auto byte = [&out](quint32 value) { out.push_back(static_cast<char>(value)); };
  if (code < 0x80) return byte(code);
  if (code < 0x800) {
    byte(0xC0 | code >> 6);
  } else if (code < 0x10000) {
    byte(0xE0 | code >> 12);
    byte(0x80 | (code >> 6 & 0x3F));
  } else {
    byte(0xF0 | code >> 18);
    byte(0x80 | (code >> 12 & 0x3F));
    byte(0x80 | (code >> 6 & 0x3F));
  }
  byte(0x80 | (code & 0x3F));
}

quint32 entityCode(std::string_view name) {
  if (name == "amp") return '&';
  if (name == "lt") return '<';
  if (name == "gt") return '>';
  if (name == "quot") return '"';
  if (name == "apos") return '\'';
  const bool hex = name[1] == 'x';
  return number<quint32>(name.substr(hex ? 2 : 1), hex ? 16 : 10);
}

}  // namespace

PropertyValue readPlistInteger(std::string_view text) {
  text = trimmed(text);
  const bool negative = text.front() == '-';
  if (negative || text.front() == '+') text.remove_prefix(1);
  const bool hex = text.size() > 1 && (text[1] == 'x' || text[1] == 'X');
  const auto value = number<quint64>(hex ? text.substr(2) : text, hex ? 16 : 10);
  if (negative) return static_cast<qint64>(0 - value);
  return value;
}

PropertyValue readPlistReal(std::string_view text) {
  text = trimmed(text);
  if (text.front() == '+') text.remove_prefix(1);
  double value = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc()) return value;
  // Only strtod tells what is too large from what is too small.
  static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
  return strtod_l(std::string(text).c_str(), nullptr, plain);
}

PropertyValue readPlistDate(std::string_view text) {
  text = trimmed(text);
  const auto part = [text](size_t at, size_t size) { return number<int>(text.substr(at, size)); };
  const QDate day(part(0, 4), part(5, 2), part(8, 2));
  const QTime time(part(11, 2), part(14, 2), part(17, 2));
  return QDateTime(day, time, QTimeZone::utc());
}

PropertyValue dateFromReference(double seconds) {
  constexpr qint64 kReference = 978307200000;  // 2001-01-01 in milliseconds since 1970
  return QDateTime::fromMSecsSinceEpoch(kReference + std::llround(seconds * 1000),
                                        QTimeZone::utc());
}

void appendWithoutEntities(std::string_view text, std::string& out) {
  for (;;) {
    const size_t start = text.find('&');
    out.append(text.substr(0, start));
    if (start == std::string_view::npos) return;
    const size_t end = text.find(';', start);
    appendUtf8(entityCode(text.substr(start + 1, end - start - 1)), out);
    text.remove_prefix(end + 1);
  }
}

}  // namespace foundation::detail
