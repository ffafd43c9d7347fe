#include "widgets/TYGlyph.h"

#include <QHash>
#include <QPainter>
#include <cmath>

#include "widgets/GlyphTable.h"
#include "widgets/OutlineParser.h"

namespace widgets {

class GlyphRegistry {
 public:
  static const GlyphRegistry& shared() {
    static const GlyphRegistry registry;
    return registry;
  }
  [[nodiscard]] const QHash<QString, TYGlyph>& glyphs() const { return m_glyphs; }

 private:
  GlyphRegistry() {
    for (const GlyphSource& source : glyphSources())
      m_glyphs.insert(QString::fromLatin1(source.name), glyph(QString::fromLatin1(source.parts)));
    for (const GlyphMirror& mirror : mirroredGlyphs())
      m_glyphs.insert(QString::fromLatin1(mirror.name),
                      mirrored(m_glyphs.value(QString::fromLatin1(mirror.original))));
  }

  static TYGlyph::Ink ink(QChar letter) {
    switch (letter.toLatin1()) {
      case 'f':
        return TYGlyph::Ink::Fill;
      case 'h':
        return TYGlyph::Ink::HalfFill;
      case 'o':
        return TYGlyph::Ink::FillWithGap;
      case 'g':
        return TYGlyph::Ink::Cleared;
      case 'k':
        return TYGlyph::Ink::ClearedStroke;
      default:
        return TYGlyph::Ink::Stroke;
    }
  }

  static TYGlyph glyph(const QString& text) {
    TYGlyph made;
    for (const QStringView part : QStringView(text).split(QLatin1Char('|'))) {
      const auto path = parseOutline(part.sliced(2));
      Q_ASSERT_X(path, "GlyphRegistry", qPrintable(text));
      if (path) made.m_parts.push_back({ink(part.at(0)), *path});
    }
    return made;
  }

  static TYGlyph mirrored(TYGlyph glyph) {
    const QTransform diagonal(0, 1, 1, 0, 0, 0);
    for (TYGlyph::Part& part : glyph.m_parts) part.path = diagonal.map(part.path);
    return glyph;
  }

  QHash<QString, TYGlyph> m_glyphs;
};

namespace {

// One unit at small sizes, three quarters at 48 and above, so that large glyphs stay light.
double strokeUnits(double side) {
  return side <= 24 ? 1.0 : std::max(0.75, 1.0 - (side - 24) / 96);
}

QPen strokePen(const QColor& colour, double width) {
  return {colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

}  // namespace

const TYGlyph* TYGlyph::named(const QString& name) {
  const QHash<QString, TYGlyph>& glyphs = GlyphRegistry::shared().glyphs();
  const QLatin1String toolbar("Toolbar");
  auto found = glyphs.find(name.startsWith(toolbar) ? name.mid(toolbar.size()) : name);
  return found == glyphs.end() ? nullptr : &*found;
}

QStringList TYGlyph::names() {
  QStringList names = GlyphRegistry::shared().glyphs().keys();
  names.sort();
  return names;
}

QStringList TYGlyph::registeredNames() {
  QStringList names;
  for (const char* action : {"Align", "Distribute"})
    for (const char* edge : {"Left", "HCenter", "Right", "Top", "VCenter", "Bottom"})
      names.append(QStringLiteral("Toolbar%1%2").arg(QLatin1String(action), QLatin1String(edge)));
  for (const char* control :
       {"ZoomIn", "ZoomOut", "Start", "FrameBack", "Play", "Stop", "FrameForwards", "End"})
    names.append(QStringLiteral("Timeline%1").arg(QLatin1String(control)));
  return names;
}

bool TYGlyph::clearsGround() const {
  return std::any_of(m_parts.begin(), m_parts.end(), [](const Part& part) {
    return part.ink == Ink::FillWithGap || part.ink == Ink::Cleared ||
           part.ink == Ink::ClearedStroke;
  });
}

void TYGlyph::paint(QPainter& painter, const QRectF& box, const QColor& colour,
                    double stroke) const {
  const double side = std::min(box.width(), box.height());
  if (side <= 0) return;
  const QTransform device = painter.deviceTransform();
  const double scale = device.type() <= QTransform::TxScale ? device.m11() : 1;
  QPointF origin = device.map(box.center() - QPointF(side / 2, side / 2));
  if (device.type() <= QTransform::TxScale)
    origin = {std::round(origin.x()), std::round(origin.y())};
  origin = device.inverted().map(origin);

  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(origin);
  if (!clearsGround()) {
    paintParts(painter, side, colour, stroke);
  } else {
    // Clearing needs a layer of its own, or it would eat what is below the glyph.
    const int pixels = std::max(1, qCeil(side * scale));
    QImage layer(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    layer.fill(Qt::transparent);
    QPainter layerPainter(&layer);
    layerPainter.setRenderHint(QPainter::Antialiasing);
    layerPainter.scale(scale, scale);
    paintParts(layerPainter, side, colour, stroke);
    layerPainter.end();
    painter.drawImage(QRectF(0, 0, pixels / scale, pixels / scale), layer);
  }
  painter.restore();
}

void TYGlyph::paint(QPainter& painter, const QString& name, const QRectF& box, const QColor& colour,
                    double stroke) {
  const TYGlyph* glyph = named(name);
  Q_ASSERT_X(glyph, "TYGlyph::paint", qPrintable(name));
  if (glyph) glyph->paint(painter, box, colour, stroke);
}

void TYGlyph::paintParts(QPainter& painter, double side, const QColor& colour,
                         double stroke) const {
  const double width = stroke > 0 ? stroke : strokeUnits(side);
  painter.setClipRect(QRectF(0, 0, side, side));
  painter.scale(side / 16, side / 16);
  const auto clear = [&painter](const auto& draw) {
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    draw();
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  };
  for (const Part& part : m_parts) {
    switch (part.ink) {
      case Ink::Stroke:
        painter.strokePath(part.path, strokePen(colour, width));
        break;
      case Ink::Fill:
        painter.fillPath(part.path, colour);
        break;
      case Ink::HalfFill: {
        QColor half = colour;
        half.setAlphaF(float(0.45 * colour.alphaF()));
        painter.fillPath(part.path, half);
        break;
      }
      case Ink::FillWithGap:
        clear([&] { painter.strokePath(part.path, strokePen(Qt::black, 1)); });
        painter.fillPath(part.path, colour);
        break;
      case Ink::Cleared:
        clear([&] { painter.fillPath(part.path, Qt::black); });
        painter.strokePath(part.path, strokePen(colour, width));
        break;
      case Ink::ClearedStroke:
        clear([&] { painter.strokePath(part.path, strokePen(Qt::black, width)); });
        break;
    }
  }
}

}  // namespace widgets
