#pragma once

#include "cli/LoadFailure.h"
#include "model/Composition.h"

namespace cli {

/// What commands call the parts of a document by.
class ComponentTarget {
 public:
  /// The component of the title, or "#N": the N-th from below.
  [[nodiscard]] static tl::expected<model::QuartzComponent*, LoadFailure> component(
      const model::Composition& composition, const QString& name);
  /// By key, by label, by a name such as "width", or, with "input:" before it, by key or label
  /// alone.
  [[nodiscard]] static tl::expected<model::Attribute*, LoadFailure> attribute(
      const model::QuartzComponent& component, const QString& name);
  /// The rich font that the full key of an input belongs to, or none.
  [[nodiscard]] static model::Attribute* richFont(const model::QuartzComponent& component,
                                                  const QString& key);
  /// The names for place and size, with the attribute that each means.
  struct Place {
    const char* name;
    const char* key;
  };
  [[nodiscard]] static const std::vector<Place>& places();
};

}  // namespace cli
