#pragma once

#include <QObject>
#include <QRect>
#include <QTimer>
#include <QWidget>

class QScreen;

namespace preview {

/// A window on the whole of a screen, and back to where it was: on demand, when the window manager
/// ends it, and when the screen is gone.
class FullScreen : public QObject {
  Q_OBJECT

 public:
  explicit FullScreen(QWidget& window);

  [[nodiscard]] bool isOn() const { return m_screen != nullptr; }
  /// On another screen when it is on already.
  void enter(QScreen& screen);
  void leave();

 Q_SIGNALS:
  /// Before the window gets its size.
  void changed(bool isOn);
  /// It was left for that.
  void screenIsGone();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void screenWasRemoved(const QScreen* screen);
  void checkState();

  QWidget& m_window;
  QScreen* m_screen = nullptr;
  QRect m_windowedGeometry;
  QTimer m_check;
};

}  // namespace preview
