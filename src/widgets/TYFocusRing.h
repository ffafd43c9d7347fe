#pragma once

#include <QObject>
#include <QPointer>

class QFocusFrame;
class QWidget;

namespace widgets {

/// Feedback for those who work with the keyboard. Shows the ring around the button, slider or other
/// control that the keyboard moved the focus to. Fields draw their own focus and are left out; a
/// control that was clicked gets no ring.
class TYFocusRing : public QObject {
  Q_OBJECT
 public:
  TYFocusRing();
  ~TYFocusRing() override;

  /// While Alt is held; otherwise menus show no underlined letters.
  [[nodiscard]] bool showsMnemonics() const { return m_mnemonics; }
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void show(QWidget* widget);
  void hide();
  void showMnemonics(bool shown);

  QPointer<QFocusFrame> m_frame;
  bool m_mnemonics = false;
};

}  // namespace widgets
