#include "model/AttributeFactory.h"

#include "model/RichFontValue.h"
#include "runtime/CompositionRenderer.h"
#include "runtime/text/FontResolver.h"

namespace model {

std::unique_ptr<Attribute> AttributeFactory::attributeForInput(const QString& key) {
  const auto info = m_renderer.inputAttributes(key);
  if (!info) return nullptr;
  auto attribute = std::make_unique<Attribute>(*info, initialValue(key));
  if (attribute->position() == AttributeLabel::noPosition) attribute->setPosition(m_nextPosition++);
  if (key.startsWith(QLatin1String("CI"))) attribute->setPermissionToChange(true);
  return attribute;
}

AttributeValue AttributeFactory::rendererValue(const QString& key) const {
  return AttributeValue::fromRuntime(m_renderer.valueForInputKey(key));
}

AttributeValue AttributeFactory::initialValue(const QString& key) const {
  const AttributeValue value =
      m_inputValues.contains(key) ? m_inputValues.value(key) : rendererValue(key);
  if (key.contains(QLatin1String("Rich_Font_Name")))
    return std::make_shared<const RichFontValue>(key, m_renderer);
  if (!key.contains(QLatin1String("Font_Name"))) return value;
  const QString sizeKey =
      QString(key).replace(QLatin1String("Font_Name"), QLatin1String("Font_Size"));
  FontValue font{value.toString(), roundedTimepoint(rendererValue(sizeKey).toNumber())};
  if (!runtime::FontResolver::contains(font.name)) {
    const QString substitute = runtime::FontResolver::defaultFamily();
    m_warnings.append(QStringLiteral("Could not find font \"%1\", substituted with font \"%2\".")
                          .arg(font.name, substitute));
    font.name = substitute;
  }
  return font;
}

}  // namespace model
