#pragma once

#include <QObject>
#include <functional>

namespace app {

/// Tells when the first window of the program is on the screen: painted, nothing left to do for
/// it, and all of it received by the display.
class FirstFrame : public QObject {
 public:
  /// `shown` is called once. To be made before the window is shown.
  explicit FirstFrame(std::function<void()> shown);

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  std::function<void()> m_shown;
  bool m_painted = false;
};

}  // namespace app
