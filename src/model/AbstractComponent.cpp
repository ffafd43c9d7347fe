#include "model/AbstractComponent.h"

#include <QFile>
#include <QFileInfo>

#include "foundation/PropertyList.h"
#include "model/RichFontValue.h"
#include "runtime/CompositionRenderer.h"
#include "runtime/text/FontResolver.h"

namespace model {

using foundation::Result;

AbstractComponent::AbstractComponent() = default;
AbstractComponent::~AbstractComponent() = default;

void AbstractComponent::setDuration(double duration) {
  if (duration >= 0) m_endTime = m_startTime + duration;
}

double AbstractComponent::validatedEndTime(double proposed) const {
  return proposed < m_startTime ? roundedTimepoint(m_startTime) : proposed;
}

double AbstractComponent::validatedStartTime(double proposed) const {
  return proposed > m_endTime ? roundedTimepoint(m_endTime) : proposed;
}

bool AbstractComponent::visible() const {
  return renderTimepoint() >= m_startTime && renderTimepoint() <= m_endTime;
}

Attribute* AbstractComponent::attributeForKey(const QString& key) const {
  for (const auto& attribute : m_attributes)
    if (attribute->key() == key) return attribute.get();
  return nullptr;
}

QList<Attribute*> AbstractComponent::attributesSortedByTitle() const {
  QList<Attribute*> sorted;
  for (const auto& attribute : m_attributes) sorted.append(attribute.get());
  std::stable_sort(sorted.begin(), sorted.end(), [](const Attribute* a, const Attribute* b) {
    return a->title().compare(b->title()) < 0;
  });
  return sorted;
}

int AbstractComponent::animateable() const {
  const auto count = std::count_if(m_attributes.begin(), m_attributes.end(),
                                   [](const auto& attribute) { return attribute->animateable(); });
  if (count == 0) return 0;
  return count == static_cast<std::ptrdiff_t>(m_attributes.size()) ? 1 : -1;
}

void AbstractComponent::setAnimateable(int animateable) {
  for (const auto& attribute : m_attributes) attribute->setAnimateable(animateable == 1);
}

void AbstractComponent::setAttributeValuesOnQuartzComposition() {
  if (!m_renderer) return;
  for (const auto& attribute : m_attributes) attribute->setValueOnRenderer(*m_renderer);
}

Attribute* AbstractComponent::addAttribute(std::unique_ptr<Attribute> attribute) {
  m_attributes.push_back(std::move(attribute));
  return m_attributes.back().get();
}

Result<void> AbstractComponent::initializeQuartzComposition() {
  if (m_quartzCompositionData.isEmpty()) {
    QFile file(m_compositionFilename);
    if (!file.open(QIODevice::ReadOnly))
      return foundation::failure(file.errorString(), m_compositionFilename);
    m_quartzCompositionData = file.readAll();
  }
  auto renderer =
      runtime::CompositionRenderer::fromData(m_quartzCompositionData, m_compositionFilename);
  if (!renderer) return tl::unexpected(renderer.error());
  m_renderer = std::move(*renderer);
  return {};
}

Result<void> AbstractComponent::initializeWithFile(const QString& path,
                                                   const InputValues& inputValues,
                                                   QStringList& warnings) {
  m_compositionFilename = path;
  if (auto loaded = initializeQuartzComposition(); !loaded) return loaded;
  const auto tree = foundation::PropertyList::fromData(m_quartzCompositionData, path);
  m_title = tree ? tree->dictionary().value(u"name").toString() : QString();
  if (m_title.isEmpty()) m_title = QFileInfo(path).completeBaseName();

  quint64 position = 0;
  for (const QString& key : m_renderer->inputKeys()) {
    if (!shallCreateAttributeForKey(key)) continue;
    const auto info = m_renderer->inputAttributes(key);
    if (!info) continue;
    Attribute* attribute = addAttribute(
        std::make_unique<Attribute>(this, *info, initialValue(key, inputValues, warnings)));
    if (attribute->position() == AttributeLabel::noPosition) attribute->setPosition(position++);
    if (key.startsWith(QLatin1String("CI"))) attribute->setPermissionToChange(true);
  }
  setAttributeValuesOnQuartzComposition();
  return {};
}

AttributeValue AbstractComponent::initialValue(const QString& key, const InputValues& inputValues,
                                               QStringList& warnings) const {
  const auto rendererValue = [&](const QString& inputKey) {
    return AttributeValue::fromRuntime(m_renderer->valueForInputKey(inputKey));
  };
  const AttributeValue value =
      inputValues.contains(key) ? inputValues.value(key) : rendererValue(key);
  if (key.contains(QLatin1String("Rich_Font_Name")))
    return std::make_shared<const RichFontValue>(key, *m_renderer);
  if (!key.contains(QLatin1String("Font_Name"))) return value;
  const QString sizeKey =
      QString(key).replace(QLatin1String("Font_Name"), QLatin1String("Font_Size"));
  FontValue font{value.toString(), roundedTimepoint(rendererValue(sizeKey).toNumber())};
  if (!runtime::FontResolver::contains(font.name)) {
    const QString substitute = runtime::FontResolver::defaultFamily();
    warnings.append(QStringLiteral("Could not find font \"%1\", substituted with font \"%2\".")
                        .arg(font.name, substitute));
    font.name = substitute;
  }
  return font;
}

}  // namespace model
