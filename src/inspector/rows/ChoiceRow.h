#pragma once

#include "inspector/rows/InspectorRow.h"

class QComboBox;

namespace widgets {
class TYSegmentedControl;
}

namespace inspector {

/// An index with a menu, as a pop-up button.
class ChoiceRow : public InspectorRow {
  Q_OBJECT

 public:
  ChoiceRow(InspectorContext& context, const QString& label, const QStringList& choices = {});
  void setChoices(const QStringList& choices);

 protected:
  void showValues() override;
  void nameControls(const QString& name) override;

 private:
  QComboBox* m_box;
};

/// An index with few choices, as joined buttons.
class SegmentsRow : public InspectorRow {
  Q_OBJECT

 public:
  SegmentsRow(InspectorContext& context, const QString& label, const QStringList& titles);
  /// With the glyph "Text" + name for each of textJustificationNames().
  [[nodiscard]] static SegmentsRow* forJustification(InspectorContext& context,
                                                     const QString& label);
  [[nodiscard]] static const QStringList& textJustificationNames();

 protected:
  void showValues() override;
  void nameControls(const QString& name) override;

 private:
  widgets::TYSegmentedControl* m_segments;
};

}  // namespace inspector
