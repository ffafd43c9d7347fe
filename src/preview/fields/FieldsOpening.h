#pragma once

#include <QObject>

class QKeyEvent;
class QWidget;

namespace preview {

class FieldsPanel;

/// Opens and closes the panel beside the picture. The window grows by as much as the screen has
/// room for, and shrinks by as much again, so that the picture keeps its size where it can.
class FieldsOpening : public QObject {
  Q_OBJECT

 public:
  /// As it was left by the player before. Window and panel outlive it.
  FieldsOpening(QWidget& window, FieldsPanel& panel);

  [[nodiscard]] bool isOpen() const { return m_isOpen; }
  void setOpen(bool open);
  /// What the picture has to do without, in the width of the window.
  [[nodiscard]] int takenWidth() const;
  /// The picture alone, as in full screen; the panel comes back afterwards.
  void setSuspended(bool suspended);
  /// Whether it was a key that opens or closes the panel, or takes the keyboard there.
  bool takeKey(const QKeyEvent& event);

 Q_SIGNALS:
  void changed(bool open);

 private:
  void grow();
  void shrink();

  QWidget& m_window;
  FieldsPanel& m_panel;
  bool m_isOpen = false;
  bool m_isSuspended = false;
  int m_grownBy = 0;
};

}  // namespace preview
