#pragma once

#include <QFont>
#include <QRawFont>
#include <QSizeF>
#include <QTextLayout>
#include <memory>
#include <vector>

#include "runtime/text/TextLayout.h"
#include "runtime/text/TextParagraphs.h"

namespace runtime {

/// A text broken into lines. Set at a fixed em and scaled, because the toolkit knows only whole
/// font sizes; so advances are in proportion to the size. Lengths are in pixels, down from the
/// top of the block, unless said otherwise.
class TextLines {
 public:
  struct Line {
    QTextLine line;  ///< in layout units
    double width = 0;
    double baseline = 0;
    bool isRightToLeft = false;
    QList<double> gaps;   ///< justified: where words part, from the left, in layout units
    double gapExtra = 0;  ///< by how much each of them grows, in layout units
  };
  /// Pixels of an em; what is smaller cannot be seen.
  static constexpr double smallestSize = 0.125;

  /// Lines are made until one ends below the limit (pixels). With a given height that one is left
  /// out; otherwise it stays, so that the measure tells that the text is too high.
  TextLines(const QString& text, const TextStyle& style, double lowestBottom);

  [[nodiscard]] const std::vector<Line>& lines() const { return m_lines; }
  [[nodiscard]] QSizeF measured() const { return m_measured; }
  /// Pixels of a layout unit.
  [[nodiscard]] double scale() const { return m_scale; }
  /// Names a character that no installed font has; empty when there is none.
  [[nodiscard]] QString missingCharacters() const;

 private:
  struct LineMetrics {
    double ascent = 0;
    double descent = 0;
    double leading = 0;
  };
  [[nodiscard]] bool addParagraph(const TextParagraph& paragraph);
  void justify(Line& line, const QString& text) const;
  [[nodiscard]] bool addLine(const QTextLine& line, const QString& text, bool rightToLeft);
  [[nodiscard]] QList<QTextLayout::FormatRange> formats(const QString& text,
                                                        const QList<TextSpan>& emoji) const;
  [[nodiscard]] QTextOption option(bool rightToLeft) const;
  [[nodiscard]] LineMetrics metricsOf(const QTextLine& line) const;
  void setSpacing();
  void readFontMetrics();

  QString m_text;
  TextStyle m_style;
  double m_lowestBottom;
  double m_scale;
  QFont m_font;
  QRawFont m_rawFont;
  LineMetrics m_fontMetrics;
  bool m_rightToLeft = false;  ///< of paragraphs that have no direction
  double m_top = 0;            ///< of the next line
  QSizeF m_measured;
  std::vector<std::unique_ptr<QTextLayout>> m_layouts;
  std::vector<Line> m_lines;
};

}  // namespace runtime
