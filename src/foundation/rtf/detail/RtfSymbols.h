#pragma once

#include <QChar>
#include <QLatin1String>
#include <optional>

namespace foundation::detail {

/// The character that a control word such as `\emdash` stands for; null for other words. Ends of
/// paragraphs are U+2029, line breaks U+2028.
[[nodiscard]] QChar rtfCharacterOfWord(QLatin1String word);
/// The same for control symbols such as `\~`.
[[nodiscard]] QChar rtfCharacterOfSymbol(char symbol);
/// The escape that writes the character, or null for those that need none or a number.
[[nodiscard]] const char* rtfEscape(QChar character);

}  // namespace foundation::detail
