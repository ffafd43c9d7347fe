#pragma once

#include <QFont>
#include <QString>

namespace runtime {

/// What a font name of a file stands for on this machine.
struct FontMatch {
  QString family;
  QString style;  ///< empty: chosen by weight and slant
  int weight = 400;
  int stretch = 100;
  bool italic = false;
  /// The font is not here and another stands in. Not set for the names that the old platform
  /// wrote by default: those always become Inter and nobody needs to hear of it.
  bool isStandIn = false;
};

/// Finds fonts by the names that files hold, the same way on every machine: a font that is not
/// installed becomes Inter in the weight and slant that the name hints at, and glyphs that a font
/// lacks come from Inter, the Noto Sans families and Noto Color Emoji, in this order. Thread-safe.
class FontResolver {
 public:
  /// By PostScript name ("Inter-SemiBold"), full name, family and style, or family.
  [[nodiscard]] static FontMatch resolve(const QString& name);
  /// The name by which files hold a font that was chosen here: family and style.
  [[nodiscard]] static QString nameOf(const QFont& font);
  /// False when a stand-in that a person should hear of would be drawn.
  [[nodiscard]] static bool contains(const QString& name);

  /// The font with fallbacks for the commonest scripts. The size is in pixels of an em.
  [[nodiscard]] static QFont font(const QString& name, int pixelSize);
  /// The font with fallbacks for just what the text needs; unhinted, for layout at any scale.
  [[nodiscard]] static QFont fontForText(const QString& name, int pixelSize, const QString& text);
  /// The same font with another family before its own, in the nearest weight.
  [[nodiscard]] static QFont withFamilyFirst(const QFont& font, const QString& family);

  [[nodiscard]] static QString defaultFamily() { return QStringLiteral("Inter"); }
};

}  // namespace runtime
