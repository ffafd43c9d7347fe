#include "preview/fields/FieldList.h"

#include <QApplication>
#include <QScrollBar>
#include <QVBoxLayout>

#include "preview/fields/FieldGroups.h"
#include "preview/fields/FieldRow.h"
#include "preview/fields/FieldsModel.h"
#include "widgets/TYEmptyPanel.h"
#include "widgets/TYPaneHeader.h"

namespace preview {

FieldList::FieldList(FieldsModel& model, QWidget* parent) : QScrollArea(parent), m_model(model) {
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFocusPolicy(Qt::NoFocus);
  connect(&model, &FieldsModel::fieldsChanged, this, [this] {
    m_needsBuild = true;
    if (isVisible()) build();
  });
  connect(&model, &FieldsModel::valueChanged, this, &FieldList::refresh);
  connect(&model, &FieldsModel::filled, this, &FieldList::dropEntries);
}

void FieldList::showEvent(QShowEvent* event) {
  QScrollArea::showEvent(event);
  if (m_needsBuild) build();
  if (!std::exchange(m_needsRefresh, false)) return;
  for (FieldRow* row : std::as_const(m_rows)) row->refresh();
}

void FieldList::setIdle(bool isIdle) {
  if (std::exchange(m_isIdle, isIdle) == isIdle) return;
  m_needsBuild = true;
  if (isVisible()) build();
}

void FieldList::build() {
  m_needsBuild = m_needsRefresh = false;
  const QString focused = isAncestorOf(QApplication::focusWidget())
                              ? QApplication::focusWidget()->objectName()
                              : QString();
  const int scrolled = verticalScrollBar()->value();
  m_groups.clear();
  m_rows.clear();
  auto* content = new QWidget;
  auto* column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  for (const FieldGroup& group : FieldGroups::of(m_model.fields())) {
    addGroup(group.title, *column, m_groups.isEmpty());
    Group& shown = m_groups.last();
    for (const FieldGroup::Member& member : group.members) {
      auto* row = new FieldRow(m_model, member.key, member.title);
      connect(row, &FieldRow::left, this, &FieldList::left);
      shown.content->layout()->addWidget(row);
      shown.rows.append(row);
      m_rows.insert(member.key, row);
    }
    shown.header->setNote(QString::number(shown.rows.size()));
  }
  if (m_groups.isEmpty())
    column->addWidget(
        m_isIdle ? new widgets::TYEmptyPanel({}, tr("Nothing to Play"),
                                             tr("The fields of a graphic are here while it plays."))
                 : new widgets::TYEmptyPanel(
                       {}, tr("No Fields"),
                       tr("Allow changes in playout in the inspector's Permissions.")));
  column->addStretch();
  setWidget(content);
  filter(m_filter);
  content->adjustSize();
  verticalScrollBar()->setValue(scrolled);
  if (FieldRow* row = m_rows.value(focused))
    row->editor().control().setFocus();
  else if (!focused.isEmpty())
    Q_EMIT left();
}

void FieldList::addGroup(const QString& title, QVBoxLayout& column, bool isFirst) {
  Group group{title, new widgets::TYPaneHeader(title), new QWidget, {}};
  auto* rows = new QVBoxLayout(group.content);
  rows->setContentsMargins(0, 0, 0, FieldRow::gap);
  rows->setSpacing(0);
  // Tab goes from field to field.
  group.header->setFocusPolicy(Qt::NoFocus);
  group.header->setRuled(!isFirst);
  group.header->setContent(group.content);
  group.header->setOpen(!m_closed.contains(title));
  connect(group.header, &QAbstractButton::clicked, this, [this, title](bool open) {
    if (open)
      m_closed.remove(title);
    else
      m_closed.insert(title);
  });
  column.addWidget(group.header);
  column.addWidget(group.content);
  m_groups.append(group);
}

void FieldList::refresh(const QString& key) {
  if (m_needsBuild) return;
  if (!isVisible())
    m_needsRefresh = true;
  else if (FieldRow* row = m_rows.value(key))
    row->refresh();
}

void FieldList::dropEntries() {
  if (m_needsBuild) return;
  for (FieldRow* row : std::as_const(m_rows)) row->dropEntry();
}

void FieldList::filter(const QString& text) {
  m_filter = text;
  for (const Group& group : std::as_const(m_groups)) {
    int shown = 0;
    for (FieldRow* row : group.rows) {
      const bool isShown =
          text.isEmpty() || row->matches(text) || group.title.contains(text, Qt::CaseInsensitive);
      row->setVisible(isShown);
      shown += isShown ? 1 : 0;
    }
    group.header->setVisible(shown > 0);
    // What is searched for is shown whether its group is open or not.
    group.header->setOpen(text.isEmpty() ? !m_closed.contains(group.title) : true);
    group.content->setVisible(shown > 0 && group.header->isOpen());
  }
}

void FieldList::commitEntry() {
  for (QWidget* at = QApplication::focusWidget(); at; at = at->parentWidget())
    if (auto* editor = qobject_cast<FieldEditor*>(at)) return editor->commitEntry();
}

void FieldList::focusFirst() {
  for (const Group& group : std::as_const(m_groups))
    for (FieldRow* row : group.rows) {
      if (row->isHidden() || !group.header->isOpen()) continue;
      row->editor().control().setFocus(Qt::TabFocusReason);
      return ensureWidgetVisible(row);
    }
}

}  // namespace preview
