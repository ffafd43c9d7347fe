#pragma once

#include <QString>
#include <optional>

namespace store::xml {

/// Whether XML cannot hold the text: control characters, halves of surrogate pairs, U+FFFE, U+FFFF.
[[nodiscard]] bool needsEscapes(QStringView text);
/// With "\uXXXX" for what XML cannot hold and "\\" for the backslash.
[[nodiscard]] QString escaped(QStringView text);
/// None when the text is not of that form.
[[nodiscard]] std::optional<QString> unescaped(QStringView text);

/// Appends the text of an element, or of an attribute within double quotes.
void appendText(QStringView text, QByteArray& out);
void appendAttributeText(QStringView text, QByteArray& out);

/// A real so that it reads back the same, in as few digits as that takes.
[[nodiscard]] QByteArray realText(double value);

}  // namespace store::xml
