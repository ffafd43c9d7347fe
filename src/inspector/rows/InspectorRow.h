#pragma once

#include <QLabel>
#include <QWidget>

#include "inspector/Binding.h"
#include "store/Observation.h"

class QHBoxLayout;
class QVBoxLayout;

namespace widgets {
class TYValueField;
}

namespace inspector {

class InspectorContext;
class KeyFrameControl;

/// One labelled row of a pane: label, controls, key frames; below them what is wrong, if anything.
/// Rows are bound anew when the selection changes and show their values when told to.
class InspectorRow : public QWidget {
  Q_OBJECT

 public:
  static constexpr int labelWidth = 84;
  static constexpr int margin = 12;
  static constexpr int gap = 8;

  InspectorRow(InspectorContext& context, const QString& label, QWidget* parent = nullptr);
  ~InspectorRow() override;

  [[nodiscard]] QString label() const;
  void setLabel(const QString& label);
  /// What it edits from now on.
  virtual void bind(const QList<Binding>& bindings);
  void bind(const Binding& binding) { bind(QList<Binding>{binding}); }
  /// Whose key frames it has, and whose values its menu copies. Call after bind().
  void setAttributes(const QList<model::Attribute*>& attributes);
  /// Shows the current values.
  void refresh();
  [[nodiscard]] KeyFrameControl& keyFrames() const { return *m_keyFrames; }
  /// Says what is wrong, below the controls; an empty one takes that away. The button does what the
  /// complaint offers.
  void setComplaint(const QString& complaint, const QString& button = {},
                    const std::function<void()>& mend = {});
  [[nodiscard]] QString complaint() const;
  /// From left to right; a stretch of 0 keeps the control at its own size.
  void addControl(QWidget* control, int stretch);

 protected:
  [[nodiscard]] InspectorContext& context() const { return m_context; }
  [[nodiscard]] const QList<Binding>& bindings() const { return m_bindings; }
  [[nodiscard]] const Binding& binding() const { return m_bindings.first(); }
  [[nodiscard]] const QList<model::Attribute*>& attributes() const { return m_attributes; }
  [[nodiscard]] bool isBound() const;
  void addStretch();
  /// Dragging the label changes the field.
  void setScrubField(widgets::TYValueField* field);
  virtual void showValues() = 0;
  /// The label, or a control, now has another name for those who hear the window.
  virtual void nameControls(const QString& name) = 0;
  /// What was typed and not taken over belongs to what was bound before.
  virtual void dropEntries() {}

  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void watchFirst();

  InspectorContext& m_context;
  QList<Binding> m_bindings;
  QList<model::Attribute*> m_attributes;
  QLabel* m_label;
  QVBoxLayout* m_column;
  QHBoxLayout* m_line;
  QHBoxLayout* m_controls;
  KeyFrameControl* m_keyFrames;
  QWidget* m_complaintLine = nullptr;
  std::vector<store::Subscription> m_watched;
};

}  // namespace inspector
