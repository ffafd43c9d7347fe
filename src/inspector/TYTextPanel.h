#pragma once

#include "inspector/Binding.h"
#include "widgets/TYSheet.h"

class QLabel;
class QPlainTextEdit;

namespace inspector {

class InspectorContext;

/// A sheet with a text that is written at every change, so that the canvas shows it while it is
/// typed. Ok keeps it as one undo step, Cancel brings back what was there.
class TYTextPanel : public widgets::TYSheet {
  Q_OBJECT

 public:
  static constexpr int longest = 100000;

  /// Opens one over the widget's window.
  static TYTextPanel* edit(QWidget& beside, InspectorContext& context, const Binding& binding,
                           const QString& title);

  [[nodiscard]] QString stringValue() const;
  void setStringValue(const QString& text);

 protected:
  void cancelled() override { finish(false); }

 private:
  TYTextPanel(QWidget& beside, InspectorContext& context, const Binding& binding,
              const QString& title);
  void textPanelDidChange();
  void finish(bool keep);
  void showCount();

  InspectorContext& m_context;
  Binding m_binding;
  QPlainTextEdit* m_text;
  QLabel* m_note;
  QLabel* m_count;
  QString m_last;
  bool m_changed = false;
};

}  // namespace inspector
