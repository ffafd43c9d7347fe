#include "foundation/rtf/detail/RtfColorTable.h"

namespace foundation::detail {

void RtfColorTable::applyWord(QLatin1String word, std::optional<int> parameter) {
  const int value = qBound(0, parameter.value_or(0), 255);
  const bool isRed = word == QLatin1String("red");
  const bool isGreen = word == QLatin1String("green");
  const bool isBlue = word == QLatin1String("blue");
  if (!isRed && !isGreen && !isBlue) return;
  if (!m_current.isValid()) m_current = Qt::black;
  if (isRed) m_current.setRed(value);
  if (isGreen) m_current.setGreen(value);
  if (isBlue) m_current.setBlue(value);
}

void RtfColorTable::applyExpandedWord(QLatin1String word, std::optional<int> parameter) {
  if (word == QLatin1String("c")) {
    const int value = qBound(0, parameter.value_or(0), expandedFull);
    if (m_expandedComponents++ == m_colorComponents) m_alpha = qRound(value * 255.0 / expandedFull);
  } else if (word.startsWith(QLatin1String("cs"))) {  // the colour space
    m_expandedComponents = 0;
    m_colorComponents = 3;
    if (word.endsWith(QLatin1String("gray"))) m_colorComponents = 1;
    if (word.endsWith(QLatin1String("cmyk"))) m_colorComponents = 4;
  }
}

void RtfColorTable::endColor() {
  if (m_colors.size() < maximumColors) m_colors.append(m_current);
  m_current = QColor();
}

void RtfColorTable::endExpandedColor() {
  if (m_alphas.size() < maximumColors) m_alphas.append(m_alpha);
  m_alpha = 255;
  m_expandedComponents = 0;
  m_colorComponents = 3;
}

QColor RtfColorTable::color(int number) const {
  QColor color = m_colors.value(number);
  if (color.isValid()) color.setAlpha(m_alphas.value(number, 255));
  return color;
}

}  // namespace foundation::detail
