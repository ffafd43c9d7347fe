#pragma once

#include <QJsonValue>
#include <QWidget>

#include "preview/fields/Field.h"

class QHBoxLayout;

namespace preview {

/// The control of one field. Tells what was entered and shows what it is told; whether a value is
/// taken is decided elsewhere.
class FieldEditor : public QWidget {
  Q_OBJECT

 public:
  explicit FieldEditor(QWidget* parent = nullptr);

  /// The control for the kind of value.
  [[nodiscard]] static FieldEditor* forField(const Field& field);

  /// An entry that is going on stays.
  virtual void showValue(const Field& field) = 0;
  /// Where the keyboard goes.
  [[nodiscard]] virtual QWidget& control() const = 0;
  /// Takes over what was typed.
  virtual void commitEntry() {}
  /// What was typed goes; the value shows again.
  virtual void dropEntry() {}
  /// Whether something was typed that is not taken over.
  [[nodiscard]] virtual bool hasEntry() const { return false; }
  /// What was entered is the field's value now, in whatever form.
  virtual void entryTaken(const Field& field) { showValue(field); }
  /// A rose edge around what is not accepted.
  void setInvalid(bool invalid);

 Q_SIGNALS:
  /// Something began that cancelled() takes back as a whole.
  void began();
  void entered(const QJsonValue& json);
  void enteredText(const QString& text);
  void cancelled();
  /// What the control itself does not understand; empty: all is well again.
  void refused(const QString& complaint);
  /// The keyboard has done its work here.
  void left();
  /// To the file's default.
  void resetRequested();

 protected:
  [[nodiscard]] QHBoxLayout& line() const { return *m_line; }
  /// To be told the control: Return takes over what was typed in it, Esc drops it, Alt+Backspace
  /// resets the field.
  void watch(QWidget& control) { control.installEventFilter(this); }
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QHBoxLayout* m_line;
};

}  // namespace preview
