#include "model/RichFontValue.h"

#include "runtime/CompositionRenderer.h"

namespace model {

namespace {
const QString nameSuffix = QStringLiteral("Rich_Font_Name");
const QString sizeSuffix = QStringLiteral("Rich_Font_Size");
const QString colorSuffix = QStringLiteral("Rich_Font_Color");
const QString useShadowSuffix = QStringLiteral("Rich_Font_Use_Shadow");
const QString shadowBlurSuffix = QStringLiteral("Rich_Font_Shadow_Blur_Radius");
const QString shadowXSuffix = QStringLiteral("Rich_Font_Shadow_Offset_X");
const QString shadowYSuffix = QStringLiteral("Rich_Font_Shadow_Offset_Y");
const QString underlineStyleSuffix = QStringLiteral("Rich_Font_Underline_Style");
const QString underlineColorSuffix = QStringLiteral("Rich_Font_Underline_Color");
const QString strikeStyleSuffix = QStringLiteral("Rich_Font_Strikethrough_Style");
const QString strikeColorSuffix = QStringLiteral("Rich_Font_Strikethrough_Color");
const QString placeholder = QStringLiteral("%@");

const QString archiveClass = QStringLiteral("RichFontValue");
const QString attributesField = QStringLiteral("attributes");
const QString keyPatternField = QStringLiteral("keyPattern");

/// Cuts the fraction; 0 for what is no number or beyond all styles and flags.
qint64 integerOf(const AttributeValue& value) {
  const double number = value.toNumber();
  return qAbs(number) < 1e9 ? static_cast<qint64>(number) : 0;
}

/// The values of the inputs are single-precision numbers.
AttributeValue floatValue(double number) {
  return static_cast<double>(static_cast<float>(number));
}

foundation::ArchiveValue archived(const AttributeValue& value) {
  if (const auto* flag = value.as<bool>()) return *flag;
  if (const auto* index = value.as<qint64>()) return *index;
  if (const auto* number = value.as<double>()) return *number;
  if (const auto* text = value.as<QString>()) return *text;
  if (const auto* color = value.as<foundation::Color>()) return *color;
  return {};
}

AttributeValue unarchived(const foundation::ArchiveValue& value) {
  if (const auto* flag = value.as<bool>()) return *flag;
  if (const auto* index = value.as<qint64>()) return *index;
  if (const auto* number = value.as<double>()) return *number;
  if (const auto* text = value.as<QString>()) return *text;
  if (const auto* color = value.as<foundation::Color>()) return *color;
  return {};
}
}  // namespace

const QStringList& RichFontValue::suffixes() {
  static const QStringList list{nameSuffix,        sizeSuffix,           colorSuffix,
                                useShadowSuffix,   shadowBlurSuffix,     shadowXSuffix,
                                shadowYSuffix,     underlineStyleSuffix, underlineColorSuffix,
                                strikeStyleSuffix, strikeColorSuffix};
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
  insert(nameSuffix, font.name);
  insert(sizeSuffix, font.size);
}

AttributeValue RichFontValue::color() const {
  return valueForInputKey(colorSuffix);
}

void RichFontValue::setColor(const foundation::Color& color) {
  insert(colorSuffix, color);
}

void RichFontValue::insert(const QString& suffix, const AttributeValue& value) {
  m_attributes.insert(inputKeyForSuffix(suffix), value);
}

float RichFontValue::floatForSuffix(const QString& suffix) const {
  return static_cast<float>(valueForInputKey(suffix).toNumber());
}

std::optional<foundation::Color> RichFontValue::colorForSuffix(const QString& suffix) const {
  const AttributeValue value = valueForInputKey(suffix);
  const auto* color = value.as<foundation::Color>();
  return color ? std::optional(*color) : std::nullopt;
}

std::optional<TextAttributes::Line> RichFontValue::lineForSuffixes(const QString& style,
                                                                   const QString& color) const {
  const AttributeValue value = valueForInputKey(style);
  if (value.isEmpty()) return std::nullopt;
  return TextAttributes::Line{integerOf(value), colorForSuffix(color)};
}

TextAttributes RichFontValue::textAttributes() const {
  TextAttributes attributes;
  attributes.foreground = colorForSuffix(colorSuffix);
  if (integerOf(valueForInputKey(useShadowSuffix)) == 1)
    attributes.shadow =
        TextAttributes::Shadow{{floatForSuffix(shadowXSuffix), floatForSuffix(shadowYSuffix)},
                               floatForSuffix(shadowBlurSuffix)};
  attributes.underline = lineForSuffixes(underlineStyleSuffix, underlineColorSuffix);
  attributes.strikethrough = lineForSuffixes(strikeStyleSuffix, strikeColorSuffix);
  return attributes;
}

void RichFontValue::setTextAttributes(const TextAttributes& attributes) {
  if (attributes.foreground) setColor(*attributes.foreground);
  insert(useShadowSuffix, attributes.shadow ? 1.0 : 0.0);
  if (const auto& shadow = attributes.shadow) {
    insert(shadowBlurSuffix, floatValue(shadow->blurRadius));
    insert(shadowXSuffix, floatValue(shadow->offset.width()));
    insert(shadowYSuffix, floatValue(shadow->offset.height()));
  }
  setLine(attributes.underline, underlineStyleSuffix, underlineColorSuffix);
  setLine(attributes.strikethrough, strikeStyleSuffix, strikeColorSuffix);
}

void RichFontValue::setLine(const std::optional<TextAttributes::Line>& line,
                            const QString& styleSuffix, const QString& colorSuffix) {
  insert(styleSuffix, line ? line->style : qint64(0));
  if (line && line->color) insert(colorSuffix, *line->color);
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

foundation::ArchiveValue RichFontValue::archiveValue() const {
  foundation::ArchiveDictionary attributes;
  for (auto it = m_attributes.cbegin(); it != m_attributes.cend(); ++it)
    if (foundation::ArchiveValue value = archived(it.value()); !value.isNil())
      attributes.insert(it.key(), value);
  return foundation::ArchiveObject{
      archiveClass, {{attributesField, attributes}, {keyPatternField, m_keyPattern}}};
}

foundation::Result<RichFontValue> RichFontValue::fromArchiveValue(
    const foundation::ArchiveValue& value) {
  const auto* object = value.as<foundation::ArchiveObject>();
  if (!object || object->className != archiveClass)
    return foundation::failure(QStringLiteral("The archived object is no rich font"), {},
                               object ? object->className : QString());
  const auto* pattern = object->fields.value(keyPatternField).as<QString>();
  const auto* entries = object->fields.value(attributesField).as<foundation::ArchiveDictionary>();
  if (!pattern || !entries)
    return foundation::failure(QStringLiteral("The archived rich font is incomplete"), {},
                               pattern ? attributesField : keyPatternField);
  QMap<QString, AttributeValue> attributes;
  for (const auto& [key, entry] : entries->entries())
    if (AttributeValue attribute = unarchived(entry); !attribute.isEmpty())
      attributes.insert(key, attribute);
  return RichFontValue(*pattern, std::move(attributes));
}

}  // namespace model
