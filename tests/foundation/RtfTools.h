#pragma once

#include <QTextDocument>
#include <string>

namespace foundation {

/// The look of a text in words, a line a paragraph, such as "center |b 24 Inter:Two |i 12
/// Inter:bits".
[[nodiscard]] std::string described(const QTextDocument& document);
/// The same of RTF as it is read.
[[nodiscard]] std::string describedRtf(const QByteArray& rtf);
/// Only the characters.
[[nodiscard]] std::string textOf(const QByteArray& rtf);

}  // namespace foundation
