#pragma once

#include <QByteArray>
#include <optional>
#include <string_view>

namespace foundation {

/// What base64 text stands for, blanks and line ends in it left out. None when the text is damaged.
[[nodiscard]] std::optional<QByteArray> bytesFromBase64(std::string_view text);
/// The same for text that is known to be sound, by whatever rules: what is no digit is passed over.
[[nodiscard]] QByteArray bytesFromSoundBase64(std::string_view text);

}  // namespace foundation
