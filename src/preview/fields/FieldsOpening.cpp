#include "preview/fields/FieldsOpening.h"

#include <QKeyEvent>
#include <QScreen>

#include "foundation/UserDefaults.h"
#include "preview/FieldsPanel.h"

namespace preview {

namespace {
const QString openKey = QStringLiteral("showsPreviewFields");
constexpr Qt::WindowStates fixedStates = Qt::WindowMaximized | Qt::WindowFullScreen;
}  // namespace

FieldsOpening::FieldsOpening(QWidget& window, FieldsPanel& panel)
    : QObject(&window),
      m_window(window),
      m_panel(panel),
      m_isOpen(foundation::UserDefaults::standard().value(openKey).toBool()) {
  panel.setVisible(m_isOpen);
  m_grownBy = takenWidth();
  connect(&panel, &FieldsPanel::keyboardLeft, this, [this] { m_window.setFocus(); });
}

int FieldsOpening::takenWidth() const {
  return m_isOpen && !m_isSuspended ? FieldsPanel::panelWidth : 0;
}

void FieldsOpening::setOpen(bool open) {
  if (open == m_isOpen) return;
  m_isOpen = open;
  foundation::UserDefaults::standard().setValue(open, openKey);
  if (!m_isSuspended) {
    if (!open) m_window.setFocus();
    m_panel.setVisible(open);
    open ? grow() : shrink();
  }
  Q_EMIT changed(open);
}

void FieldsOpening::grow() {
  m_grownBy = 0;
  if (m_window.windowState() & fixedStates) return;
  const QRect area = m_window.screen()->availableGeometry();
  const QMargins frame(m_window.geometry().left() - m_window.frameGeometry().left(), 0,
                       m_window.frameGeometry().right() - m_window.geometry().right(), 0);
  const QRect room = area.marginsRemoved(frame);
  const QRect before = m_window.geometry();
  const int width =
      std::max(before.width(), std::min(before.width() + FieldsPanel::panelWidth, room.width()));
  m_grownBy = width - before.width();
  const int beyond = std::max(before.left() + width - 1 - room.right(), 0);
  const int left = std::max(before.left() - beyond, std::min(room.left(), before.left()));
  if (left != before.left()) m_window.move(m_window.pos() + QPoint(left - before.left(), 0));
  m_window.resize(width, before.height());
}

void FieldsOpening::shrink() {
  if (m_window.windowState() & fixedStates) return;
  m_window.resize(m_window.width() - m_grownBy, m_window.height());
  m_grownBy = 0;
}

void FieldsOpening::setSuspended(bool suspended) {
  if (m_isSuspended == suspended) return;
  m_isSuspended = suspended;
  if (suspended) m_window.setFocus();
  m_panel.setVisible(m_isOpen && !suspended);
}

bool FieldsOpening::takeKey(const QKeyEvent& event) {
  if (event.matches(QKeySequence::Find)) {
    setOpen(!m_isOpen);
    if (m_isOpen) m_panel.focusFields();
    return true;
  }
  if (event.key() != Qt::Key_F6 || takenWidth() == 0) return false;
  m_panel.focusFields();
  return true;
}

}  // namespace preview
