#include "preview/fields/LabelledLine.h"

#include "preview/fields/FieldRow.h"
#include "widgets/TokenLabel.h"

namespace preview {

LabelledLine::LabelledLine(QWidget& part, const QString& label)
    : column(new QVBoxLayout(&part)), line(new QHBoxLayout) {
  column->setContentsMargins(FieldRow::margin, 2, 0, 2);
  column->setSpacing(2);
  column->addLayout(line);
  line->setContentsMargins(0, 0, FieldRow::margin, 0);
  line->setSpacing(0);
  auto* text = new widgets::TokenLabel(label, widgets::TextStyle::Body, widgets::Token::Text2);
  text->setFixedSize(FieldRow::labelWidth, height);
  line->addWidget(text);
  line->addSpacing(FieldRow::gap);
}

}  // namespace preview
