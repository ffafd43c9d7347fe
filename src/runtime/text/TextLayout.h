#pragma once

#include <QImage>
#include <QPainterPath>
#include <QSize>
#include <QString>
#include <vector>

namespace runtime {

/// In the direction in which the text is read: Normal is left for Latin and right for Arabic,
/// vertically the top.
enum class TextAlignment : quint8 { Normal, Centered, Opposite, Justified };

/// What a text image looks like; lengths in pixels.
struct TextStyle {
  QString fontName;
  double size = 0;     ///< of an em
  double leading = 0;  ///< added to the distance of lines
  double kerning = 0;  ///< added to the advance of every glyph
  double width = 0;    ///< lines wrap here; 0: as wide as the longest line
  double height = 0;   ///< lines that end below are left out; 0: as high as needed
  TextAlignment horizontal = TextAlignment::Centered;
  TextAlignment vertical = TextAlignment::Centered;
  friend bool operator==(const TextStyle&, const TextStyle&) = default;
};

/// A text set in lines, as outlines and pictures that any thread can draw without a font. Pixels,
/// origin at the upper left, y down. Glyph advances are unhinted and in proportion to the size;
/// base lines stand on whole pixels, so that the horizontals of letters are sharp.
struct TextLayout {
  struct Picture {
    QImage image;
    QRectF place;
  };

  QSize size{0, 0};                    ///< of the image; empty when there is nothing to show
  std::vector<QPainterPath> outlines;  ///< to be filled white; glyphs that touch are one
  std::vector<Picture> pictures;       ///< colour glyphs
  int lineCount = 0;                   ///< visible lines
  int glyphCount = 0;                  ///< their glyphs, spaces among them
  QString problem;                     ///< what a person should know; empty when all is well

  /// Sets the text. A text that would need more pixels than the limit has no size, only a problem.
  [[nodiscard]] static TextLayout make(const QString& text, const TextStyle& style,
                                       qint64 pixelLimit);
};

}  // namespace runtime
