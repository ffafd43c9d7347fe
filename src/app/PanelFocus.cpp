#include "app/PanelFocus.h"

#include <QApplication>

namespace app {

namespace {

bool takesKeyboard(const QWidget& widget) {
  return (widget.focusPolicy() & Qt::TabFocus) && widget.isEnabled() && widget.isVisible() &&
         !widget.visibleRegion().isEmpty();
}

QWidget* firstIn(QWidget& panel) {
  if (QWidget* chosen = panel.focusProxy(); chosen && takesKeyboard(*chosen)) return chosen;
  if (takesKeyboard(panel)) return &panel;
  for (QWidget* next = panel.nextInFocusChain(); next != &panel; next = next->nextInFocusChain())
    if (panel.isAncestorOf(next) && takesKeyboard(*next)) return next;
  return nullptr;
}

}  // namespace

PanelFocus::PanelFocus(QObject* parent) : QObject(parent) {
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { note(now); });
}

qsizetype PanelFocus::indexOf(const QWidget* focused) const {
  for (qsizetype i = 0; focused && i < m_panels.size(); ++i)
    if (m_panels.at(i).widget == focused || m_panels.at(i).widget->isAncestorOf(focused)) return i;
  return -1;
}

void PanelFocus::note(QWidget* focused) {
  if (const qsizetype index = indexOf(focused); index >= 0) m_panels[index].last = focused;
}

void PanelFocus::step(int direction) {
  const qsizetype count = m_panels.size();
  const qsizetype from = indexOf(QApplication::focusWidget());
  // From nowhere, forwards begins at the first and backwards at the last.
  qsizetype index = from < 0 && direction < 0 ? 0 : from;
  for (qsizetype tried = 0; tried < count; ++tried) {
    index = (index + direction + count) % count;
    const Panel& panel = m_panels.at(index);
    QWidget* to = panel.last;
    if (!to || !takesKeyboard(*to)) to = firstIn(*panel.widget);
    if (!to) continue;
    to->setFocus(direction > 0 ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return;
  }
}

}  // namespace app
