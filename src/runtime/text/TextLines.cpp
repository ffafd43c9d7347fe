#include "runtime/text/TextLines.h"

#include <QGlyphRun>
#include <QHash>
#include <QSet>
#include <QtEndian>
#include <algorithm>
#include <cmath>

#include "runtime/text/FallbackFonts.h"
#include "runtime/text/FontCatalog.h"
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
      m_rightToLeft(isRightToLeftText(text, false)) {
  setSpacing();
  readFontMetrics();
  for (const TextParagraph& paragraph : textParagraphs(text))
    if (!addParagraph(paragraph)) break;
}

void TextLines::setSpacing() {
  if (!std::isfinite(m_style.kerning)) m_style.kerning = 0;
  if (!std::isfinite(m_style.leading)) m_style.leading = 0;
  const double most = widestLine / std::min(m_text.size() + 1, unwrappedLimit);
  m_font.setLetterSpacing(QFont::AbsoluteSpacing,
                          std::clamp(m_style.kerning / m_scale, -2.0 * layoutEm, most));
}

QTextOption TextLines::option(bool rightToLeft) const {
  const bool wraps = m_style.width > 0;
  QTextOption option;
  option.setTextDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
  option.setWrapMode(wraps ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::ManualWrap);
  // Spaces that end a line hang over when it was wrapped, but count where the text itself ends:
  // pieces of a crawl are joined by them.
  if (!wraps) option.setFlags(QTextOption::IncludeTrailingSpaces);
  option.setAlignment(Qt::AlignLeft | Qt::AlignAbsolute);
  option.setTabStopDistance(tabStopEms * layoutEm);
  return option;
}

QList<QTextLayout::FormatRange> TextLines::formats(const QString& text,
                                                   const QList<TextSpan>& emoji) const {
  QList<QTextLayout::FormatRange> formats;
  QHash<QString, QTextCharFormat> known;
  const auto add = [&](const TextSpan& span, const QString& family) {
    QTextCharFormat& format = known[family];
    if (format.isEmpty()) format.setFont(FontResolver::withFamilyFirst(m_font, family));
    formats.append({static_cast<int>(span.start), static_cast<int>(span.length), format});
  };
  for (const FontSpan& span : scriptSpans(text, m_font.families().constFirst()))
    add(span.span, span.family);
  for (const TextSpan& span : emoji) add(span, emojiFamily());
  return formats;
}

bool TextLines::addParagraph(const TextParagraph& paragraph) {
  const bool wraps = m_style.width > 0;
  const QString text = wraps ? paragraph.text : paragraph.text.left(unwrappedLimit);
  const bool rightToLeft = isRightToLeftText(text, m_rightToLeft);
  m_layouts.push_back(std::make_unique<QTextLayout>(text, m_font));
  QTextLayout& layout = *m_layouts.back();
  layout.setTextOption(option(rightToLeft));
  layout.setFormats(formats(text, paragraph.emoji));
  layout.beginLayout();
  bool goesOn = true;
  while (goesOn) {
    QTextLine line = layout.createLine();
    if (!line.isValid()) break;
    line.setLineWidth(wraps ? std::min(m_style.width / m_scale, widestLine) : widestLine);
    line.setPosition({});
    goesOn = addLine(line, text, rightToLeft);
  }
  layout.endLayout();
  return goesOn;
}

bool TextLines::addLine(const QTextLine& line, const QString& text, bool rightToLeft) {
  const LineMetrics metrics = metricsOf(line);
  const double bottom = m_top + metrics.ascent + metrics.descent;
  if (m_style.height > 0 && m_top + m_fontMetrics.ascent + m_fontMetrics.descent > m_lowestBottom)
    return false;
  Line added;
  added.line = line;
  added.width = line.naturalTextWidth() * m_scale;
  // The last glyph's advance is not to be cut where glyphs move closer.
  if (m_style.kerning < 0 && line.textLength() > 0) added.width -= m_style.kerning;
  added.baseline = m_top + metrics.ascent;
  added.isRightToLeft = rightToLeft;
  if (m_style.horizontal == TextAlignment::Justified && m_style.width > 0) justify(added, text);
  m_measured = {std::max(m_measured.width(), added.width), bottom};
  m_lines.push_back(added);
  const double distance = metrics.ascent + metrics.descent + metrics.leading + m_style.leading;
  m_top += std::max(distance, 0.0);
  return bottom <= m_lowestBottom || m_style.height > 0;
}

