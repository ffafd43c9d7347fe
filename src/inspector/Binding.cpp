#include "inspector/Binding.h"

#include "model/QuartzComponent.h"

namespace inspector {

using model::Attribute;
using model::AttributeValue;
using model::QuartzComponent;

namespace {

/// As attributes of any type take it; fonts only fit their own.
QVariant variantOf(const AttributeValue& value) {
  if (value.isEmpty()) return {};
  if (const auto* text = value.as<QString>()) return *text;
  if (const auto* color = value.as<foundation::Color>()) return color->toQColor();
  if (const auto* image = value.as<QImage>()) return *image;
  return value.toNumber();
}

void setValue(Attribute& attribute, Attribute& first, const AttributeValue& value) {
  if (attribute.type() == first.type()) {
    attribute.setCurrentValue(value);
    return;
  }
  if (value.as<model::FontValue>() || value.as<std::shared_ptr<const model::RichFontValue>>())
    return;
  if (const auto converted = attribute.valueFromVariant(variantOf(value)))
    attribute.setCurrentValue(*converted);
}

}  // namespace

AttributeValue Binding::value() const {
  return count > 0 ? get(0) : AttributeValue();
}

bool Binding::isMixed() const {
  if (count < 2) return false;
  const AttributeValue first = get(0);
  for (qsizetype i = 1; i < count; ++i)
    if (!(get(i) == first)) return true;
  return false;
}

void Binding::setAll(const AttributeValue& value) const {
  for (qsizetype i = 0; i < count; ++i) set(i, value);
}

Binding Binding::toAttributes(const QList<Attribute*>& attributes, const QString& stepName) {
  return {stepName, attributes.size(),
          [attributes](qsizetype i) { return attributes[i]->currentValue(); },
          [attributes](qsizetype i, const AttributeValue& value) {
            setValue(*attributes[i], *attributes[0], value);
          }};
}

Binding Binding::toNumbers(const QList<QuartzComponent*>& components, const QString& key,
                           const QString& stepName) {
  return {stepName, components.size(),
          [components, key](qsizetype i) {
            const QVariant value = components[i]->valueForKey(key);
            if (value.metaType() == QMetaType::fromType<AttributeValue>())
              return AttributeValue(value.value<AttributeValue>().toNumber());
            return AttributeValue(value.toDouble());
          },
          [components, key](qsizetype i, const AttributeValue& value) {
            components[i]->setValueForKey(value.toNumber(), key);
          }};
}

}  // namespace inspector
