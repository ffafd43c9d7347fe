#pragma once

#include <QtGlobal>
#include <string_view>

namespace foundation::detail {

// What a run of XML text contains, see textTraits().
constexpr quint8 kControlCharacter = 1;
constexpr quint8 kNotAscii = 2;
constexpr quint8 kAmpersand = 4;

/// The kinds of bytes that occur in the text, or-ed together.
[[nodiscard]] quint8 textTraits(std::string_view text);
/// One of the five predefined entities, or a reference to a character that XML allows.
[[nodiscard]] bool startsWithEntity(std::string_view text);
/// Decimal or 0x hexadecimal, in the range of a signed or unsigned 64-bit number.
[[nodiscard]] bool isPlistInteger(std::string_view text);
/// A decimal number with optional exponent, or nan, inf, infinity with optional sign.
[[nodiscard]] bool isPlistReal(std::string_view text);
/// YYYY-MM-DDThh:mm:ssZ, a date of the calendar.
[[nodiscard]] bool isPlistDate(std::string_view text);
/// Whole groups of four characters, padding only at the end, white space anywhere.
[[nodiscard]] bool isBase64(std::string_view text);

}  // namespace foundation::detail
