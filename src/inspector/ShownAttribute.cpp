#include "inspector/ShownAttribute.h"

#include <QSet>

namespace inspector {

using model::Attribute;
using model::AttributeType;

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
QList<ShownAttribute> collect(const AttributesByKey& byKey, Wanted wanted) {
  QList<ShownAttribute> rows;
  for (const QList<Attribute*>& alike : byKey) {
    ShownAttribute shown;
    std::copy_if(alike.begin(), alike.end(), std::back_inserter(shown.attributes),
                 [&](const Attribute* attribute) { return wanted(*attribute); });
    if (!shown.attributes.isEmpty()) rows.append(shown);
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

QList<ShownAttribute> shownAttributes(const AttributesByKey& attributes) {
  return collect(attributes, [](const Attribute& attribute) {
    return !isHidden(attribute) && !hasPaneOfItsOwn(attribute.type()) &&
           !standardKeys().contains(attribute.key());
  });
}

QList<ShownAttribute> attributesOfType(const AttributesByKey& attributes, AttributeType type) {
  return collect(attributes, [type](const Attribute& attribute) {
    return !isHidden(attribute) && attribute.type() == type;
  });
}

QList<ShownAttribute> attributesInOrder(const AttributesByKey& attributes) {
  static const QStringList first{QStringLiteral("originX"),    QStringLiteral("originY"),
                                 QStringLiteral("inputWidth"), QStringLiteral("inputHeight"),
                                 QStringLiteral("opacity"),    QStringLiteral("zRotation")};
  const auto place = [](const ShownAttribute& shown) {
    const QString& key = shown.first().key();
    if (const qsizetype index = first.indexOf(key); index >= 0) return index;
    return first.size() + (standardKeys().contains(key) ? 1 : 0);
  };
  QList<ShownAttribute> rows = collect(attributes, [](const Attribute&) { return true; });
  std::stable_sort(rows.begin(), rows.end(),
                   [&](const auto& a, const auto& b) { return place(a) < place(b); });
  return rows;
}

}  // namespace inspector
