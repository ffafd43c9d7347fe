#include "foundation/Base64.h"

#include <array>

namespace foundation {

namespace {

constexpr quint8 noDigit = 0xFF;

constexpr std::array<quint8, 256> digitValues = [] {
  std::array<quint8, 256> values{};
  values.fill(noDigit);
  constexpr std::string_view alphabet =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  for (size_t i = 0; i < alphabet.size(); ++i)
    values[static_cast<quint8>(alphabet[i])] = static_cast<quint8>(i);
  return values;
}();

bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// Whole groups of four, the last one filled up with "=", which ends the text.
bool isSound(std::string_view text) {
  size_t digits = 0;
  size_t padding = 0;
  for (const char c : text) {
    if (digitValues[static_cast<quint8>(c)] != noDigit) {
      if (padding > 0) return false;
      ++digits;
    } else if (c == '=') {
      ++padding;
    } else if (!isBlank(c)) {
      return false;
    }
  }
  return digits % 4 != 1 && padding == (digits % 4 == 0 ? 0 : 4 - digits % 4);
}

}  // namespace

QByteArray bytesFromSoundBase64(std::string_view text) {
  QByteArray bytes(static_cast<qsizetype>(text.size() / 4 * 3 + 3), Qt::Uninitialized);
  char* to = bytes.data();
  const auto put = [&to](quint32 bits, int count) {
    for (int i = 0; i < count; ++i) *to++ = static_cast<char>(bits >> (16 - 8 * i));
  };
  quint32 bits = 0;
  int digits = 0;
  for (const char c : text) {
    const quint8 digit = digitValues[static_cast<quint8>(c)];
    if (digit == noDigit) continue;
    bits = bits << 6 | digit;
    if (++digits < 4) continue;
    put(bits, 3);
    bits = 0;
    digits = 0;
  }
  if (digits > 1) put(bits << (24 - 6 * digits), digits - 1);
  bytes.truncate(to - bytes.constData());
  return bytes;
}

std::optional<QByteArray> bytesFromBase64(std::string_view text) {
  if (!isSound(text)) return {};
  return bytesFromSoundBase64(text);
}

}  // namespace foundation
