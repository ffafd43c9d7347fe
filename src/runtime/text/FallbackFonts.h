#pragma once

#include <QList>
#include <QStringList>

#include "runtime/text/TextParagraphs.h"

/// Which families stand behind a font, chosen here instead of by the machine's font configuration
/// so that a picture does not depend on what else is installed.
namespace runtime {

/// Inter, Noto Sans, and the Noto families of the scripts and symbols that the text has, emoji
/// last; only families that are installed, so that layout asks for none in vain.
[[nodiscard]] QStringList fallbackFamilies(const QString& text);
/// The same for text that is not known yet.
[[nodiscard]] QStringList commonFallbackFamilies();
[[nodiscard]] QString emojiFamily();

struct FontSpan {
  TextSpan span;
  QString family;
};
/// Stretches in scripts that the family does not have, each with the family that has it. Layout is
/// told: left to itself it shapes such scripts by the rules of the first font and complains.
[[nodiscard]] QList<FontSpan> scriptSpans(const QString& text, const QString& family);

}  // namespace runtime
