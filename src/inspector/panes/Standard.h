#pragma once

#include "inspector/rows/InspectorRow.h"

namespace model {
class QuartzComponent;
}

namespace inspector {

/// The attributes of these keys, of all components that have them.
[[nodiscard]] QList<model::Attribute*> attributesForKeys(
    const QList<model::QuartzComponent*>& components, const QStringList& keys);

}  // namespace inspector
