#pragma once

#include <QLineEdit>
#include <functional>

namespace timeline {

/// A line of text that is edited where it stands. Keeps the text with Return or when the keyboard
/// goes elsewhere, drops it with Escape; deletes itself then.
class InPlaceField : public QLineEdit {
  Q_OBJECT
 public:
  using Kept = std::function<void(const QString& text)>;
  /// The text is kept only when it is another one.
  InPlaceField(const QString& text, QWidget* parent, Kept kept);
  void keep();
  void drop();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void end();

  QString m_before;
  Kept m_kept;
  bool m_hasEnded = false;
};

}  // namespace timeline
