#include "foundation/rtf/detail/RtfWriterTables.h"

#include "foundation/rtf/detail/RtfColorTable.h"
#include "foundation/rtf/detail/RtfSymbols.h"
#include "foundation/rtf/detail/RtfText.h"

namespace foundation::detail {

namespace {

void appendWord(QByteArray& rtf, const char* word, int parameter) {
  rtf += '\\';
  rtf += word;
  rtf += QByteArray::number(parameter);
}

}  // namespace

int RtfWriterTables::fontNumber(const QString& family) {
  if (const auto known = m_fontNumbers.constFind(family); known != m_fontNumbers.cend())
    return *known;
  m_families.append(family);
  return *m_fontNumbers.insert(family, static_cast<int>(m_families.size()));
}

int RtfWriterTables::colorNumber(const QColor& color) {
  if (!color.isValid()) return 0;
  const QRgb rgb = color.rgba();
  if (const auto known = m_colorNumbers.constFind(rgb); known != m_colorNumbers.cend())
    return *known;
  m_colors.append(rgb);
  return *m_colorNumbers.insert(rgb, static_cast<int>(m_colors.size()));
}

QByteArray RtfWriterTables::fontTable() const {
  if (m_families.isEmpty()) return {};
  QByteArray rtf("{\\fonttbl");
  for (qsizetype i = 0; i < m_families.size(); ++i) {
    rtf += '{';
    appendWord(rtf, "f", static_cast<int>(i) + 1);
    rtf += "\\fnil\\fcharset0 ";
    appendRtfText(rtf, m_families[i]);
    rtf += ";}";
  }
  return rtf + "}\n";
}

QByteArray RtfWriterTables::colorTable() const {
  if (m_colors.isEmpty()) return {};
  QByteArray rtf("{\\colortbl;");
  for (const QRgb color : m_colors) {
    appendWord(rtf, "red", qRed(color));
    appendWord(rtf, "green", qGreen(color));
    appendWord(rtf, "blue", qBlue(color));
    rtf += ';';
  }
  return rtf + "}\n" + expandedColorTable();
}

/// Opacity has a place only in the second table. Nothing when all colours are opaque.
QByteArray RtfWriterTables::expandedColorTable() const {
  const auto isOpaque = [](QRgb color) { return qAlpha(color) == 255; };
  if (std::all_of(m_colors.begin(), m_colors.end(), isOpaque)) return {};
  const auto component = [](int value) {
    return qRound(value / 255.0 * RtfColorTable::expandedFull);
  };
  QByteArray rtf("{\\*\\expandedcolortbl;");
  for (const QRgb color : m_colors) {
    rtf += "\\cssrgb";
    for (const int value : {qRed(color), qGreen(color), qBlue(color), qAlpha(color)})
      appendWord(rtf, "c", component(value));
    rtf += ';';
  }
  return rtf + "}\n";
}

void appendRtfText(QByteArray& rtf, QStringView text) {
  const QString plain = plainRtfText(text);
  for (const QChar c : plain) {
    if (const char* escape = rtfEscape(c)) {
      rtf += escape;
    } else if (c.unicode() < 0x80) {
      rtf += static_cast<char>(c.unicode());
    } else {
      appendWord(rtf, "u", static_cast<qint16>(c.unicode()));
      rtf += "\\'3f";  // a question mark for readers that know no Unicode
    }
  }
}

}  // namespace foundation::detail
