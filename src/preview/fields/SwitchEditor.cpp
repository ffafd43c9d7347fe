#include "preview/fields/SwitchEditor.h"

#include <QCheckBox>
#include <QHBoxLayout>

namespace preview {

namespace {
constexpr int lineHeight = 24;
}

SwitchEditor::SwitchEditor(QWidget* parent) : FieldEditor(parent), m_box(new QCheckBox) {
  // After a click the space bar is the trigger again.
  m_box->setFocusPolicy(Qt::TabFocus);
  watch(*m_box);
  m_box->setMinimumHeight(lineHeight);
  line().addWidget(m_box);
  connect(m_box, &QCheckBox::clicked, this, [this](bool on) { Q_EMIT entered(on); });
}

void SwitchEditor::showValue(const Field& field) {
  m_box->setChecked(field.current().toBoolean());
}

QWidget& SwitchEditor::control() const {
  return *m_box;
}

}  // namespace preview
