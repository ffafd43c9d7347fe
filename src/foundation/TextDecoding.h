#pragma once

#include <QByteArray>
#include <QString>

namespace foundation {

/// The text of a file that does not say how it is encoded: by its byte order mark UTF-8, UTF-16 or
/// UTF-32; without one UTF-8 where that is valid and Windows-1252 otherwise. The mark is no part
/// of the text.
[[nodiscard]] QString decodedText(const QByteArray& bytes);

}  // namespace foundation
