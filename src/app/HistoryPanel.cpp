#include "app/HistoryPanel.h"

#include "widgets/TYStyleKit.h"

namespace app {

HistoryPanel::HistoryPanel(QWidget* parent) : QListWidget(parent) {
  setAccessibleName(tr("History"));
  setFrameShape(QFrame::NoFrame);
  setUniformItemSizes(true);
  connect(this, &QListWidget::currentRowChanged, this, [this](int row) {
    if (!m_showing && row >= 0) goTo(row);
  });
}

void HistoryPanel::setContext(store::ObjectContext* context) {
  disconnect(m_connection);
  m_context = context;
  if (context)
    m_connection =
        connect(&context->history(), &QUndoStack::indexChanged, this, [this] { showSteps(); });
  showSteps();
}

void HistoryPanel::showSteps() {
  m_showing = true;
  clear();
  if (m_context) {
    const QUndoStack& history = m_context->history();
    addItem(tr("Opened"));
    for (int i = 0; i < history.count(); ++i) {
      const QString name = history.text(i);
      addItem(name.isEmpty() ? tr("Change") : name);
      if (i >= history.index())
        item(i + 1)->setForeground(widgets::TYStyleKit::colour(widgets::Token::TextDisabled));
    }
    setCurrentRow(history.index());
  }
  m_showing = false;
}

void HistoryPanel::goTo(int index) {
  if (!m_context) return;
  m_showing = true;
  while (m_context->history().index() > index && m_context->canUndo()) m_context->undo();
  while (m_context->history().index() < index && m_context->canRedo()) m_context->redo();
  m_showing = false;
  // Not from within the list's own signal.
  QMetaObject::invokeMethod(this, &HistoryPanel::showSteps, Qt::QueuedConnection);
}

}  // namespace app
