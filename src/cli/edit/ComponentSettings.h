#pragma once

#include "cli/edit/Assignment.h"
#include "cli/edit/AttributeText.h"
#include "model/QuartzComponent.h"

namespace cli {

/// Sets what a component is and shows from assignments.
class ComponentSettings {
 public:
  using Done = tl::expected<void, LoadFailure>;

  /// Relative names of files begin at the folder.
  ComponentSettings(model::QuartzComponent& component, const QString& folder)
      : m_component(component), m_text(folder) {}

  [[nodiscard]] Done apply(const Assignment& assignment);
  /// What all assignments together must keep to.
  [[nodiscard]] Done check() const;
  /// What was done and may still not be meant.
  [[nodiscard]] const QStringList& notes() const { return m_notes; }
  /// What can be set beside the inputs, for help texts.
  [[nodiscard]] static QString help();

 private:
  [[nodiscard]] bool applyOwn(const Assignment& assignment, Done& done);
  [[nodiscard]] Done place(const char* key, const Assignment& assignment);
  [[nodiscard]] Done margins(const Assignment& assignment);
  [[nodiscard]] Done time(const Assignment& assignment);
  [[nodiscard]] Done flag(const Assignment& assignment);
  [[nodiscard]] Done fields(const QString& list);
  [[nodiscard]] Done input(const Assignment& assignment);

  model::QuartzComponent& m_component;
  AttributeText m_text;
  QStringList m_notes;
};

}  // namespace cli
