#pragma once

#include <QHash>
#include <QRawFont>

#include "runtime/text/TextLines.h"

namespace runtime {

/// Turns laid-out glyphs into outlines and, for colour fonts, pictures.
class GlyphOutlines {
 public:
  /// The scale is pixels of a layout unit.
  explicit GlyphOutlines(double scale) : m_scale(scale) {}

  /// Adds the glyphs of a line whose base line starts at the origin (pixels, y down); returns how
  /// many there were.
  int add(const TextLines::Line& line, const QPointF& origin, TextLayout& layout);
  /// A glyph that stands for "none" was among them.
  [[nodiscard]] bool hasMissingGlyph() const { return m_hasMissingGlyph; }

 private:
  [[nodiscard]] bool isColored(const QRawFont& font);
  [[nodiscard]] TextLayout::Picture picture(const QRawFont& font, quint32 glyph, const QPointF& at);

  /// Glyphs are filled one by one, which is four times as fast as a line at once; those that touch,
  /// as letters of joined scripts do, are filled as one so that no seam shows.
  void addOutline(QPainterPath outline, TextLayout& layout);

  double m_scale;
  QRectF m_lastBox;  ///< of the last outline in this line
  bool m_hasMissingGlyph = false;
  QHash<QRawFont, bool> m_colored;
  QHash<std::pair<QRawFont, quint32>, QImage> m_pictures;
};

}  // namespace runtime
