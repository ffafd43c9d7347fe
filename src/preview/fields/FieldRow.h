#pragma once

#include <QWidget>

#include "preview/fields/FieldEditor.h"

class QLabel;
class QToolButton;
class QVBoxLayout;

namespace preview {

class ElidedNote;
class FieldsModel;

/// One field: its label, its control, a way back to the default where it differs; below, what it
/// takes or what is wrong with what was entered.
class FieldRow : public QWidget {
  Q_OBJECT

 public:
  static constexpr int labelWidth = 84;
  static constexpr int margin = 12;
  static constexpr int gap = 8;

  /// The model outlives the row, and has the field now; without it the row does nothing more.
  FieldRow(FieldsModel& model, const QString& key, const QString& title, QWidget* parent = nullptr);

  [[nodiscard]] const QString& key() const { return m_key; }
  [[nodiscard]] FieldEditor& editor() const { return *m_editor; }
  /// Shows what the model has.
  void refresh();
  /// What was typed and not taken over goes.
  void dropEntry();
  /// What is wrong; empty when nothing is.
  [[nodiscard]] const QString& complaint() const { return m_complaint; }
  /// Whether label, key or value contain the text.
  [[nodiscard]] bool matches(const QString& text) const;

 Q_SIGNALS:
  /// The keyboard has done its work here.
  void left();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void addControls(QVBoxLayout& column, const QString& title);
  void observeEditor();
  void tell(const tl::expected<void, QString>& result);
  void setComplaint(const QString& complaint);
  void showNote();
  void reset();

  FieldsModel& m_model;
  QString m_key;
  FieldEditor* m_editor;
  QToolButton* m_reset;
  ElidedNote* m_note;
  QLabel* m_wrong = nullptr;
  QString m_complaint;
  std::optional<FieldValue> m_before;  ///< while something goes on that can be cancelled
  bool m_isPending = false;
};

}  // namespace preview
