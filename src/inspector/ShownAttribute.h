#pragma once

#include <QList>

#include "inspector/InspectorContext.h"
#include "model/Attribute.h"

namespace inspector {

/// The attributes of one key, over several components; the first one met says how they are shown.
struct ShownAttribute {
  QList<model::Attribute*> attributes;

  [[nodiscard]] const model::Attribute& first() const { return *attributes.first(); }
  /// The label without underscores.
  [[nodiscard]] QString rowLabel() const;
};

/// What the attribute pane shows: by key, without standard keys, hidden keys (those that begin with
/// "_"), video inputs and rich fonts.
[[nodiscard]] QList<ShownAttribute> shownAttributes(const AttributesByKey& attributes);
/// Those of one type, which have a pane of their own.
[[nodiscard]] QList<ShownAttribute> attributesOfType(const AttributesByKey& attributes,
                                                     model::AttributeType type);
/// All of them: first position, size, opacity and rotation, then the others by key, margins and
/// visibility last.
[[nodiscard]] QList<ShownAttribute> attributesInOrder(const AttributesByKey& attributes);

}  // namespace inspector
