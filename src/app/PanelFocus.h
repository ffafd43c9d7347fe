#pragma once

#include <QList>
#include <QPointer>
#include <QWidget>

namespace app {

/// Moves the keyboard from one part of a window to the next, each time to where it was in there.
class PanelFocus : public QObject {
  Q_OBJECT

 public:
  explicit PanelFocus(QObject* parent = nullptr);

  /// In the order in which the keyboard goes round.
  void addPanel(QWidget* panel) { m_panels.append(Panel{panel, {}}); }
  /// Parts that are hidden, or have nothing for the keyboard, are left out.
  void step(int direction);

 private:
  struct Panel {
    QWidget* widget;
    QPointer<QWidget> last;  ///< what had the focus in it
  };
  void note(QWidget* focused);
  [[nodiscard]] qsizetype indexOf(const QWidget* focused) const;

  QList<Panel> m_panels;
};

}  // namespace app
