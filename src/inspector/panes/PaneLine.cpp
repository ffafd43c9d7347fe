#include "inspector/panes/PaneLine.h"

#include <QHBoxLayout>

#include "inspector/rows/InspectorRow.h"
#include "inspector/rows/KeyFrameControl.h"
#include "widgets/TokenLabel.h"

namespace inspector {

namespace {

constexpr int lineHeight = 24;

}  // namespace

PaneLine::PaneLine(const QString& label, QWidget* parent)
    : QWidget(parent), m_line(new QHBoxLayout(this)) {
  m_line->setContentsMargins(InspectorRow::margin, 2, KeyFrameControl::columnWidth, 2);
  m_line->setSpacing(InspectorRow::gap);
  auto* name = new widgets::TokenLabel(label, widgets::TextStyle::Body, widgets::Token::Text2);
  name->setFixedSize(InspectorRow::labelWidth, lineHeight);
  m_line->addWidget(name, 0, Qt::AlignTop);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void PaneLine::add(QWidget* control, int stretch) {
  m_line->addWidget(control, stretch, stretch == 0 ? Qt::AlignTop : Qt::Alignment());
}

QLabel* PaneLine::addValue() {
  auto* value = new widgets::TokenLabel({}, widgets::TextStyle::Body, widgets::Token::Text2);
  value->setTextInteractionFlags(Qt::TextSelectableByMouse);
  value->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  add(value, 1);
  return value;
}

}  // namespace inspector
