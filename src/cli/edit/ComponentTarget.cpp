#include "cli/edit/ComponentTarget.h"

#include "cli/edit/NearNames.h"
#include "model/RichFontValue.h"

namespace cli {

using model::Attribute;
using model::QuartzComponent;

namespace {

QString numbers(const QList<QuartzComponent*>& sorted, const QString& title) {
  QStringList found;
  for (qsizetype i = 0; i < sorted.size(); ++i)
    if (sorted[i]->title() == title) found.append(QStringLiteral("#%1").arg(i + 1));
  return found.join(QStringLiteral(", "));
}

/// The only one whose key, else whose label is the name, letter case aside.
Attribute* likeNamed(const QuartzComponent& component, const QString& name) {
  for (const bool byKey : {true, false}) {
    Attribute* found = nullptr;
    int count = 0;
    for (Attribute* attribute : component.attributes().list()) {
      const QString& own = byKey ? attribute->key() : attribute->label();
      if (own.compare(name, Qt::CaseInsensitive) != 0) continue;
      found = attribute;
      ++count;
    }
    if (count == 1) return found;
  }
  return nullptr;
}

}  // namespace

const std::vector<ComponentTarget::Place>& ComponentTarget::places() {
  static const std::vector<Place> all{{"x", "originX"},          {"y", "originY"},
                                      {"width", "inputWidth"},   {"height", "inputHeight"},
                                      {"rotation", "zRotation"}, {"opacity", "opacity"}};
  return all;
}

tl::expected<QuartzComponent*, LoadFailure> ComponentTarget::component(
    const model::Composition& composition, const QString& name) {
  const QList<QuartzComponent*> sorted = composition.componentsSortedByZLevel();
  QList<QuartzComponent*> titled;
  QStringList titles;
  for (QuartzComponent* component : sorted) {
    titles.append(component->title());
    if (component->title() == name) titled.append(component);
  }
  if (titled.size() == 1) return titled[0];
  if (titled.size() > 1)
    return misused(QStringLiteral("several components are called '%1': %2; name one by its number")
                       .arg(name, numbers(sorted, name)));
  bool isNumber = false;
  const int number = name.startsWith(u'#') ? name.mid(1).toInt(&isNumber) : 0;
  if (!isNumber)
    return misused(
        QStringLiteral("there is no component '%1'; %2").arg(name, nearNames(name, titles)));
  if (number >= 1 && number <= sorted.size()) return sorted[number - 1];
  return misused(
      QStringLiteral("there is no component %1; the document has %2").arg(name).arg(sorted.size()));
}

tl::expected<Attribute*, LoadFailure> ComponentTarget::attribute(const QuartzComponent& component,
                                                                 const QString& name) {
  const QString prefix = QStringLiteral("input:");
  const bool isInput = name.startsWith(prefix);
  const QString wanted = isInput ? name.mid(prefix.size()) : name;
  QStringList names;
  if (!isInput)
    for (const Place& place : places()) {
      names.append(QLatin1String(place.name));
      Attribute* found = component.attributeForKey(QLatin1String(place.key));
      if (found && wanted == QLatin1String(place.name)) return found;
    }
  if (Attribute* found = component.attributeForKey(wanted)) return found;
  if (Attribute* found = likeNamed(component, wanted)) return found;
  for (const Attribute* attribute : component.attributes().list())
    if (attribute->quartzAttribute()) names.append(attribute->key());
  return misused(QStringLiteral("'%1' has no '%2'; %3")
                     .arg(component.title(), wanted, nearNames(wanted, names)));
}

Attribute* ComponentTarget::richFont(const QuartzComponent& component, const QString& key) {
  for (Attribute* attribute : component.attributes().list()) {
    const model::AttributeValue value = attribute->currentValue();
    const auto* font = value.as<std::shared_ptr<const model::RichFontValue>>();
    if (font && *font && (*font)->contains(key)) return attribute;
  }
  return nullptr;
}

}  // namespace cli
