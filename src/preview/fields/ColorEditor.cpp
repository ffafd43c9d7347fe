#include "preview/fields/ColorEditor.h"

#include <QHBoxLayout>

#include "playout/ValueJson.h"
#include "widgets/TYColorWell.h"

namespace preview {

using widgets::TYColorWell;

ColorEditor::ColorEditor(QWidget* parent) : FieldEditor(parent), m_well(new TYColorWell) {
  m_well->setFocusPolicy(Qt::TabFocus);
  watch(*m_well);
  line().addWidget(m_well);
  line().addStretch(1);
  connect(m_well, &TYColorWell::editBegan, this, &FieldEditor::began);
  connect(m_well, &TYColorWell::editCancelled, this, &FieldEditor::cancelled);
  connect(m_well, &TYColorWell::colorEdited, this, [this](const QColor& color) {
    Q_EMIT entered(playout::ValueJson::colorText(foundation::Color::fromQColor(color)));
  });
}

void ColorEditor::showValue(const Field& field) {
  // The panel works with more digits than are sent.
  if (!m_well->popover()) m_well->setColor(field.current().toColor().toQColor());
}

QWidget& ColorEditor::control() const {
  return *m_well;
}

}  // namespace preview
