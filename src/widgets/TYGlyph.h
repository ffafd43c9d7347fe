#pragma once

#include <QColor>
#include <QPainterPath>
#include <QRectF>
#include <QStringList>
#include <vector>

class QPainter;

namespace widgets {

/// A drawing of the interface: paths on a grid of 16 units, in one colour. Where solid parts lie
/// over outlines the gap between them is really empty, so a glyph stands on any ground.
class TYGlyph {
 public:
  enum class Ink { Stroke, Fill, HalfFill, FillWithGap, Cleared, ClearedStroke };
  struct Part {
    Ink ink;
    QPainterPath path;
  };

  /// The glyph of that name, e.g. "TimelinePlay"; align and distribute glyphs also answer to their
  /// toolbar names ("ToolbarAlignLeft"). Null when there is none.
  [[nodiscard]] static const TYGlyph* named(const QString& name);
  [[nodiscard]] static QStringList names();
  /// The twenty images that the editor registers by name at its start.
  [[nodiscard]] static QStringList registeredNames();

  [[nodiscard]] const std::vector<Part>& parts() const { return m_parts; }
  /// Fills the box (logical units of the painter) as far as it is square, centred, snapped to
  /// device pixels. The stroke is in units of the grid; 0 chooses by the size.
  void paint(QPainter& painter, const QRectF& box, const QColor& colour, double stroke = 0) const;
  /// The same for a glyph that is known to exist.
  static void paint(QPainter& painter, const QString& name, const QRectF& box, const QColor& colour,
                    double stroke = 0);

 private:
  friend class GlyphRegistry;
  void paintParts(QPainter& painter, double side, const QColor& colour, double stroke) const;
  [[nodiscard]] bool clearsGround() const;

  std::vector<Part> m_parts;
};

}  // namespace widgets
