#include "store/XmlStore.h"

#include <algorithm>

#include "store/xml/StoreLoading.h"
#include "store/xml/StoreWriter.h"

namespace store {

using foundation::PropertyValue;
using foundation::Result;

namespace {

/// Writes objects of the context, merged with what was kept of them.
class ObjectWriting {
 public:
  ObjectWriting(xml::StoreWriter& writer, const xml::KeptFromFile& kept)
      : m_writer(writer), m_kept(kept) {}

  void write(const ManagedObject& object) {
    static const xml::KeptParts nothing;
    const auto found = m_kept.parts.constFind(object.objectId());
    const xml::KeptParts& parts = found == m_kept.parts.cend() ? nothing : *found;
    m_writer.beginObject(object.entity().name(), object.objectId(), parts.attributes);
    writeRelations(object, parts);
    writeValues(object, parts);
    m_writer.elements(parts.elements);
    m_writer.endObject();
  }

 private:
  struct Keys {
    QStringList relations;
    QStringList values;
  };

  /// The keys of what is stored, in the order of the file.
  const Keys& keysOf(const Entity& entity) {
    Keys& keys = m_keys[&entity];
    if (keys.relations.isEmpty() && keys.values.isEmpty()) {
      for (const ToOneDescription& relation : entity.toOnes()) keys.relations.append(relation.key);
      for (const PropertyDescription& property : entity.properties())
        if (property.codec) keys.values.append(property.key);
      std::sort(keys.relations.begin(), keys.relations.end());
      std::sort(keys.values.begin(), keys.values.end());
    }
    return keys;
  }

  void writeRelations(const ManagedObject& object, const xml::KeptParts& parts) {
    auto kept = parts.relations.begin();
    const auto writeKeptBefore = [&](const QString* key) {
      for (; kept != parts.relations.end() && (!key || kept->stored.key < *key); ++kept)
        m_writer.stored(kept->stored);
    };
    for (const QString& key : keysOf(object.entity()).relations) {
      writeKeptBefore(&key);
      const auto* related = object.valueForKey(key).value<ManagedObject*>();
      const ObjectId to = related ? related->objectId() : 0;
      const bool hasKept = kept != parts.relations.end() && kept->stored.key == key;
      if (hasKept && kept->insteadOf == to)
        m_writer.stored(kept->stored);
      else if (related)
        m_writer.relation(key, to);
      if (hasKept) ++kept;
    }
    writeKeptBefore(nullptr);
  }

  void writeValues(const ManagedObject& object, const xml::KeptParts& parts) {
    auto kept = parts.values.begin();
    const auto writeKeptBefore = [&](const QString* key) {
      for (; kept != parts.values.end() && (!key || kept->stored.key < *key); ++kept)
        m_writer.stored(kept->stored);
    };
    for (const QString& key : keysOf(object.entity()).values) {
      writeKeptBefore(&key);
      const PropertyValue value = object.storedValue(key);
      const bool hasKept = kept != parts.values.end() && kept->stored.key == key;
      if (hasKept && kept->insteadOf == value)
        m_writer.stored(kept->stored);
      else
        m_writer.value(key, value);
      if (hasKept) ++kept;
    }
    writeKeptBefore(nullptr);
  }

  xml::StoreWriter& m_writer;
  const xml::KeptFromFile& m_kept;
  QHash<const Entity*, Keys> m_keys;
};

}  // namespace

StoredValue* StoredObject::value(const QString& key) {
  const auto found = std::find_if(values.begin(), values.end(),
                                  [&](const StoredValue& value) { return value.key == key; });
  return found == values.end() ? nullptr : &*found;
}

XmlStore::XmlStore(EntityFactories factories, MigrationSteps steps)
    : m_factories(std::move(factories)), m_steps(std::move(steps)) {}

Result<void> XmlStore::read(const QByteArray& xml, const QString& path, ObjectContext& context) {
  auto contents = xml::StoreReader(xml, path).read();
  if (!contents) return tl::unexpected(contents.error());
  xml::StoreNotices notices;
  const int version = contents->version;
  if (version > currentVersion()) notices.newerVersion(version, currentVersion());
  if (version < currentVersion()) notices.olderVersion(version, currentVersion());
  for (int step = version; step < currentVersion(); ++step)
    m_steps[static_cast<size_t>(step - 1)](contents->objects);
  if (version < currentVersion())
    if (auto problem = xml::sortStored(contents->objects, path)) return tl::unexpected(*problem);

  ObjectId last = 0;
  if (!contents->objects.empty()) last = contents->objects.back().id;
  xml::StoreLoading loading(m_factories, notices);
  loading.load(std::move(*contents), version > currentVersion());
  m_kept = loading.takeKept();
  m_warnings = notices.sentences();
  context.takeFetched(loading.takeObjects());
  context.keepNumbersUpTo(last);
  return {};
}

QByteArray XmlStore::write(const ObjectContext& context) const {
  xml::StoreWriter writer(std::max(currentVersion(), m_kept.version), m_kept.attributes,
                          m_kept.blocks);
  ObjectWriting objects(writer, m_kept);
  auto unknown = m_kept.objects.begin();
  for (const auto& [id, object] : context.objects()) {
    for (; unknown != m_kept.objects.end() && unknown->first < id; ++unknown)
      writer.object(unknown->second);
    objects.write(*object);
  }
  for (; unknown != m_kept.objects.end(); ++unknown) writer.object(unknown->second);
  return writer.finish(m_kept.elements);
}

}  // namespace store
