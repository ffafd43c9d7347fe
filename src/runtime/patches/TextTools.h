#pragma once

#include <QString>

namespace runtime::patches {

enum class TruncateAt : quint8 { Start, Middle, End };

/// Every word (run of characters between white space) with its first letter upper, the rest lower.
[[nodiscard]] QString capitalized(const QString& text);
/// Cuts the text to `most` UTF-16 units; where something was removed stands the token.
[[nodiscard]] QString truncatedCharacters(const QString& text, qsizetype most, TruncateAt place,
                                          const QString& token);
/// The same by words; what remains is joined by single blanks.
[[nodiscard]] QString truncatedWords(const QString& text, qsizetype most, TruncateAt place,
                                     const QString& token);
/// "HH:MM:SS:FF" at 30 frames a second; negative times have a leading minus.
[[nodiscard]] QString timecodeText(double seconds);

}  // namespace runtime::patches
