#pragma once

#include "inspector/rows/InspectorRow.h"

class QTextEdit;

namespace inspector {

class TypingEdit;

/// A styled text of three lines, kept as RTF. It is shown at the size of the interface; the sizes
/// of the text are kept.
class RichTextRow : public InspectorRow {
  Q_OBJECT

 public:
  RichTextRow(InspectorContext& context, const QString& label);

 protected:
  void showValues() override;
  void nameControls(const QString& name) override;
  void dropEntries() override;

 private:
  void show(const QString& rtf);
  void write();

  QTextEdit* m_view;
  TypingEdit* m_typing;
  QString m_shown;  ///< the RTF in the view
  bool m_isShowing = false;
};

}  // namespace inspector
