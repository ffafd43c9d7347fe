#pragma once

#include <QObject>
#include <QPointer>

class QFocusFrame;
class QWidget;

namespace widgets {

/// Shows the ring around the button, slider or other control that the keyboard moved the focus to.
/// Fields draw their own focus and are left out; a control that was clicked gets no ring.
class TYFocusRing : public QObject {
  Q_OBJECT
 public:
  TYFocusRing();
  ~TYFocusRing() override;

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void show(QWidget* widget);
  void hide();

  QPointer<QFocusFrame> m_frame;
};

}  // namespace widgets
