#include "inspector/InspectorPage.h"

#include <QVBoxLayout>

#include "inspector/InspectorContext.h"
#include "inspector/panes/InspectorPane.h"
#include "inspector/rows/InspectorRow.h"
#include "widgets/TYPaneHeader.h"

namespace inspector {

namespace {

/// The widgets inside that Tab stops at, in the order in which they lie on the screen: down, and
/// from left to right.
void appendStops(const QWidget& parent, QList<QWidget*>& stops) {
  const QLayout* layout = parent.layout();
  const std::function<void(const QLayout&)> walk = [&](const QLayout& inside) {
    for (int i = 0; i < inside.count(); ++i) {
      QLayoutItem* item = inside.itemAt(i);
      if (item->layout()) walk(*item->layout());
      QWidget* widget = item->widget();
      if (!widget) continue;
      if (widget->focusPolicy() & Qt::TabFocus)
        stops.append(widget);
      else
        appendStops(*widget, stops);
    }
  };
  if (layout)
    walk(*layout);
  else
    for (QWidget* child : parent.findChildren<QWidget*>())
      if (child->focusPolicy() & Qt::TabFocus) stops.append(child);
}

}  // namespace

InspectorPage::InspectorPage(InspectorContext& context, QWidget* parent)
    : QScrollArea(parent), m_context(context) {
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFocusPolicy(Qt::NoFocus);
  auto* content = new QWidget;
  m_column = new QVBoxLayout(content);
  m_column->setContentsMargins(0, 0, 0, 0);
  m_column->setSpacing(0);
  m_column->addStretch();
  setWidget(content);
  connect(&context, &InspectorContext::objectsLeft, this, [this] {
    for (InspectorPane* pane : std::as_const(m_panes)) pane->letGo();
    m_selectionIsDue = true;
  });
  connect(&context, &InspectorContext::selectionChanged, this, [this] {
    m_selectionIsDue = true;
    if (isVisible()) takeSelection();
  });
  connect(&context, &InspectorContext::valuesChanged, this, [this] {
    if (isVisible()) refresh();
  });
}

void InspectorPage::addPane(InspectorPane* pane) {
  pane->header().setRuled(!m_panes.isEmpty());
  m_column->insertWidget(m_column->count() - 1, pane);
  m_panes.append(pane);
}

void InspectorPage::takeSelection() {
  m_selectionIsDue = false;
  for (InspectorPane* pane : std::as_const(m_panes)) pane->takeSelection();
  orderTabs();
}

void InspectorPage::refresh() {
  for (InspectorPane* pane : std::as_const(m_panes))
    if (!pane->isHidden()) pane->refresh();
}

void InspectorPage::showEvent(QShowEvent* event) {
  QScrollArea::showEvent(event);
  if (m_selectionIsDue) takeSelection();
  refresh();
}

void InspectorPage::orderTabs() {
  QList<QWidget*> stops;
  appendStops(*widget(), stops);
  for (qsizetype i = 1; i < stops.size(); ++i) setTabOrder(stops[i - 1], stops[i]);
}

}  // namespace inspector
