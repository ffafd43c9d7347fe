#pragma once

#include <QStringList>

class QDockWidget;
class QMainWindow;

namespace app {

/// Panels that make room for the canvas where a window is narrow: first the library, then the
/// inspector and the history. They come back when the window is wide again.
class PanelFolding {
 public:
  static constexpr int widthForLibrary = 1180;
  static constexpr int widthForInspector = 880;

  explicit PanelFolding(QMainWindow& window) : m_window(window) {}

  void takeWidth(int width);
  /// Names of what is folded away now, which is not what its user has hidden.
  [[nodiscard]] const QStringList& folded() const { return m_folded; }
  /// Shows what was folded away when a layout was kept, and folds again what has no room.
  void restore(const QStringList& folded);

 private:
  void fold(const QStringList& names, bool isNarrow);

  QMainWindow& m_window;
  QStringList m_folded;
  bool m_isNarrow = false;
  bool m_isVeryNarrow = false;
};

}  // namespace app
