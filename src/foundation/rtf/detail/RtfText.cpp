#include "foundation/rtf/detail/RtfText.h"

namespace foundation::detail {

namespace {

bool isLeftOut(char16_t c) {
  return (c < 0x20 && c != u'\t') || c == 0x7F || c == QChar::ObjectReplacementCharacter ||
         c == QChar::ParagraphSeparator || (c >= 0xFDD0 && c <= 0xFDEF) || c >= 0xFFFE;
}

}  // namespace

QString plainRtfText(QStringView text) {
  QString plain;
  plain.reserve(text.size());
  for (qsizetype i = 0; i < text.size(); ++i) {
    const QChar c = text[i];
    if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
      plain += c;
      plain += text[++i];
    } else if (c.isSurrogate()) {
      plain += QChar(QChar::ReplacementCharacter);
    } else if (!isLeftOut(c.unicode())) {
      plain += c;
    }
  }
  return plain;
}

}  // namespace foundation::detail
