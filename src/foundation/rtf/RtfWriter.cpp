#include "foundation/rtf/RtfWriter.h"

#include <QTextBlock>

#include "foundation/rtf/detail/RtfCharacterStyle.h"
#include "foundation/rtf/detail/RtfFontTable.h"
#include "foundation/rtf/detail/RtfParagraphStyle.h"
#include "foundation/rtf/detail/RtfWriterTables.h"

namespace foundation {

using detail::RtfCharacterStyle;
using detail::RtfFontTable;
using detail::RtfParagraphStyle;
using detail::RtfWriterTables;

namespace {

constexpr double pointsOfPixel = 0.75;

void appendWord(QByteArray& rtf, const char* word) {
  rtf += '\\';
  rtf += word;
}

void appendNumber(QByteArray& rtf, const char* word, int parameter, int whenUnset = 0) {
  if (parameter == whenUnset) return;
  appendWord(rtf, word);
  rtf += QByteArray::number(parameter);
}

const char* underlineWord(QTextCharFormat::UnderlineStyle style) {
  switch (style) {
    case QTextCharFormat::NoUnderline:
      return nullptr;
    case QTextCharFormat::SingleUnderline:
      return "ul";
    case QTextCharFormat::DashUnderline:
      return "uldash";
    case QTextCharFormat::DotLine:
      return "uld";
    case QTextCharFormat::DashDotLine:
      return "uldashd";
    case QTextCharFormat::DashDotDotLine:
      return "uldashdd";
    case QTextCharFormat::WaveUnderline:
      return "ulwave";
    case QTextCharFormat::SpellCheckUnderline:
      return nullptr;  // a mark of an editor, not of the text
  }
  return nullptr;
}

QByteArray decoration(const QTextCharFormat& format) {
  QByteArray rtf;
  if (const char* word = underlineWord(format.underlineStyle())) appendWord(rtf, word);
  if (format.fontStrikeOut()) appendWord(rtf, "strike");
  if (format.fontCapitalization() == QFont::AllUppercase) appendWord(rtf, "caps");
  if (format.fontCapitalization() == QFont::SmallCaps) appendWord(rtf, "scaps");
  if (format.verticalAlignment() == QTextCharFormat::AlignSuperScript) appendWord(rtf, "super");
  if (format.verticalAlignment() == QTextCharFormat::AlignSubScript) appendWord(rtf, "sub");
  return rtf;
}

/// One writing of one document.
class Writing {
 public:
  explicit Writing(const QTextDocument& document) : m_defaultFont(document.defaultFont()) {
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
      if (block != document.begin()) m_body += "\\par\n";
      writeParagraph(block);
    }
  }
  [[nodiscard]] QByteArray rtf() const {
    return "{\\rtf1\\ansi\\ansicpg1252" + m_tables.fontTable() + m_tables.colorTable() + m_body +
           "}";
  }

 private:
  void writeParagraph(const QTextBlock& block);
  void writeParagraphStyle(const RtfParagraphStyle& style);
  /// Never empty: a size is always part of it.
  [[nodiscard]] QByteArray characterStyle(const QTextCharFormat& format);
  [[nodiscard]] QByteArray colors(const QTextCharFormat& format);
  [[nodiscard]] QString family(const QTextCharFormat& format) const;
  [[nodiscard]] int halfPoints(const QTextCharFormat& format) const;

  QFont m_defaultFont;
  RtfWriterTables m_tables;
  QByteArray m_body;
};

void Writing::writeParagraph(const QTextBlock& block) {
  m_body += "\\pard\\plain";
  writeParagraphStyle(RtfParagraphStyle::of(block.blockFormat()));
  QByteArray openStyle;
  for (auto it = block.begin(); !it.atEnd(); ++it) {
    const QByteArray style = characterStyle(it.fragment().charFormat());
    if (style != openStyle) {
      if (!openStyle.isEmpty()) m_body += '}';
      m_body += '{' + style + ' ';
      openStyle = style;
    }
    detail::appendRtfText(m_body, it.fragment().text());
  }
  m_body += openStyle.isEmpty() ? characterStyle(block.charFormat()) : QByteArray("}");
}

void Writing::writeParagraphStyle(const RtfParagraphStyle& style) {
  using Alignment = RtfParagraphStyle::Alignment;
  if (style.direction == Qt::RightToLeft) appendWord(m_body, "rtlpar");
  if (style.direction == Qt::LeftToRight) appendWord(m_body, "ltrpar");
  if (style.alignment == Alignment::Left) appendWord(m_body, "ql");
  if (style.alignment == Alignment::Center) appendWord(m_body, "qc");
  if (style.alignment == Alignment::Right) appendWord(m_body, "qr");
  if (style.alignment == Alignment::Justify) appendWord(m_body, "qj");
  appendNumber(m_body, "li", style.leftIndent);
  appendNumber(m_body, "ri", style.rightIndent);
  appendNumber(m_body, "fi", style.firstLineIndent);
  appendNumber(m_body, "sb", style.spaceBefore);
  appendNumber(m_body, "sa", style.spaceAfter);
}

QByteArray Writing::characterStyle(const QTextCharFormat& format) {
  QByteArray rtf;
  if (const QString name = RtfFontTable::cleanName(family(format)); !name.isEmpty())
    appendNumber(rtf, "f", m_tables.fontNumber(name));
  appendNumber(rtf, "fs", halfPoints(format), 0);
  const int weight =
      format.hasProperty(QTextFormat::FontWeight) ? format.fontWeight() : m_defaultFont.weight();
  if (weight >= QFont::DemiBold) appendWord(rtf, "b");
  const bool isItalic =
      format.hasProperty(QTextFormat::FontItalic) ? format.fontItalic() : m_defaultFont.italic();
  if (isItalic) appendWord(rtf, "i");
  return rtf + decoration(format) + colors(format);
}

/// The background is written twice: readers know one word or the other.
QByteArray Writing::colors(const QTextCharFormat& format) {
  QByteArray rtf;
  const auto solidColor = [](const QBrush& brush) {
    return brush.style() == Qt::NoBrush ? QColor() : brush.color();
  };
  appendNumber(rtf, "cf", m_tables.colorNumber(solidColor(format.foreground())));
  const int background = m_tables.colorNumber(solidColor(format.background()));
  appendNumber(rtf, "cb", background);
  appendNumber(rtf, "chcbpat", background);
  appendNumber(rtf, "ulc", m_tables.colorNumber(format.underlineColor()));
  return rtf;
}

QString Writing::family(const QTextCharFormat& format) const {
  const QStringList families = format.fontFamilies().toStringList();
  if (!families.isEmpty()) return families.first();
  return m_defaultFont.families().isEmpty() ? m_defaultFont.family()
                                            : m_defaultFont.families().first();
}

int Writing::halfPoints(const QTextCharFormat& format) const {
  double points = m_defaultFont.pointSizeF();
  if (points <= 0) points = m_defaultFont.pixelSize() * pointsOfPixel;
  if (format.hasProperty(QTextFormat::FontPointSize))
    points = format.fontPointSize();
  else if (format.hasProperty(QTextFormat::FontPixelSize))
    points = format.intProperty(QTextFormat::FontPixelSize) * pointsOfPixel;
  return RtfCharacterStyle::halfPointsOf(points);
}

}  // namespace

QByteArray RtfWriter::write(const QTextDocument& document) {
  return document.isEmpty() ? QByteArray() : Writing(document).rtf();
}

}  // namespace foundation
