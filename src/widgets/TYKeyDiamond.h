#pragma once

#include <QAbstractButton>

namespace widgets {

/// Whether an attribute is animated, as a small diamond: hollow when it stands still, grey when it
/// is animated, amber when it has a key frame at the current time. Clicking asks for a change.
class TYKeyDiamond : public QAbstractButton {
  Q_OBJECT
 public:
  enum class State { Still, Animated, KeyHere };

  explicit TYKeyDiamond(QWidget* parent = nullptr);

  [[nodiscard]] State state() const { return m_state; }
  void setState(State state);
  [[nodiscard]] QSize sizeHint() const override { return {16, 16}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  State m_state = State::Animated;
};

}  // namespace widgets
