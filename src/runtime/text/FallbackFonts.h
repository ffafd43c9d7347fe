#pragma once

#include <QStringList>

/// Which families stand behind a font, chosen here instead of by the machine's font configuration
/// so that a picture does not depend on what else is installed.
namespace runtime {

/// Inter, Noto Sans, and the Noto families of the scripts and symbols that the text has, emoji
/// last; only families that are installed, so that layout asks for none in vain.
[[nodiscard]] QStringList fallbackFamilies(const QString& text);
/// The same for text that is not known yet.
[[nodiscard]] QStringList commonFallbackFamilies();
[[nodiscard]] QString emojiFamily();

}  // namespace runtime
