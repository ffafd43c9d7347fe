#pragma once

#include "preview/fields/FieldEditor.h"

class QLineEdit;

namespace preview {

class LinesEdit;

/// A text, or a structure written as JSON: a line where it has one, several where it has more.
/// Return takes it over, Shift+Return begins a new line.
class TextEditor : public FieldEditor {
  Q_OBJECT

 public:
  explicit TextEditor(const runtime::PortAttributes& port, QWidget* parent = nullptr);

  void showValue(const Field& field) override;
  [[nodiscard]] QWidget& control() const override;
  void commitEntry() override;
  void dropEntry() override;
  [[nodiscard]] bool hasEntry() const override;
  void entryTaken(const Field& field) override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] QString text() const;
  void showText(const QString& text);
  void useLines();
  void breakLine();
  void paste();

  QLineEdit* m_line = nullptr;
  LinesEdit* m_lines = nullptr;  ///< in its place, once there were several lines
  QString m_value;
};

}  // namespace preview
