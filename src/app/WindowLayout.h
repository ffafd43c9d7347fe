#pragma once

#include "app/PanelFolding.h"
#include "foundation/UserDefaults.h"

namespace app {

/// Where a document window and its panels stand: as on the screen for the first one, as the last
/// closed one had them for all later ones.
class WindowLayout {
 public:
  /// The window must have its docks when it is restored.
  explicit WindowLayout(QMainWindow& window) : m_window(window), m_folding(window) {}

  void restore(const foundation::UserDefaults& defaults);
  void save(foundation::UserDefaults& defaults) const;
  /// To be called when the window has another width.
  void takeWidth(int width) { m_folding.takeWidth(width); }

 private:
  /// Sizes for a screen, before anyone chose others.
  void setStandardSizes(const QSize& screenSize);

  QMainWindow& m_window;
  PanelFolding m_folding;
};

}  // namespace app
