#include "model/TextAttributes.h"

#include <array>
#include <utility>

namespace model {

using foundation::Color;
using Format = QTextCharFormat;

namespace {

constexpr qint64 lineMask = 0xFF;
constexpr qint64 patternMask = 0xF00;
constexpr qint64 singleLine = 1;

constexpr std::array<std::pair<qint64, Format::UnderlineStyle>, 5> patterns{
    {{0x000, Format::SingleUnderline},
     {0x100, Format::DotLine},
     {0x200, Format::DashUnderline},
     {0x300, Format::DashDotLine},
     {0x400, Format::DashDotDotLine}}};

Format::UnderlineStyle underlineOf(qint64 style) {
  if ((style & lineMask) == 0) return Format::NoUnderline;
  for (const auto& [pattern, underline] : patterns)
    if (pattern == (style & patternMask)) return underline;
  return Format::SingleUnderline;
}

/// Wavy lines have no style of their own and become plain ones.
qint64 styleOf(Format::UnderlineStyle underline) {
  if (underline == Format::NoUnderline) return 0;
  for (const auto& [pattern, style] : patterns)
    if (style == underline) return singleLine | pattern;
  return singleLine;
}

}  // namespace

QTextCharFormat TextAttributes::charFormat() const {
  QTextCharFormat format;
  if (foreground) format.setForeground(foreground->toQColor());
  if (underline) {
    format.setUnderlineStyle(underlineOf(underline->style));
    if (underline->color) format.setUnderlineColor(underline->color->toQColor());
  }
  if (strikethrough) format.setFontStrikeOut((strikethrough->style & lineMask) != 0);
  return format;
}

TextAttributes TextAttributes::fromCharFormat(const QTextCharFormat& format) {
  TextAttributes attributes;
  if (format.hasProperty(QTextFormat::ForegroundBrush))
    attributes.foreground = Color::fromQColor(format.foreground().color());
  if (format.hasProperty(QTextFormat::TextUnderlineStyle)) {
    attributes.underline = Line{styleOf(format.underlineStyle()), {}};
    if (const QColor color = format.underlineColor(); color.isValid())
      attributes.underline->color = Color::fromQColor(color);
  }
  if (format.hasProperty(QTextFormat::FontStrikeOut))
    attributes.strikethrough = Line{format.fontStrikeOut() ? singleLine : 0, {}};
  return attributes;
}

}  // namespace model
