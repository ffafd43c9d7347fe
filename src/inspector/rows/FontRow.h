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
  void openPanel(const std::function<void(const model::FontValue&)>& changeFont);
  void changeFont(const model::FontValue& font);
  void replaceEverywhere(const QString& missing);
  /// All that is chosen while the panel is open is one step.
  void takeBackLastChoice();
  void takeText();

  QLineEdit* m_field;
  int m_stepOfPanel = -1;  ///< where the history stood after the last choice
};

}  // namespace inspector
