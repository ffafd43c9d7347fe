#include "app/preferences/PreferenceForm.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>

#include "widgets/TokenLabel.h"

namespace app {

using widgets::TextStyle;
using widgets::Token;
using widgets::TokenLabel;

namespace {

constexpr int margin = 24;
constexpr int labelWidth = 148;
constexpr int rowGap = 8;

}  // namespace

PreferenceForm::PreferenceForm(const QString& name) : m_form(new QFormLayout(this)) {
  setAccessibleName(name);
  m_form->setContentsMargins(margin, margin, margin, margin);
  m_form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
  m_form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
  m_form->setHorizontalSpacing(2 * rowGap);
  m_form->setVerticalSpacing(rowGap);
}

void PreferenceForm::addRow(const QString& label, std::initializer_list<QWidget*> controls) {
  auto* box = new QWidget;
  auto* line = new QHBoxLayout(box);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(rowGap);
  for (QWidget* control : controls) {
    if (control->accessibleName().isEmpty()) control->setAccessibleName(label);
    line->addWidget(control);
  }
  line->addStretch(1);
  auto* name = new TokenLabel(label, TextStyle::Body, Token::Text2);
  name->setMinimumWidth(labelWidth);
  name->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  m_form->addRow(name, box);
}

void PreferenceForm::addNote(const QString& text) {
  auto* note = new TokenLabel(text, TextStyle::Small, Token::Text3);
  note->setWordWrap(true);
  m_form->addRow(new QWidget, note);
}

}  // namespace app
