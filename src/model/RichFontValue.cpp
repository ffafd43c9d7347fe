#include "model/RichFontValue.h"

#include "runtime/CompositionRenderer.h"

namespace model {

namespace {
const QString nameSuffix = QStringLiteral("Rich_Font_Name");
const QString sizeSuffix = QStringLiteral("Rich_Font_Size");
const QString colorSuffix = QStringLiteral("Rich_Font_Color");
const QString placeholder = QStringLiteral("%@");
}  // namespace

const QStringList& RichFontValue::suffixes() {
  static const QStringList list{nameSuffix,
                                sizeSuffix,
                                colorSuffix,
                                QStringLiteral("Rich_Font_Use_Shadow"),
                                QStringLiteral("Rich_Font_Shadow_Blur_Radius"),
                                QStringLiteral("Rich_Font_Shadow_Offset_X"),
                                QStringLiteral("Rich_Font_Shadow_Offset_Y"),
                                QStringLiteral("Rich_Font_Underline_Style"),
                                QStringLiteral("Rich_Font_Underline_Color"),
                                QStringLiteral("Rich_Font_Strikethrough_Style"),
                                QStringLiteral("Rich_Font_Strikethrough_Color")};
  return list;
}

RichFontValue::RichFontValue(const QString& inputKey, const runtime::CompositionRenderer& renderer)
    : m_keyPattern(QString(inputKey).replace(nameSuffix, placeholder)) {
  const QStringList published = renderer.inputKeys();
  for (const QString& suffix : suffixes()) {
    const QString key = inputKeyForSuffix(suffix);
    if (published.contains(key))
      m_attributes.insert(key, AttributeValue::fromRuntime(renderer.valueForInputKey(key)));
  }
}

QString RichFontValue::inputKeyForSuffix(const QString& suffix) const {
  return QString(m_keyPattern).replace(placeholder, suffix);
}

AttributeValue RichFontValue::valueForInputKey(const QString& suffix) const {
  return m_attributes.value(inputKeyForSuffix(suffix));
}

FontValue RichFontValue::font() const {
  const double size = valueForInputKey(sizeSuffix).toNumber();
  return {valueForInputKey(nameSuffix).toString(), static_cast<double>(static_cast<float>(size))};
}

void RichFontValue::setFont(const FontValue& font) {
  m_attributes.insert(inputKeyForSuffix(nameSuffix), font.name);
  m_attributes.insert(inputKeyForSuffix(sizeSuffix), font.size);
}

AttributeValue RichFontValue::color() const {
  return valueForInputKey(colorSuffix);
}

void RichFontValue::setColor(const foundation::Color& color) {
  m_attributes.insert(inputKeyForSuffix(colorSuffix), color);
}

void RichFontValue::setValueForFullKey(const AttributeValue& value, const QString& inputKey) {
  m_attributes.insert(inputKey, value);
}

foundation::PropertyDictionary RichFontValue::quartzValues() const {
  foundation::PropertyDictionary values;
  for (auto it = m_attributes.cbegin(); it != m_attributes.cend(); ++it)
    if (foundation::PropertyValue value = it.value().quartzValue(); !value.isNull())
      values.insert(it.key(), std::move(value));
  return values;
}

}  // namespace model
