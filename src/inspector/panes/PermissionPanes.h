#pragma once

#include "inspector/ShownAttribute.h"
#include "inspector/panes/InspectorPane.h"

namespace inspector {

class PermissionRow;

/// Whether the selected components may be moved, resized and changed on air.
class PermissionSummaryPane : public InspectorPane {
  Q_OBJECT

 public:
  explicit PermissionSummaryPane(InspectorContext& context);
  void takeSelection() override;
  void refresh() override;

 private:
  enum class Group { Move, Resize, Attributes };
  [[nodiscard]] QList<model::Attribute*> attributesOf(Group group) const;
  [[nodiscard]] int permission(Group group) const;
  PermissionRow* addGroup(Group group, const QString& name);

  QList<std::pair<Group, PermissionRow*>> m_groups;
};

/// The same for each attribute.
class PermissionListPane : public InspectorPane {
  Q_OBJECT

 public:
  explicit PermissionListPane(InspectorContext& context);
  void takeSelection() override;
  void refresh() override;
  void letGo() override;

 private:
  void showRow(PermissionRow& row, const ShownAttribute& shown) const;

  QList<ShownAttribute> m_shown;
  QList<PermissionRow*> m_lines;
  QWidget* m_note;
};

}  // namespace inspector
