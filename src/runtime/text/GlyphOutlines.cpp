#include "runtime/text/GlyphOutlines.h"

#include <QGlyphRun>
#include <QTransform>
#include <algorithm>
#include <cmath>

namespace runtime {

int GlyphOutlines::add(const TextLines::Line& line, const QPointF& origin, TextLayout& layout) {
  m_lastBox = {};
  const double baseline = line.line.y() + line.line.ascent();
  int count = 0;
  for (const QGlyphRun& run : line.line.glyphRuns()) {
    const QRawFont font = run.rawFont();
    const QList<quint32> glyphs = run.glyphIndexes();
    const QList<QPointF> positions = run.positions();
    count += static_cast<int>(glyphs.size());
    for (qsizetype i = 0; i < glyphs.size(); ++i) {
      QPointF at = positions[i] - QPointF(0, baseline);
      const auto gapsBefore = std::lower_bound(line.gaps.begin(), line.gaps.end(), at.x());
      at.rx() += static_cast<double>(gapsBefore - line.gaps.begin()) * line.gapExtra;
      at = origin + at * m_scale;
      m_hasMissingGlyph |= glyphs[i] == 0;
      if (isColored(font)) {
        layout.pictures.push_back(picture(font, glyphs[i], at));
        continue;
      }
      const QTransform transform(m_scale, 0, 0, m_scale, at.x(), at.y());
      addOutline(transform.map(font.pathForGlyph(glyphs[i])), layout);
    }
  }
  return count;
}

void GlyphOutlines::addOutline(QPainterPath outline, TextLayout& layout) {
  if (outline.isEmpty()) return;
  const QRectF box = outline.controlPointRect();
  if (m_lastBox.intersects(box)) {
    layout.outlines.back().addPath(outline);
    m_lastBox |= box;
    return;
  }
  outline.setFillRule(Qt::WindingFill);  // touching glyphs unite
  layout.outlines.push_back(std::move(outline));
  m_lastBox = box;
}

bool GlyphOutlines::isColored(const QRawFont& font) {
  const auto known = m_colored.constFind(font);
  if (known != m_colored.cend()) return *known;
  const bool colored = !font.fontTable("CBLC").isEmpty() || !font.fontTable("sbix").isEmpty();
  return *m_colored.insert(font, colored);
}

TextLayout::Picture GlyphOutlines::picture(const QRawFont& font, quint32 glyph, const QPointF& at) {
  const QRectF box = font.boundingRect(glyph);
  // On whole pixels, so that small pictures stay sharp.
  const QRectF place(std::round(at.x() + box.x() * m_scale), std::round(at.y() + box.y() * m_scale),
                     std::max(1.0, std::round(box.width() * m_scale)),
                     std::max(1.0, std::round(box.height() * m_scale)));
  QImage& image = m_pictures[{font, glyph}];
  if (image.isNull()) {
    image = font.alphaMapForGlyph(glyph, QRawFont::PixelAntialiasing)
                .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    // Painting reduces by sampling; averaging looks better. Enlarging is left to painting.
    if (m_scale < 1 && !image.isNull())
      image = image.scaled(place.size().toSize(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  }
  return {image, place};
}

}  // namespace runtime
