#include "model/AbstractComponent.h"

#include <QFile>
#include <QFileInfo>

#include "foundation/Log.h"
#include "model/AttributeFactory.h"
#include "model/ComponentProgram.h"
#include "runtime/CompositionRenderer.h"
#include "store/ObjectContext.h"

namespace model {

using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::Result;

namespace {

constexpr qint64 largestFile = 512LL * 1024 * 1024;

/// Devices and pipes are refused: reading them might never end.
Result<QByteArray> contentsOf(const QString& path) {
  QFile file(path);
  if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
    return foundation::failure(QStringLiteral("there is no such file"), path, file.errorString());
  if (file.size() > largestFile) return foundation::failure(QStringLiteral("is too large"), path);
  return file.readAll();
}

}  // namespace

AbstractComponent::Declaration::Declaration(const QString& name) : Entity(name) {
  derive("duration", {"startTime", "endTime"}, [](const ManagedObject& object) {
    return QVariant(static_cast<const AbstractComponent&>(object).duration());
  });
  derive("visible", {"startTime", "endTime"}, [](const ManagedObject& object) {
    return QVariant(static_cast<const AbstractComponent&>(object).visible());
  });
  derive("animateable", {"attributes"}, [](const ManagedObject& object) {
    return QVariant(static_cast<const AbstractComponent&>(object).animateable());
  });
}

AbstractComponent::AbstractComponent(const Declaration& declaration) : ManagedObject(declaration) {}
AbstractComponent::~AbstractComponent() = default;

void AbstractComponent::setDuration(double duration) {
  if (duration >= 0) setEndTime(startTime() + duration);
}

double AbstractComponent::validatedEndTime(double proposed) const {
  return proposed < startTime() ? roundedTimepoint(startTime()) : proposed;
}

double AbstractComponent::validatedStartTime(double proposed) const {
  return proposed > endTime() ? roundedTimepoint(endTime()) : proposed;
}

bool AbstractComponent::visible() const {
  return renderTimepoint() >= startTime() && renderTimepoint() <= endTime();
}

Attribute* AbstractComponent::attributeForKey(const QString& key) const {
  for (Attribute* attribute : attributes())
    if (attribute->key() == key) return attribute;
  return nullptr;
}

QList<Attribute*> AbstractComponent::attributesSortedByTitle() const {
  QList<Attribute*> sorted = attributes().list();
  std::stable_sort(sorted.begin(), sorted.end(),
                   [](const Attribute* a, const Attribute* b) { return a->titleComparator(*b); });
  return sorted;
}

QList<Attribute*> AbstractComponent::children() const {
  QList<Attribute*> rows = attributesSortedByTitle();
  rows.removeIf([](const Attribute* attribute) { return !attribute->animationPossible(); });
  return rows;
}

int AbstractComponent::animateable() const {
  qsizetype count = 0;
  for (const Attribute* attribute : attributes()) count += attribute->animateable() ? 1 : 0;
  if (count == 0) return 0;
  return count == attributes().size() ? 1 : -1;
}

void AbstractComponent::setAnimateable(int animateable) {
  const store::UndoStep step(*context());
  for (Attribute* attribute : attributes()) attribute->setAnimateable(animateable == 1);
}

Result<void> AbstractComponent::initializeQuartzComposition() {
  dropRenderer();
  if (quartzCompositionData().isEmpty()) {
    auto bytes = contentsOf(compositionFilename());
    if (!bytes) return tl::unexpected(bytes.error());
    set(fields().quartzCompositionData, std::move(*bytes));
  }
  auto program = ComponentProgram::fromData(quartzCompositionData(), compositionFilename());
  m_failedToLoad = !program;
  if (!program) return tl::unexpected(program.error());
  m_program = std::move(*program);
  return {};
}

const ComponentProgram* AbstractComponent::program() const {
  if (!m_program && !m_failedToLoad && !quartzCompositionData().isEmpty()) {
    auto program = ComponentProgram::fromData(quartzCompositionData(), compositionFilename());
    if (program)
      m_program = std::move(*program);
    else
      m_failedToLoad = true;
  }
  return m_program.get();
}

runtime::CompositionRenderer* AbstractComponent::renderer() const {
  if (m_renderer || !program()) return m_renderer.get();
  m_renderer = std::make_unique<runtime::CompositionRenderer>(m_program->compiled());
  setupRenderer(*m_renderer);
  for (const Attribute* attribute : attributes()) attribute->setValueOnRenderer(*m_renderer);
  return m_renderer.get();
}

void AbstractComponent::dropRenderer() const {
  m_renderer.reset();
  m_program.reset();
  m_failedToLoad = false;
}

Result<void> AbstractComponent::initializeWithFile(const QString& path,
                                                   const InputValues& inputValues,
                                                   QStringList& warnings) {
  set(fields().compositionFilename, path);
  if (auto loaded = initializeQuartzComposition(); !loaded) return loaded;
  setTitle(program()->name().isEmpty() ? QFileInfo(path).completeBaseName() : program()->name());
  AttributeFactory factory(*renderer(), inputValues, warnings);
  for (const QString& key : program()->inputKeys())
    if (shallCreateAttributeForKey(key))
      if (auto attribute = factory.attributeForInput(key)) addAttribute(std::move(attribute));
  setAttributeValuesOnQuartzComposition();
  return {};
}

void AbstractComponent::initializeWithDictionary(const PropertyDictionary& dictionaryData) {
  const QString attributesKey = QStringLiteral("attributes");
  for (const auto& [key, value] : dictionaryData)
    if (key != attributesKey) setStoredValue(value, key);
  for (const auto& attribute : dictionaryData.value(attributesKey).array())
    addAttribute(std::make_unique<Attribute>(attribute.dictionary()));
}

Attribute* AbstractComponent::addAttribute(std::unique_ptr<Attribute> attribute) {
  Attribute* added = context()->insert(std::move(attribute));
  added->setComponent(this);
  return added;
}

Result<void> AbstractComponent::updateWithFile(const QString& path, QStringList& warnings) {
  const auto usable = usablePath(path);
  if (!usable) return tl::unexpected(usable.error());
  const auto bytes = contentsOf(*usable);
  if (!bytes) return tl::unexpected(bytes.error());
  const auto program = ComponentProgram::fromData(*bytes, *usable);
  if (!program) return tl::unexpected(program.error());

  const store::UndoStep step(*context());
  set(fields().compositionFilename, *usable);
  set(fields().quartzCompositionData, *bytes);
  const runtime::CompositionRenderer fresh((*program)->compiled());
  const InputValues none;
  AttributeFactory factory(fresh, none, warnings);
  QSet<QString> offered;
  for (const QString& key : (*program)->inputKeys()) {
    if (!shallCreateAttributeForKey(key)) continue;
    offered.insert(key);
    auto attribute = factory.attributeForInput(key);
    Attribute* existing = attributeForKey(key);
    if (!attribute || (existing && existing->type() == attribute->type())) continue;
    if (existing) context()->remove(*existing);
    addAttribute(std::move(attribute));
  }
  for (Attribute* attribute : attributes().list())
    if (attribute->quartzAttribute() && shallCreateAttributeForKey(attribute->key()) &&
        !offered.contains(attribute->key()))
      context()->remove(*attribute);
  setNeedsUpdate(true);
  return {};
}

void AbstractComponent::readLabelsOfPorts() {
  const ComponentProgram* source = program();  // a renderer is not needed for this
  if (!source) return;
  quint64 position = 0;
  for (qsizetype i = 0; i < source->inputKeys().size(); ++i) {
    const QString& key = source->inputKeys()[i];
    Attribute* attribute = attributeForKey(key);
    if (!attribute || !shallCreateAttributeForKey(key)) continue;
    // One key may be published by several ports: the first counts.
    attribute->readLabelOfPort(source->inputLabels()[source->inputKeys().indexOf(key)]);
    if (attribute->position() == AttributeLabel::noPosition) attribute->setPosition(position++);
  }
}

void AbstractComponent::setAttributeValuesOnQuartzComposition() {
  runtime::CompositionRenderer* target = renderer();
  if (!target) return;
  for (const Attribute* attribute : attributes()) attribute->setValueOnRenderer(*target);
}

void AbstractComponent::attributeDidChange(const Attribute& attribute) {
  if (!attribute.quartzAttribute()) return;
  setNeedsUpdate(true);
  if (runtime::CompositionRenderer* target = madeRenderer()) attribute.setValueOnRenderer(*target);
}

void AbstractComponent::sendChangeNotificationForValues(Announced which) {
  for (Attribute* attribute : attributes()) {
    if (which == Announced::OnlyAnimateable && !attribute->animateable()) continue;
    announce(attribute->key());
    attribute->announce(QStringLiteral("currentValue"));
  }
}

void AbstractComponent::awakeFromFetch() {
  readLabelsOfPorts();
}

void AbstractComponent::awakeFromReplay() {
  // Values reach a renderer that is there already attribute by attribute.
  setNeedsUpdate(true);
}

void AbstractComponent::didLeaveContext() {
  dropRenderer();
}

void AbstractComponent::valueDidChange(const QString& key) {
  if (key == QLatin1String("quartzCompositionData")) dropRenderer();
}

QVariant AbstractComponent::valueForUndefinedKey(const QString& key) const {
  const Attribute* attribute = attributeForKey(key);
  return attribute ? QVariant::fromValue(attribute->currentValue()) : QVariant();
}

bool AbstractComponent::setValueForUndefinedKey(const QVariant& value, const QString& key) {
  Attribute* attribute = attributeForKey(key);
  const auto converted = attribute ? attribute->valueFromVariant(value) : std::nullopt;
  if (!converted) return false;
  attribute->setCurrentValue(*converted);
  if (attribute->quartzAttribute()) setNeedsUpdate(true);
  return true;
}

PropertyDictionary AbstractComponent::dictionaryWithData() const {
  PropertyDictionary dictionary{{QStringLiteral("animateable"), animateable()}};
  for (const char16_t* key :
       {u"compositionFilename", u"endTime", u"quartzCompositionData", u"startTime", u"title"}) {
    const QString name = QString::fromUtf16(key);
    dictionary.insert(name, storedValue(name));
  }
  PropertyArray list;
  for (const Attribute* attribute : attributes()) list.append(attribute->dictionaryWithData());
  dictionary.insert(QStringLiteral("attributes"), std::move(list));
  return dictionary;
}

PropertyDictionary AbstractComponent::componentInfo() const {
  PropertyArray list;
  for (const Attribute* attribute : attributes()) list.append(attribute->componentInfo());
  return {{QStringLiteral("title"), title()}, {QStringLiteral("attributes"), std::move(list)}};
}

void AbstractComponent::bugInfo() const {
  foundation::logInfo(QStringLiteral("Bug info for component %1").arg(title()));
  for (const Attribute* attribute : attributes())
    foundation::logInfo(QStringLiteral("Attribute %1 has value %2")
                            .arg(attribute->title(), attribute->currentValue().description()));
}

}  // namespace model
