#pragma once

#include <QColor>
#include <QLatin1String>
#include <QList>
#include <optional>

namespace foundation::detail {

/// The colours of a document by number, read word by word. Opacity is in a second table that some
/// writers add beside the first, with its entries in the same order.
class RtfColorTable {
 public:
  void applyWord(QLatin1String word, std::optional<int> parameter);
  void applyExpandedWord(QLatin1String word, std::optional<int> parameter);
  void endColor();          ///< a semicolon in the table
  void endExpandedColor();  ///< a semicolon in the second table

  /// Invalid for the automatic colour and for numbers that the table does not have.
  [[nodiscard]] QColor color(int number) const;

  /// The full value of a component in the second table.
  static constexpr int expandedFull = 100'000;

 private:
  static constexpr qsizetype maximumColors = 100'000;

  QList<QColor> m_colors;
  QList<int> m_alphas;
  QColor m_current;
  int m_expandedComponents = 0;  ///< how many of the entry have been read
  int m_colorComponents = 0;     ///< how many come before the opacity
  int m_alpha = 255;
};

}  // namespace foundation::detail
