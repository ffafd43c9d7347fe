#pragma once

#include "inspector/rows/InspectorRow.h"

namespace widgets {
class TYColorWell;
}

namespace inspector {

/// A colour. What happens while its panel is open is one step.
class ColorRow : public InspectorRow {
  Q_OBJECT

 public:
  ColorRow(InspectorContext& context, const QString& label);

 protected:
  void showValues() override;
  void nameControls(const QString& name) override;

 private:
  [[nodiscard]] QList<QColor> colorsOfDocument() const;

  widgets::TYColorWell* m_well;
};

}  // namespace inspector
