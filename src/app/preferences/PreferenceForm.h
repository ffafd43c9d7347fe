#pragma once

#include <QWidget>

class QFormLayout;

namespace app {

/// A page of settings: labels right-aligned in one column, controls beside them.
class PreferenceForm : public QWidget {
  Q_OBJECT

 public:
  explicit PreferenceForm(const QString& name);

 protected:
  /// The controls stand in a row; the label is their buddy by name.
  void addRow(const QString& label, std::initializer_list<QWidget*> controls);
  /// A line below the last row, in small print.
  void addNote(const QString& text);

 private:
  QFormLayout* m_form;
};

}  // namespace app
