#include "app/PanelFolding.h"

#include <QDockWidget>
#include <QMainWindow>
#include <utility>

namespace app {

namespace {

const QStringList library{QStringLiteral("library")};
const QStringList inspectors{QStringLiteral("history"), QStringLiteral("inspector")};

}  // namespace

void PanelFolding::takeWidth(int width) {
  const bool isNarrow = width < widthForLibrary;
  const bool isVeryNarrow = width < widthForInspector;
  // Only at the limits: whoever shows a panel in a narrow window keeps it.
  if (std::exchange(m_isNarrow, isNarrow) != isNarrow) fold(library, isNarrow);
  if (std::exchange(m_isVeryNarrow, isVeryNarrow) != isVeryNarrow) fold(inspectors, isVeryNarrow);
}

void PanelFolding::fold(const QStringList& names, bool isNarrow) {
  for (const QString& name : names) {
    auto* dock = m_window.findChild<QDockWidget*>(name);
    if (!dock || dock->isFloating()) continue;
    if (isNarrow && !dock->isHidden()) {
      m_folded.append(name);
      dock->hide();
    } else if (!isNarrow && m_folded.removeOne(name)) {
      dock->show();
      if (name == inspectors.last()) dock->raise();
    }
  }
}

void PanelFolding::restore(const QStringList& folded) {
  m_folded = folded;
  const int width = m_window.width();
  m_isNarrow = m_isVeryNarrow = true;
  takeWidth(widthForLibrary);
  takeWidth(width);
}

}  // namespace app
