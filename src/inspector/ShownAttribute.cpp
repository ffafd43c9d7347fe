#include "inspector/ShownAttribute.h"

#include <QSet>

#include "model/QuartzComponent.h"

namespace inspector {

using model::Attribute;
using model::AttributeType;
using model::QuartzComponent;

namespace {

const QSet<QString>& standardKeys() {
  static const QSet<QString> keys{QStringLiteral("inputWidth"),
                                  QStringLiteral("inputHeight"),
                                  QStringLiteral("originX"),
                                  QStringLiteral("originY"),
                                  QStringLiteral("opacity"),
                                  QStringLiteral("zRotation"),
                                  QStringLiteral("marginX"),
                                  QStringLiteral("marginY"),
                                  QStringLiteral("visibleInCompositionEditor")};
  return keys;
}

bool isHidden(const Attribute& attribute) {
  return attribute.key().startsWith(u'_');
}

bool hasPaneOfItsOwn(AttributeType type) {
  return type == AttributeType::VideoInput || type == AttributeType::RichFont;
}

template <typename Wanted>
QList<ShownAttribute> collect(const QList<QuartzComponent*>& components, Wanted wanted) {
  QList<ShownAttribute> rows;
  QHash<QString, qsizetype> rowOfKey;
  for (const QuartzComponent* component : components)
    for (Attribute* attribute : component->attributes()) {
      const QString& key = attribute->key();
      if (!wanted(*attribute)) continue;
      const auto found = rowOfKey.constFind(key);
      if (found == rowOfKey.constEnd()) {
        rowOfKey.insert(key, rows.size());
        rows.append({{attribute}});
        continue;
      }
      // By key a component has one attribute, the first.
      QList<Attribute*>& attributes = rows[*found].attributes;
      if (attributes.last()->component() != component) attributes.append(attribute);
    }
  std::sort(rows.begin(), rows.end(), [](const ShownAttribute& a, const ShownAttribute& b) {
    return a.first().key() < b.first().key();
  });
  return rows;
}

}  // namespace

QString ShownAttribute::rowLabel() const {
  return QString(first().label()).replace(u'_', u' ');
}

QList<ShownAttribute> shownAttributes(const QList<QuartzComponent*>& components) {
  return collect(components, [](const Attribute& attribute) {
    return !isHidden(attribute) && !hasPaneOfItsOwn(attribute.type()) &&
           !standardKeys().contains(attribute.key());
  });
}

QList<ShownAttribute> attributesOfType(const QList<QuartzComponent*>& components,
                                       AttributeType type) {
  return collect(components, [type](const Attribute& attribute) {
    return !isHidden(attribute) && attribute.type() == type;
  });
}

QList<ShownAttribute> attributesInOrder(const QList<QuartzComponent*>& components) {
  static const QStringList first{QStringLiteral("originX"),    QStringLiteral("originY"),
                                 QStringLiteral("inputWidth"), QStringLiteral("inputHeight"),
                                 QStringLiteral("opacity"),    QStringLiteral("zRotation")};
  const auto place = [](const ShownAttribute& shown) {
    const QString& key = shown.first().key();
    if (const qsizetype index = first.indexOf(key); index >= 0) return index;
    return first.size() + (standardKeys().contains(key) ? 1 : 0);
  };
  QList<ShownAttribute> rows = collect(components, [](const Attribute&) { return true; });
  std::stable_sort(rows.begin(), rows.end(),
                   [&](const auto& a, const auto& b) { return place(a) < place(b); });
  return rows;
}

}  // namespace inspector
