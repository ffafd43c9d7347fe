#include "RtfTools.h"

#include <QTextBlock>

#include "foundation/rtf/RtfReader.h"

namespace foundation {

namespace {

QString colorWord(const char* name, const QBrush& brush) {
  if (brush.style() == Qt::NoBrush) return {};
  return QLatin1String(name) + brush.color().name(QColor::HexArgb) + u' ';
}

QString characterWords(const QTextCharFormat& format) {
  using Format = QTextCharFormat;
  QString words;
  if (format.fontWeight() >= QFont::DemiBold) words += QLatin1String("b ");
  if (format.fontItalic()) words += QLatin1String("i ");
  if (format.fontStrikeOut()) words += QLatin1String("strike ");
  if (format.underlineStyle() != Format::NoUnderline)
    words += QStringLiteral("ul%1 ").arg(int(format.underlineStyle()));
  if (format.verticalAlignment() == Format::AlignSuperScript) words += QLatin1String("super ");
  if (format.verticalAlignment() == Format::AlignSubScript) words += QLatin1String("sub ");
  if (format.fontCapitalization() != QFont::MixedCase)
    words += QStringLiteral("caps%1 ").arg(int(format.fontCapitalization()));
  words += colorWord("fg", format.foreground()) + colorWord("bg", format.background());
  if (format.underlineColor().isValid()) words += colorWord("ulc", format.underlineColor());
  words += QString::number(format.fontPointSize());
  for (const QString& family : format.fontFamilies().toStringList()) words += u' ' + family;
  return words;
}

QString paragraphWords(const QTextBlockFormat& format) {
  QString words;
  if (format.hasProperty(QTextFormat::LayoutDirection))
    words += QLatin1String(format.layoutDirection() == Qt::RightToLeft ? "rtl " : "ltr ");
  if (format.hasProperty(QTextFormat::BlockAlignment)) {
    const Qt::Alignment alignment = format.alignment();
    if (alignment & Qt::AlignLeft) words += QLatin1String("left ");
    if (alignment & Qt::AlignHCenter) words += QLatin1String("center ");
    if (alignment & Qt::AlignRight) words += QLatin1String("right ");
    if (alignment & Qt::AlignJustify) words += QLatin1String("justify ");
    if (alignment & Qt::AlignAbsolute) words += QLatin1String("absolute ");
  }
  const double lengths[] = {format.leftMargin(), format.rightMargin(), format.textIndent(),
                            format.topMargin(), format.bottomMargin()};
  for (int i = 0; i < 5; ++i)
    if (lengths[i] != 0) words += QStringLiteral("length%1=%2 ").arg(i).arg(lengths[i]);
  return words;
}

}  // namespace

std::string described(const QTextDocument& document) {
  QString lines;
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    lines += paragraphWords(block.blockFormat());
    if (block.begin().atEnd()) lines += u'(' + characterWords(block.charFormat()) + u')';
    for (auto it = block.begin(); !it.atEnd(); ++it)
      lines += u'|' + characterWords(it.fragment().charFormat()) + u':' + it.fragment().text();
    lines += u'\n';
  }
  return lines.replace(QChar(QChar::LineSeparator), QStringLiteral("<br>")).toStdString();
}

std::string describedRtf(const QByteArray& rtf) {
  return described(*RtfReader::read(rtf));
}

std::string textOf(const QByteArray& rtf) {
  return RtfReader::read(rtf)
      ->toRawText()
      .replace(QChar(QChar::ParagraphSeparator), u'\n')
      .toStdString();
}

}  // namespace foundation