/// Widens the spaces of a line that does not end its paragraph. Done here because the toolkit also
/// widens the space that hangs over the end of right-to-left lines.
void TextLines::justify(Line& line, const QString& text) const {
  const double space = m_style.width - line.width;
  qsizetype end = line.line.textStart() + line.line.textLength();
  if (end >= text.size() || space <= 0) return;
  while (end > line.line.textStart() && text[end - 1].isSpace()) --end;
  for (int i = line.line.textStart(); i < end; ++i)
    if (text[i].isSpace())
      line.gaps.append((line.line.cursorToX(i) + line.line.cursorToX(i + 1)) / 2);
  if (line.gaps.isEmpty()) return;
  std::sort(line.gaps.begin(), line.gaps.end());
  line.gapExtra = space / m_scale / static_cast<double>(line.gaps.size());
  line.width = m_style.width;
}

/// The font's own box, grown where a glyph of a fallback font has ink beyond it: the boxes of some
/// fonts are twice as high, and a word in another script must not move a whole layout.
TextLines::LineMetrics TextLines::metricsOf(const QTextLine& line) const {
  LineMetrics metrics = m_fontMetrics;
  const double baseline = line.y() + line.ascent();
  for (const QGlyphRun& run : line.glyphRuns()) {
    const QRawFont font = run.rawFont();
    if (font == m_rawFont) continue;
    const QList<quint32> glyphs = run.glyphIndexes();
    const QList<QPointF> positions = run.positions();
    for (qsizetype i = 0; i < glyphs.size(); ++i) {
      const QRectF ink = font.boundingRect(glyphs[i]).translated(0, positions[i].y() - baseline);
      if (ink.isEmpty()) continue;
      metrics.ascent = std::max(metrics.ascent, -ink.top() * m_scale);
      metrics.descent = std::max(metrics.descent, ink.bottom() * m_scale);
    }
  }
  return metrics;
}

/// From the font's tables: the toolkit's metrics are rounded up to whole units.
void TextLines::readFontMetrics() {
  m_rawFont = QRawFont::fromFont(m_font);
  const QByteArray lineTable = m_rawFont.fontTable("hhea");
  const QByteArray headTable = m_rawFont.fontTable("head");
  const double unitsPerEm =
      headTable.size() >= 20 ? qFromBigEndian<quint16>(headTable.constData() + 18) : 0;
  if (lineTable.size() < 10 || unitsPerEm <= 0) {
    m_fontMetrics = {m_rawFont.ascent() * m_scale, m_rawFont.descent() * m_scale,
                     m_rawFont.leading() * m_scale};
    return;
  }
  const auto pixels = [&](int offset) {
    return qFromBigEndian<qint16>(lineTable.constData() + offset) / unitsPerEm * m_style.size;
  };
  m_fontMetrics = {pixels(4), -pixels(6), pixels(8)};
}

QString TextLines::missingCharacters() const {
  const auto leavesNoTrace = [](char32_t c) {
    const QChar::Category category = QChar::category(c);
    return QChar::isSpace(c) || category == QChar::Other_Control ||
           category == QChar::Other_Format || category == QChar::Other_Surrogate;
  };
  QSet<char32_t> seen;
  for (const char32_t c : m_text.toUcs4()) {
    if (c <= 0x7F || leavesNoTrace(c) || seen.contains(c)) continue;
    seen.insert(c);
    if (FontCatalog::shared().covers({}, c)) continue;
    return QStringLiteral("no installed font has the character “%1” (U+%2)")
        .arg(QString::fromUcs4(&c, 1),
             QString::number(c, 16).toUpper().rightJustified(4, QLatin1Char('0')));
  }
  return {};
}

}  // namespace runtime
