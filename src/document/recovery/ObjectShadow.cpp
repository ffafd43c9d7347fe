#include "document/recovery/ObjectShadow.h"

#include <cstring>

#include "document/recovery/JournalFormat.h"
#include "document/recovery/ValueStream.h"

namespace document {

using store::ManagedObject;
using store::ObjectId;

namespace {

/// Equal without looking into what they share: large values lie behind pointers, which are the same
/// then. Others may be equal nevertheless.
bool isSame(const QVariant& a, const QVariant& b) {
  if (a.metaType() != b.metaType()) return false;
  if (a.constData() == b.constData()) return true;
  const auto size = static_cast<size_t>(a.metaType().sizeOf());
  return size <= sizeof(QVariant) && std::memcmp(a.constData(), b.constData(), size) == 0;
}

ObjectId numberOf(const ManagedObject* object) {
  return object ? object->objectId() : 0;
}

/// Writes the changes of one object after the other.
class StepWriter {
 public:
  StepWriter() { m_writer.byte(static_cast<quint8>(FrameKind::Step)); }

  void removed(ObjectId id) { begin(ObjectChange::Kind::Removed, id); }

  void inserted(const ManagedObject& object) {
    begin(ObjectChange::Kind::Inserted, object.objectId());
    m_writer.text(object.entity().name());
    std::vector<size_t> stored;
    const auto& properties = object.entity().properties();
    for (size_t i = 0; i < properties.size(); ++i)
      if (properties[i].codec) stored.push_back(i);
    values(object, stored);
    std::vector<size_t> related;
    for (size_t i = 0; i < object.entity().toOnes().size(); ++i)
      if (object.relatedObject(i)) related.push_back(i);
    relations(object, related);
  }

  void updated(const ManagedObject& object, const std::vector<size_t>& valuesThere,
               const std::vector<size_t>& relationsThere) {
    begin(ObjectChange::Kind::Updated, object.objectId());
    values(object, valuesThere);
    relations(object, relationsThere);
  }

  [[nodiscard]] QByteArray finished() {
    if (m_isEmpty) return {};
    m_writer.byte(static_cast<quint8>(ObjectChange::Kind::End));
    return m_payload;
  }

 private:
  void begin(ObjectChange::Kind kind, ObjectId id) {
    m_isEmpty = false;
    m_writer.byte(static_cast<quint8>(kind));
    m_writer.number(id);
  }
  void values(const ManagedObject& object, const std::vector<size_t>& indices) {
    m_writer.number(indices.size());
    for (const size_t index : indices) {
      const store::PropertyDescription& property = object.entity().properties()[index];
      m_writer.text(property.key);
      m_writer.value(property.codec->encode(object.propertyValue(index)));
    }
  }
  void relations(const ManagedObject& object, const std::vector<size_t>& indices) {
    m_writer.number(indices.size());
    for (const size_t index : indices) {
      m_writer.text(object.entity().toOnes()[index].key);
      m_writer.number(numberOf(object.relatedObject(index)));
    }
  }

  QByteArray m_payload;
  ValueWriter m_writer{m_payload};
  bool m_isEmpty = true;
};

}  // namespace

ObjectShadow::Known ObjectShadow::known(const ManagedObject& object) {
  Known known;
  const auto& properties = object.entity().properties();
  known.values.resize(properties.size());
  for (size_t i = 0; i < properties.size(); ++i)
    if (properties[i].codec) known.values[i] = object.propertyValue(i);
  for (size_t i = 0; i < object.entity().toOnes().size(); ++i)
    known.related.push_back(numberOf(object.relatedObject(i)));
  return known;
}

void ObjectShadow::take(const store::ObjectContext& context) {
  m_objects.clear();
  m_objects.reserve(context.objects().size());
  for (const auto& [id, object] : context.objects()) m_objects.emplace(id, known(*object));
}

QByteArray ObjectShadow::stepTo(const store::ObjectContext& context,
                                const std::vector<ObjectId>& ids) {
  StepWriter step;
  for (const ObjectId id : ids) {
    const ManagedObject* object = context.objectWithId(id);
    const auto found = m_objects.find(id);
    if (!object) {
      if (found == m_objects.end()) continue;
      step.removed(id);
      m_objects.erase(found);
      continue;
    }
    if (found == m_objects.end()) {
      step.inserted(*object);
      m_objects.emplace(id, known(*object));
      continue;
    }
    Known& before = found->second;
    std::vector<size_t> values;
    const auto& properties = object->entity().properties();
    for (size_t i = 0; i < properties.size(); ++i) {
      if (!properties[i].codec || isSame(before.values[i], object->propertyValue(i))) continue;
      if (before.values[i] != object->propertyValue(i)) values.push_back(i);
      before.values[i] = object->propertyValue(i);
    }
    std::vector<size_t> relations;
    for (size_t i = 0; i < before.related.size(); ++i)
      if (const ObjectId related = numberOf(object->relatedObject(i));
          std::exchange(before.related[i], related) != related)
        relations.push_back(i);
    if (!values.empty() || !relations.empty()) step.updated(*object, values, relations);
  }
  return step.finished();
}

}  // namespace document
