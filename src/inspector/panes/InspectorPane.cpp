#include "inspector/panes/InspectorPane.h"

#include <QVBoxLayout>

#include "inspector/InspectorContext.h"
#include "inspector/rows/InspectorRow.h"
#include "widgets/TYPaneHeader.h"

namespace inspector {

InspectorPane::InspectorPane(InspectorContext& context, const QString& title, QWidget* parent)
    : QWidget(parent),
      m_context(context),
      m_header(new widgets::TYPaneHeader(title)),
      m_content(new QWidget) {
  auto* outer = new QVBoxLayout(this);
  outer->setContentsMargins(0, 0, 0, 0);
  outer->setSpacing(0);
  outer->addWidget(m_header);
  outer->addWidget(m_content);
  m_column = new QVBoxLayout(m_content);
  m_column->setContentsMargins(0, 0, 0, InspectorRow::gap);
  m_column->setSpacing(0);
  m_header->setContent(m_content);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  connect(m_header, &QAbstractButton::toggled, this, [this](bool open) {
    if (open) refresh();
  });
}

void InspectorPane::appendRow(InspectorRow* row) {
  m_column->addWidget(row);
  m_rows.append(row);
}

void InspectorPane::letGo() {
  for (InspectorRow* row : std::as_const(m_rows)) row->bind(QList<Binding>());
}

void InspectorPane::refresh() {
  if (!m_header->isOpen()) return;
  for (InspectorRow* row : std::as_const(m_rows)) row->refresh();
}

}  // namespace inspector
