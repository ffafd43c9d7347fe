#include "inspector/panes/PermissionPanes.h"

#include <QVBoxLayout>

#include "inspector/InspectorContext.h"
#include "inspector/panes/PermissionRow.h"
#include "inspector/rows/InspectorRow.h"
#include "model/QuartzComponent.h"
#include "widgets/TYPaneHeader.h"
#include "widgets/TokenLabel.h"

namespace inspector {

using model::Attribute;
using model::QuartzComponent;

namespace {

void permit(InspectorContext& context, const QList<Attribute*>& attributes, bool on) {
  context.change(PermissionListPane::tr("Change Permission"), [&] {
    for (Attribute* attribute : attributes)
      if (!on || !attribute->isAnimatedInExport()) attribute->setPermissionToChange(on);
  });
  context.setNeedsRefresh();
}

bool isAnimated(const QList<Attribute*>& attributes) {
  return !attributes.isEmpty() &&
         std::all_of(attributes.begin(), attributes.end(),
                     [](const Attribute* a) { return a->isAnimatedInExport(); });
}

int permissionOf(const QList<Attribute*>& attributes) {
  const auto allowed = std::count_if(attributes.begin(), attributes.end(),
                                     [](const Attribute* a) { return a->permissionToChange(); });
  return allowed == 0 ? 0 : allowed == attributes.size() ? 1 : -1;
}

QString whyAnimatedCannot() {
  return PermissionListPane::tr(
      "It is animated: its key frames decide on air. Take them away to make it a field.");
}

}  // namespace

PermissionSummaryPane::PermissionSummaryPane(InspectorContext& context)
    : InspectorPane(context, {}) {
  header().setFixed(true);
  header().setNote(tr("May be changed in playout"));
  m_groups = {{Group::Move, addGroup(Group::Move, tr("Move"))},
              {Group::Resize, addGroup(Group::Resize, tr("Resize"))},
              {Group::Attributes, addGroup(Group::Attributes, tr("Attributes"))}};
}

PermissionRow* PermissionSummaryPane::addGroup(Group group, const QString& name) {
  auto* row = new PermissionRow;
  row->setName(name);
  column()->addWidget(row);
  connect(row, &PermissionRow::switched, this,
          [this, group](bool on) { permit(context(), attributesOf(group), on); });
  return row;
}

QList<Attribute*> PermissionSummaryPane::attributesOf(Group group) const {
  const QList<QuartzComponent*>& components = context().components();
  if (group == Group::Move)
    return context().attributesForKeys({QStringLiteral("originX"), QStringLiteral("originY")});
  if (group == Group::Resize)
    return context().attributesForKeys(
        {QStringLiteral("inputWidth"), QStringLiteral("inputHeight")});
  QList<Attribute*> others;
  for (const QuartzComponent* component : components) others += component->nonStandardAttributes();
  return others;
}

int PermissionSummaryPane::permission(Group group) const {
  std::optional<int> common;
  for (const QuartzComponent* component : context().components()) {
    const int one = group == Group::Move     ? component->permissionToMove()
                    : group == Group::Resize ? component->permissionToResize()
                                             : component->permissionToChangeAttributes();
    if (common.value_or(one) != one) return -1;
    common = one;
  }
  return common.value_or(0);
}

void PermissionSummaryPane::takeSelection() {
  const QList<QuartzComponent*>& components = context().components();
  header().setText(components.size() == 1 ? components.first()->title()
                                          : tr("%L1 components").arg(components.size()));
}

void PermissionSummaryPane::refresh() {
  takeSelection();
  for (const auto& [group, row] : std::as_const(m_groups)) {
    const bool animated = isAnimated(attributesOf(group));
    row->setPermission(permission(group));
    row->setObstacle(animated ? whyAnimatedCannot() : QString(), animated);
  }
}

PermissionListPane::PermissionListPane(InspectorContext& context)
    : InspectorPane(context, tr("Each attribute")) {
  auto* note = new widgets::TokenLabel(tr("Turning on animation takes the permission away."),
                                       widgets::TextStyle::Body, widgets::Token::Text3);
  note->setWordWrap(true);
  note->setContentsMargins(InspectorRow::margin, InspectorRow::gap, InspectorRow::margin, 0);
  m_note = note;
  column()->addWidget(note);
}

void PermissionListPane::letGo() {
  m_shown.clear();
  InspectorPane::letGo();
}

void PermissionListPane::takeSelection() {
  m_shown = attributesInOrder(context().attributesByKey());
  while (m_lines.size() < m_shown.size()) {
    auto* row = new PermissionRow;
    const qsizetype index = m_lines.size();
    connect(row, &PermissionRow::switched, this, [this, index](bool on) {
      if (index < m_shown.size()) permit(context(), m_shown[index].attributes, on);
    });
    m_lines.append(row);
    column()->insertWidget(column()->count() - 1, row);
  }
  for (qsizetype i = 0; i < m_lines.size(); ++i) m_lines[i]->setVisible(i < m_shown.size());
}

void PermissionListPane::refresh() {
  if (!header().isOpen()) return;
  for (qsizetype i = 0; i < m_shown.size(); ++i) showRow(*m_lines[i], m_shown[i]);
}

void PermissionListPane::showRow(PermissionRow& row, const ShownAttribute& shown) const {
  const bool animated = isAnimated(shown.attributes);
  const int permission = permissionOf(shown.attributes);
  row.setName(shown.first().key() == QLatin1String("visibleInCompositionEditor")
                  ? tr("Visible in editor")
                  : shown.rowLabel());
  row.setPermission(permission);
  // A field that older documents animated can still be taken back.
  row.setObstacle(animated && permission == 0 ? whyAnimatedCannot() : QString(), animated);
}

}  // namespace inspector
