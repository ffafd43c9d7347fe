#include "canvas/ToolbarComponents.h"

#include <QFileInfo>

#include "foundation/Log.h"
#include "foundation/PropertyList.h"
#include "model/StandardComponents.h"

namespace canvas {

using foundation::PropertyValue;

namespace {

QList<ToolbarComponents::Entry> entriesOf(const PropertyValue& list, int depth = 0) {
  constexpr int deepest = 1;  // menus have no menus
  QList<ToolbarComponents::Entry> entries;
  for (const PropertyValue& value : list.array()) {
    const auto& dictionary = value.dictionary();
    const auto string = [&](QStringView key) { return dictionary.value(key).toString(); };
    ToolbarComponents::Entry entry{string(u"identifier"),
                                   string(u"title"),
                                   string(u"component"),
                                   string(u"icon"),
                                   dictionary.value(u"width").toDouble(),
                                   {}};
    if (depth < deepest)
      entry.subcomponents = entriesOf(dictionary.value(u"subcomponents"), depth + 1);
    if (depth > 0 || !entry.identifier.isEmpty()) entries.append(std::move(entry));
  }
  return entries;
}

}  // namespace

QString ToolbarComponents::Entry::imageName() const {
  QString name = identifier;
  return QStringLiteral("imageOfToolbar") + name.remove(u' ').remove(u'/');
}

const ToolbarComponents& ToolbarComponents::shared() {
  static const ToolbarComponents components = [] {
    const QString folder = QFileInfo(model::StandardComponents::located().folder()).absolutePath();
    auto read = fromFile(folder + QStringLiteral("/ToolbarComponents.plist"));
    if (!read) foundation::logError(read.error().text());
    return read ? *read : ToolbarComponents();
  }();
  return components;
}

foundation::Result<ToolbarComponents> ToolbarComponents::fromFile(const QString& path) {
  const auto list = foundation::PropertyList::fromFile(path);
  if (!list) return tl::unexpected(list.error());
  ToolbarComponents components;
  components.m_entries = entriesOf(*list);
  return components;
}

const QString& ToolbarComponents::space() {
  static const QString identifier = QStringLiteral("Space");
  return identifier;
}

const QString& ToolbarComponents::flexibleSpace() {
  static const QString identifier = QStringLiteral("FlexibleSpace");
  return identifier;
}

QStringList ToolbarComponents::toolbarComponentIdentifier() const {
  QStringList identifiers;
  for (const Entry& entry : m_entries) identifiers.append(entry.identifier);
  return identifiers;
}

QStringList ToolbarComponents::standardToolbarIdentifier() {
  const auto q = [](const char* name) { return QString::fromLatin1(name); };
  return {flexibleSpace(), q("Align"),        flexibleSpace(), q("Distribute"),     flexibleSpace(),
          q("Backward"),   q("Forward"),      space(),         q("Workbench Size"), space(),
          q("Stop Frame"), q("Poster Frame"), q("Preview")};
}

QStringList ToolbarComponents::allToolbarIdentifier() const {
  return toolbarComponentIdentifier() + standardToolbarIdentifier();
}

QString ToolbarComponents::componentFor(const QString& identifier, int subcomponent) const {
  for (const Entry& entry : m_entries) {
    if (entry.identifier != identifier) continue;
    if (subcomponent < 0) return entry.component;
    return subcomponent < entry.subcomponents.size() ? entry.subcomponents[subcomponent].component
                                                     : QString();
  }
  return {};
}

}  // namespace canvas
