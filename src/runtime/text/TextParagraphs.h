#pragma once

#include <QList>
#include <QString>

namespace runtime {

/// A stretch of UTF-16 code units.
struct TextSpan {
  qsizetype start = 0;
  qsizetype length = 0;
  friend bool operator==(const TextSpan&, const TextSpan&) = default;
};

/// One paragraph as layout takes it: no control characters, no variation selectors.
struct TextParagraph {
  QString text;
  QList<TextSpan> emoji;  ///< what is shown in colour
};

/// Cuts a text at its line breaks (LF, CR, CR LF, VT, FF, NEL, U+2028, U+2029) and finds the emoji:
/// characters that are pictures by themselves, that a variation selector, a skin tone or a keycap
/// makes one, flags, and sequences joined by U+200D. An empty text has one empty paragraph.
[[nodiscard]] QList<TextParagraph> textParagraphs(const QString& text);

/// True for right-to-left text by the first character with a direction.
[[nodiscard]] bool isRightToLeftText(const QString& text, bool otherwise);

}  // namespace runtime
