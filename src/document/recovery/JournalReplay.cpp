#include "document/recovery/JournalReplay.h"

#include <utility>

namespace document {

using store::FetchedObject;
using store::ManagedObject;
using store::ObjectContext;
using Kind = ObjectChange::Kind;

namespace {

bool hasKind(const ObjectContext& context, const ObjectChange& change) {
  const ManagedObject* object = context.objectWithId(change.id);
  return object && (change.kind == Kind::Updated || object->entity().name() == change.entity);
}

void removeObject(ObjectContext& context, store::ObjectId id) {
  if (ManagedObject* object = context.objectWithId(id)) context.remove(*object);
}

FetchedObject fetched(const ObjectChange& change, const store::EntityFactories& factories) {
  FetchedObject made{change.id, factories.value(change.entity)()};
  for (const auto& [key, value] : change.values) made.object->setStoredValue(value, key);
  for (const auto& [key, id] : change.relations)
    if (id != 0) made.relations.append({key, id});
  return made;
}

void relate(ManagedObject& object, const ObjectChange& change) {
  for (const auto& [key, id] : change.relations)
    object.setStoredRelation(object.context()->objectWithId(id), key);
  if (change.kind != Kind::Inserted) return;
  for (const store::ToOneDescription& relation : object.entity().toOnes())
    if (!change.relations.contains(relation.key)) object.setStoredRelation(nullptr, relation.key);
}

}  // namespace

void JournalReplay::add(std::vector<ObjectChange> step) {
  for (ObjectChange& change : step) {
    ObjectChange& sum = m_changes[change.id];
    if (change.kind != Kind::Updated || sum.kind == Kind::End) {
      sum = std::move(change);
      continue;
    }
    for (auto& [key, value] : change.values) sum.values[key] = std::move(value);
    for (const auto& [key, id] : change.relations) sum.relations[key] = id;
  }
}

int JournalReplay::applyTo(ObjectContext& context, const store::EntityFactories& factories) const {
  int lost = 0;
  std::vector<FetchedObject> inserted;
  std::vector<const ObjectChange*> updated;
  {
    const store::UndoSuspension suspension(context);
    const store::UndoStep step(context);
    for (const auto& [id, change] : m_changes) {
      if (change.kind == Kind::Removed) continue;
      if (hasKind(context, change)) {
        updated.push_back(&change);
      } else if (change.kind == Kind::Inserted && factories.contains(change.entity)) {
        removeObject(context, id);
        inserted.push_back(fetched(change, factories));
      } else {
        ++lost;
      }
    }
    context.takeFetched(std::move(inserted));
    for (const ObjectChange* change : updated) {
      ManagedObject* object = context.objectWithId(change->id);
      if (!object) continue;  // removed along with another one
      for (const auto& [key, value] : change->values) object->setStoredValue(value, key);
      relate(*object, *change);
    }
    for (const auto& [id, change] : m_changes)
      if (change.kind == Kind::Removed) removeObject(context, id);
  }
  context.markChanged();
  return lost;
}

}  // namespace document
