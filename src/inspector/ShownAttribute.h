#pragma once

#include <QList>

#include "model/Attribute.h"

namespace model {
class QuartzComponent;
}

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
[[nodiscard]] QList<ShownAttribute> shownAttributes(
    const QList<model::QuartzComponent*>& components);
/// Those of one type, which have a pane of their own.
[[nodiscard]] QList<ShownAttribute> attributesOfType(
    const QList<model::QuartzComponent*>& components, model::AttributeType type);
/// All of them: first position, size, opacity and rotation, then the others by key, margins and
/// visibility last.
[[nodiscard]] QList<ShownAttribute> attributesInOrder(
    const QList<model::QuartzComponent*>& components);

}  // namespace inspector
