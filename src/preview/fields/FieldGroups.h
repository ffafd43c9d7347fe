#pragma once

#include <QCoreApplication>

#include "preview/fields/Field.h"

namespace preview {

/// Fields as they are shown: by the component that they belong to.
struct FieldGroup {
  struct Member {
    QString key;
    QString title;  ///< the label without the component
  };
  QString title;
  std::vector<Member> members;
};

/// Finds the component of a field in its label: every component publishes whether it is enabled, so
/// the labels themselves tell what the components are called.
class FieldGroups {
  Q_DECLARE_TR_FUNCTIONS(FieldGroups)

 public:
  /// In the order of the fields. Components of which nothing but that switch is published share the
  /// last group.
  [[nodiscard]] static std::vector<FieldGroup> of(const std::vector<Field>& fields);
};

}  // namespace preview
