#pragma once

#include <QWidget>

class QDockWidget;
class QHBoxLayout;

namespace app {

/// The head of a dock: glyph, title, what belongs to the panel, and a cross. The dock is dragged by
/// it.
class DockTitle : public QWidget {
  Q_OBJECT

 public:
  /// Becomes the dock's title bar; the dock owns it.
  DockTitle(QDockWidget& dock, const QString& glyph);

  /// Stands before the cross.
  void addControl(QWidget* control);
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QHBoxLayout* m_controls;
};

}  // namespace app
