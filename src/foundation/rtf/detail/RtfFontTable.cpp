#include "foundation/rtf/detail/RtfFontTable.h"

#include "foundation/rtf/RtfCodePage.h"
#include "foundation/rtf/detail/RtfText.h"

namespace foundation::detail {

void RtfFontTable::applyWord(QLatin1String word, std::optional<int> parameter) {
  if (word == QLatin1String("f")) {
    endFont();
    m_number = parameter.value_or(0);
  } else if (word == QLatin1String("fcharset")) {
    if (const int page = RtfCodePage::ofCharacterSet(parameter.value_or(0)); page != 0)
      m_current.codePage = page;
  } else if (word == QLatin1String("cpg") && parameter.value_or(0) > 0) {
    m_current.codePage = *parameter;
  }
}

void RtfFontTable::appendName(QStringView text) {
  for (qsizetype start = 0; start < text.size();) {
    const qsizetype end = text.indexOf(u';', start);
    const QStringView part = text.sliced(start, (end < 0 ? text.size() : end) - start);
    m_current.name += part.left(maximumNameLength - m_current.name.size());
    if (end < 0) return;
    endFont();
    start = end + 1;
  }
}

QString RtfFontTable::cleanName(const QString& name) {
  return plainRtfText(plainRtfText(name).remove(u';').left(maximumNameLength)).simplified();
}

void RtfFontTable::endFont() {
  m_current.name = cleanName(m_current.name);
  if (m_number && (m_fonts.size() < maximumFonts || m_fonts.contains(*m_number)))
    m_fonts.insert(*m_number, m_current);
  m_current = {};
  m_number.reset();
}

}  // namespace foundation::detail
