#pragma once

#include "widgets/TYValueField.h"

namespace widgets {

/// A field for a number: takes arithmetic and units, shows at most so many decimals.
class TYNumberField : public TYValueField {
  Q_OBJECT
 public:
  explicit TYNumberField(QWidget* parent = nullptr);

  void setDecimals(int decimals);
  /// A further unit that may be typed, and how many of the field's own it is.
  void addUnit(const QString& unit, double factor) { m_units.insert(unit, factor); }

 protected:
  [[nodiscard]] QString textForValue(double value) const override;
  [[nodiscard]] foundation::Result<NumberExpression> parse(const QString& text) const override;

 private:
  int m_decimals = 3;
  QHash<QString, double> m_units;
};

}  // namespace widgets
