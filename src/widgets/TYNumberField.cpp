#include "widgets/TYNumberField.h"

namespace widgets {

TYNumberField::TYNumberField(QWidget* parent) : TYValueField(parent) {
  showValue();
}

void TYNumberField::setDecimals(int decimals) {
  m_decimals = decimals;
  showValue();
}

QString TYNumberField::textForValue(double value) const {
  QString text = locale().toString(value, 'f', m_decimals);
  const QString point = locale().decimalPoint();
  if (m_decimals > 0 && text.contains(point)) {
    while (text.endsWith(locale().zeroDigit())) text.chop(1);
    if (text.endsWith(point)) text.chop(point.size());
  }
  return text == QLatin1String("-0") ? QStringLiteral("0") : text;
}

foundation::Result<NumberExpression> TYNumberField::parse(const QString& text) const {
  NumberExpression::Rules rules{locale(), m_units};
  if (!unit().isEmpty()) rules.units.insert(unit(), 1);
  return NumberExpression::parse(text, rules);
}

}  // namespace widgets
