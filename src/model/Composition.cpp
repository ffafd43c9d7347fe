#include "model/Composition.h"

#include "foundation/UserDefaults.h"
#include "model/StandardComponents.h"
#include "model/export/PlayoutExport.h"

namespace model {

using foundation::PropertyArray;
using foundation::PropertyDictionary;

Composition::Composition(VideoResolution videoResolution)
    : m_videoResolution(std::move(videoResolution)) {}
Composition::~Composition() = default;

void Composition::setEditorTimepoint(double timepoint) {
  m_editorTimepoint = std::max(0.0, std::min(timepoint, m_duration));
}

QuartzComponent* Composition::addComponent(std::unique_ptr<QuartzComponent> component) {
  quint64 highest = 0;
  for (const auto& other : m_components) highest = std::max(highest, other->zLevel());
  component->setZLevel(highest + 1);  // the first one too stands at 1 until an order is given
  m_components.push_back(std::move(component));
  return m_components.back().get();
}

QuartzComponent* Composition::addComponenWithQuartzCompositionFile(
    const QString& path, const QMap<QString, AttributeValue>& inputValues, QStringList& warnings) {
  auto component =
      QuartzComponent::createWithQuartzCompositionFile(path, *this, inputValues, warnings);
  return component ? addComponent(std::move(component)) : nullptr;
}

QList<QuartzComponent*> Composition::componentsSortedByZLevel() const {
  QList<QuartzComponent*> sorted;
  for (const auto& component : m_components) sorted.append(component.get());
  std::stable_sort(sorted.begin(), sorted.end(),
                   [](const auto* a, const auto* b) { return a->zLevel() < b->zLevel(); });
  return sorted;
}

QList<QuartzComponent*> Composition::componentsSortedByInverseZLevel() const {
  QList<QuartzComponent*> sorted = componentsSortedByZLevel();
  std::reverse(sorted.begin(), sorted.end());
  return sorted;
}

QList<double> Composition::stopFrameTimepoints() const {
  QList<double> times;
  for (const StopFrame& stopFrame : m_stopFrames) times.append(stopFrame.timepoint());
  std::sort(times.begin(), times.end());
  return times;
}

PropertyArray Composition::stopFrameDictionaries() const {
  QList<StopFrame> sorted = m_stopFrames;
  std::stable_sort(sorted.begin(), sorted.end(), [](const StopFrame& a, const StopFrame& b) {
    return a.timepoint() < b.timepoint();
  });
  PropertyArray dictionaries;
  for (const StopFrame& stopFrame : sorted) {
    const QString& name = stopFrame.triggerInformation();
    dictionaries.append(PropertyDictionary{
        {QStringLiteral("name"), name.isEmpty() ? QStringLiteral("Stopframe") : name},
        {QStringLiteral("time"), stopFrame.timepoint()}});
  }
  return dictionaries;
}

QString Composition::standardKey(const QuartzComponent& component, const QString& separator,
                                 const QString& port) {
  return component.title() + separator + port;
}

QString Composition::stringByTrimmingInvalidKeyCharacters(const QString& string) {
  QString cleaned;
  cleaned.reserve(string.size());
  for (const char32_t character : string.toUcs4()) {
    const bool valid = QChar::isLetterOrNumber(character) || QChar::isMark(character);
    cleaned += valid || character == U'_' ? QString::fromUcs4(&character, 1) : QStringLiteral("_");
  }
  return cleaned;
}

foundation::Result<void> Composition::exportToPath(const QString& path,
                                                   Background includeBackground,
                                                   const KeyFactory& keyFactory) const {
  const foundation::UserDefaults& defaults = foundation::UserDefaults::standard();
  const ExportOptions options{includeBackground == Background::Include,
                              defaults.value(QStringLiteral("avoidSpacesInPortLabels")).toBool(),
                              defaults.value(QStringLiteral("previewFPS")).toBool()};
  PlayoutExport playout(*this, StandardComponents::located(), options, keyFactory);
  return playout.writeToPath(path);
}

}  // namespace model
