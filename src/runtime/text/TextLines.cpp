#include "runtime/text/TextLines.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QtEndian>
#include <algorithm>
#include <cmath>

#include "runtime/text/FontResolver.h"

namespace runtime {

namespace {

/// Layout units of an em. Fine enough for the toolkit's 1/64 units, and the size of the colour
/// glyphs' pictures, so that those come unscaled.
constexpr int layoutEm = 128;
/// The toolkit's fixed-point lengths end at 33 million units: an unwrapped line may hold as many
/// characters as stay below that, however wide they are. None of more fits into an image.
constexpr qsizetype unwrappedLimit = 20'000;
constexpr double widestLine = 8'000'000;
/// The platform's tab stops: every 28 points for its standard size of 12.
constexpr double tabStopEms = 28.0 / 12.0;

}  // namespace

TextLines::TextLines(const QString& text, const TextStyle& style, double lowestBottom)
    : m_text(text),
      m_style(style),
      m_lowestBottom(lowestBottom),
      m_scale(style.size / layoutEm),
      m_font(FontResolver::fontForText(style.fontName, layoutEm, text)),
      m_emojiFont(FontResolver::emojiFont(layoutEm)),
      m_rightToLeft(isRightToLeftText(text, false)) {
  setSpacing(text);
  for (const TextParagraph& paragraph : textParagraphs(text))
    if (!addParagraph(paragraph)) break;
}

void TextLines::setSpacing(const QString& text) {
  if (!std::isfinite(m_style.kerning)) m_style.kerning = 0;
  if (!std::isfinite(m_style.leading)) m_style.leading = 0;
  const double most = widestLine / std::min(text.size() + 1, unwrappedLimit);
  const double spacing = std::clamp(m_style.kerning / m_scale, -2.0 * layoutEm, most);
  m_font.setLetterSpacing(QFont::AbsoluteSpacing, spacing);
  m_emojiFont.setLetterSpacing(QFont::AbsoluteSpacing, spacing);
}

QTextOption TextLines::option(bool rightToLeft) const {
  const bool wraps = m_style.width > 0;
  QTextOption option;
  option.setTextDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
  option.setWrapMode(wraps ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::ManualWrap);
  // Spaces that end a line hang over when it was wrapped, but count where the text itself ends:
  // pieces of a crawl are joined by them.
  if (!wraps) option.setFlags(QTextOption::IncludeTrailingSpaces);
  const bool justifies = wraps && m_style.horizontal == TextAlignment::Justified;
  option.setAlignment(justifies ? Qt::AlignJustify : Qt::AlignLeft | Qt::AlignAbsolute);
  option.setTabStopDistance(tabStopEms * layoutEm);
  return option;
}

bool TextLines::addParagraph(const TextParagraph& paragraph) {
  const bool wraps = m_style.width > 0;
  const QString text = wraps ? paragraph.text : paragraph.text.left(unwrappedLimit);
  const bool rightToLeft = isRightToLeftText(text, m_rightToLeft);
  m_layouts.push_back(std::make_unique<QTextLayout>(text, m_font));
  QTextLayout& layout = *m_layouts.back();
  layout.setTextOption(option(rightToLeft));
  QList<QTextLayout::FormatRange> formats;
  for (const TextSpan& span : paragraph.emoji) {
    QTextCharFormat format;
    format.setFont(m_emojiFont);
    formats.append({static_cast<int>(span.start), static_cast<int>(span.length), format});
  }
  layout.setFormats(formats);
  layout.beginLayout();
  bool goesOn = true;
  while (goesOn) {
    QTextLine line = layout.createLine();
    if (!line.isValid()) break;
    line.setLineWidth(wraps ? std::min(m_style.width / m_scale, widestLine) : widestLine);
    line.setPosition({});
    goesOn = addLine(line, rightToLeft, line.textStart() + line.textLength() >= text.size());
  }
  layout.endLayout();
  return goesOn;
}

bool TextLines::addLine(const QTextLine& line, bool rightToLeft, bool isLast) {
  const LineMetrics metrics = metricsOf(line);
  const double bottom = m_top + metrics.ascent + metrics.descent;
  const bool tooLow = bottom > m_lowestBottom;
  if (tooLow && m_style.height > 0) return false;
  Line added;
  added.line = line;
  added.width = line.naturalTextWidth() * m_scale;
  // The last glyph's advance is not to be cut where glyphs move closer.
  if (m_style.kerning < 0 && line.textLength() > 0) added.width -= m_style.kerning;
  added.baseline = m_top + metrics.ascent;
  added.isRightToLeft = rightToLeft;
  added.fillsWidth =
      m_style.horizontal == TextAlignment::Justified && m_style.width > 0 && !isLast;
  m_measured = {std::max(m_measured.width(), added.width), bottom};
  m_lines.push_back(added);
  const double distance = metrics.ascent + metrics.descent + metrics.leading + m_style.leading;
  m_top += std::max(distance, 0.0);
  return !tooLow;
}

TextLines::LineMetrics TextLines::metricsOf(const QTextLine& line) {
  LineMetrics metrics = metricsOf(QRawFont::fromFont(m_font));
  for (const QGlyphRun& run : line.glyphRuns()) {
    const LineMetrics other = metricsOf(run.rawFont());
    metrics.ascent = std::max(metrics.ascent, other.ascent);
    metrics.descent = std::max(metrics.descent, other.descent);
    metrics.leading = std::max(metrics.leading, other.leading);
  }
  return metrics;
}

TextLines::LineMetrics TextLines::metricsOf(const QRawFont& font) {
  if (const auto known = m_metrics.constFind(font); known != m_metrics.cend()) return *known;
  LineMetrics metrics{font.ascent() * m_scale, font.descent() * m_scale, font.leading() * m_scale};
  // The toolkit's own are rounded up to whole units.
  const QByteArray table = font.fontTable("hhea");
  if (table.size() >= 10 && font.unitsPerEm() > 0) {
    const auto ems = [&](int offset) {
      return qFromBigEndian<qint16>(table.constData() + offset) / font.unitsPerEm();
    };
    metrics = {ems(4) * m_style.size, -ems(6) * m_style.size, ems(8) * m_style.size};
  }
  return *m_metrics.insert(font, metrics);
}

QString TextLines::missingCharacters() const {
  const QFontMetricsF font(m_font);
  const QFontMetricsF emoji(m_emojiFont);
  for (const char32_t c : m_text.toUcs4()) {
    if (c <= 0x20 || !QChar::isPrint(c) || font.inFontUcs4(c) || emoji.inFontUcs4(c)) continue;
    return QStringLiteral("no installed font has the character “%1” (U+%2)")
        .arg(QString::fromUcs4(&c, 1))
        .arg(static_cast<uint>(c), 4, 16, QLatin1Char('0'));
  }
  return {};
}

}  // namespace runtime
