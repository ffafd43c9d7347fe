#pragma once

#include <QObject>
#include <QTimer>

class QKeyEvent;

namespace preview {

/// A key that is held until it stays up. A held key comes as many releases and presses from some
/// window systems, and not all of these pairs are marked as repetitions. So going up is told a
/// moment late: only when the key did not go down again meanwhile.
class HeldKey : public QObject {
  Q_OBJECT

 public:
  /// Between a release and a press that belong to one repetition; nobody is as fast.
  static constexpr std::chrono::milliseconds longestGap{24};

  explicit HeldKey(QObject* parent = nullptr);

  /// Whether the key went down with this, and was not held already.
  [[nodiscard]] bool press(const QKeyEvent& event);
  void release(const QKeyEvent& event);
  /// Takes it to be up at once, for instance because the keyboard went to another window.
  void letGo();

 Q_SIGNALS:
  void released();

 private:
  void wait();
  [[nodiscard]] bool isRepetition(const QKeyEvent& press) const;

  QTimer m_timer;
  int m_waited = 0;         ///< times that the timer has run since the release
  quint64 m_releaseTime{};  ///< milliseconds, of the release that is waited with
  bool m_isDown = false;
};

}  // namespace preview
