#pragma once

#include "document/recovery/JournalFormat.h"
#include "store/EntityFactories.h"
#include "store/ObjectContext.h"

namespace document {

/// Adds up the changes of a journal's steps, and brings a context to where they lead. Nothing of
/// that can be undone; the context counts as changed then.
class JournalReplay {
 public:
  void add(std::vector<ObjectChange> step);
  [[nodiscard]] bool isEmpty() const { return m_changes.empty(); }

  /// The number of objects whose changes had no place: of unknown kinds, or changed without being
  /// there. None when the context holds what the journal starts from.
  [[nodiscard]] int applyTo(store::ObjectContext& context,
                            const store::EntityFactories& factories) const;

 private:
  std::map<store::ObjectId, ObjectChange> m_changes;
};

}  // namespace document
