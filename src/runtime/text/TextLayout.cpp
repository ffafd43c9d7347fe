#include "runtime/text/TextLayout.h"

#include <algorithm>
#include <cmath>

#include "runtime/text/GlyphOutlines.h"
#include "runtime/text/TextLines.h"

namespace runtime {

namespace {

/// More is never seen: a full picture of 6-pixel type holds 90,000 characters.
constexpr qsizetype characterLimit = 100'000;
constexpr int sideLimit = 32'767;  // of a raster image
/// So much may the last line stick out below a given height: whole pixels are shown anyway.
constexpr double heightTolerance = 0.5;

QSize wholePixels(const QSizeF& measured, const TextStyle& style) {
  const auto side = [](double given, double needed) {
    // A hair of arithmetic noise must not add a column.
    const double side = given > 0 ? std::round(given) : std::ceil(needed - 1e-6);
    return static_cast<int>(std::clamp(side, given > 0 ? 1.0 : 0.0, sideLimit + 1.0));
  };
  return {side(style.width, measured.width()), side(style.height, measured.height())};
}

double freeSpaceShare(TextAlignment alignment, bool rightToLeft) {
  switch (alignment) {
    case TextAlignment::Centered:
      return 0.5;
    case TextAlignment::Opposite:
      return rightToLeft ? 0 : 1;
    case TextAlignment::Normal:
    case TextAlignment::Justified:
      break;
  }
  return rightToLeft ? 1 : 0;
}

/// Puts the lines into the image.
void place(TextLayout& layout, const TextLines& lines, const TextStyle& style) {
  const double width = style.width > 0 ? style.width : layout.size.width();
  const double height = style.height > 0 ? style.height : layout.size.height();
  const double top =
      (height - lines.measured().height()) * freeSpaceShare(style.vertical, /*rightToLeft=*/false);
  GlyphOutlines outlines(lines.scale());
  for (const TextLines::Line& line : lines.lines()) {
    const double space = width - line.width;
    const QPointF origin(space * freeSpaceShare(style.horizontal, line.isRightToLeft),
                         std::round(top + line.baseline));
    layout.glyphCount += outlines.add(line, origin, layout);
  }
  layout.lineCount = static_cast<int>(lines.lines().size());
  if (outlines.hasMissingGlyph()) layout.problem = lines.missingCharacters();
}

}  // namespace

TextLayout TextLayout::make(const QString& text, const TextStyle& style, qint64 pixelLimit) {
  TextLayout layout;
  const bool drawable = std::isfinite(style.size) && style.size >= TextLines::smallestSize;
  if (text.isEmpty() || !drawable) return layout;
  const TextLines lines(text.left(characterLimit), style,
                        style.height > 0 ? style.height + heightTolerance : sideLimit + 1.0);
  const QSize size = wholePixels(lines.measured(), style);
  if (size.isEmpty()) return layout;
  if (size.width() > sideLimit || size.height() > sideLimit ||
      qint64{size.width()} * size.height() > pixelLimit) {
    layout.problem = QStringLiteral("a text image of %1 × %2 pixels or more is too large")
                         .arg(size.width())
                         .arg(size.height());
    return layout;
  }
  layout.size = size;
  place(layout, lines, style);
  if (text.size() > characterLimit)
    layout.problem = QStringLiteral("only the first %1 of %2 characters of the text are set")
                         .arg(characterLimit)
                         .arg(text.size());
  return layout;
}

}  // namespace runtime
