#pragma once

#include "inspector/rows/InspectorRow.h"

class QLineEdit;

namespace inspector {

class TypingEdit;

/// A text in a field that writes at every change, with a button that opens it in a panel. What is
/// too long for a field can only be edited there.
class TextRow : public InspectorRow {
  Q_OBJECT

 public:
  static constexpr int longestInField = 5000;

  enum class Panel { Without, With };
  TextRow(InspectorContext& context, const QString& label, Panel panel = Panel::With);

  void openPanel();

 protected:
  void showValues() override;
  void nameControls(const QString& name) override;
  void dropEntries() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void write(const QString& text);
  void revert();

  QLineEdit* m_field;
  TypingEdit* m_typing;
  QString m_before;  ///< when typing began
  bool m_wasMixed = false;
};

}  // namespace inspector
