#pragma once

#include "inspector/rows/InspectorRow.h"

class QLineEdit;

namespace inspector {

/// A font by name and size. One that is not installed is marked and can be replaced.
class FontRow : public InspectorRow {
  Q_OBJECT

 public:
  FontRow(InspectorContext& context, const QString& label);
  void showFontPanel();

 protected:
  void showValues() override;
  void nameControls(const QString& name) override;
  void dropEntries() override;

 private:
  void changeFont(const model::FontValue& font);
  void takeText();

  QLineEdit* m_field;
};

}  // namespace inspector
