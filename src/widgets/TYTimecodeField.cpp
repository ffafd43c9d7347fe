#include "widgets/TYTimecodeField.h"

#include <QPainter>
#include <QStyleOptionFrame>

#include "widgets/TYStyleKit.h"
#include "widgets/TabularText.h"

namespace widgets {

TYTimecodeField::TYTimecodeField(QWidget* parent) : TYValueField(parent) {
  showValue();
}

void TYTimecodeField::setNotation(Formatter formatter, Parser parser) {
  m_formatter = std::move(formatter);
  m_parser = std::move(parser);
  showValue();
}

void TYTimecodeField::setProminent(bool prominent) {
  m_prominent = prominent;
  setFont(TYStyleKit::font(prominent ? TextStyle::TimeCode : TextStyle::Body));
  setAlignment((prominent ? Qt::AlignHCenter : Qt::AlignRight) | Qt::AlignVCenter);
  if (prominent) setFixedSize(112, 26);
}

QString TYTimecodeField::textForValue(double value) const {
  return m_formatter ? m_formatter(value) : locale().toString(value, 'g', 12);
}

foundation::Result<NumberExpression> TYTimecodeField::parse(const QString& text) const {
  if (!m_parser) return NumberExpression::parse(text, {locale(), {}});
  return m_parser(text, value()).map(NumberExpression::set);
}

// Centred digits of different widths would tremble while the time runs.
void TYTimecodeField::paintEvent(QPaintEvent* event) {
  if (!m_prominent || hasFocus() || isInvalid()) return TYValueField::paintEvent(event);
  QStyleOptionFrame option;
  initStyleOption(&option);
  QPainter painter(this);
  style()->drawPrimitive(QStyle::PE_PanelLineEdit, &option, &painter, this);
  painter.setFont(font());
  painter.setPen(TYStyleKit::colour(isEnabled() ? Token::Text : Token::TextDisabled));
  TabularText::draw(painter, rect(), Qt::AlignCenter, text());
}

}  // namespace widgets
