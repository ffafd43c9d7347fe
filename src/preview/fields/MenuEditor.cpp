#include "preview/fields/MenuEditor.h"

#include <QComboBox>
#include <QHBoxLayout>

#include "playout/AcceptedValues.h"
#include "widgets/EventGuards.h"

namespace preview {

MenuEditor::MenuEditor(const runtime::PortAttributes& port, QWidget* parent)
    : FieldEditor(parent), m_box(new QComboBox) {
  m_box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  m_box->setPlaceholderText(QStringLiteral("—"));
  // After a choice with the mouse the space bar is the trigger again.
  m_box->setFocusPolicy(Qt::TabFocus);
  watch(*m_box);
  m_box->addItems(playout::AcceptedValues(port).titles());
  widgets::leaveWheelToPane(*m_box);
  line().addWidget(m_box, 1);
  connect(m_box, &QComboBox::activated, this, [this](int index) { Q_EMIT entered(index); });
}

void MenuEditor::showValue(const Field& field) {
  const quint64 index = field.current().toIndex();
  m_box->setCurrentIndex(index < static_cast<quint64>(m_box->count()) ? static_cast<int>(index)
                                                                      : -1);
}

QWidget& MenuEditor::control() const {
  return *m_box;
}

}  // namespace preview
