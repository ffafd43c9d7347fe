#include "inspector/rows/CheckRow.h"

#include <QCheckBox>

#include "inspector/InspectorContext.h"

namespace inspector {

CheckRow::CheckRow(InspectorContext& context, const QString& label, const QString& title)
    : InspectorRow(context, label), m_box(new QCheckBox(title)) {
  addControl(m_box, 0);
  m_box->setMinimumHeight(24);
  addStretch();
  connect(m_box, &QCheckBox::clicked, this, [this](bool on) {
    if (isBound()) this->context().change(binding().stepName, [this, on] { binding().setAll(on); });
  });
}

void CheckRow::showValues() {
  const bool mixed = binding().isMixed();
  m_box->setTristate(mixed);
  const bool on = binding().value().toNumber() != 0;
  m_box->setCheckState(mixed ? Qt::PartiallyChecked : on ? Qt::Checked : Qt::Unchecked);
}

void CheckRow::nameControls(const QString& name) {
  m_box->setAccessibleName(m_box->text().isEmpty() ? name : m_box->text());
}

}  // namespace inspector
