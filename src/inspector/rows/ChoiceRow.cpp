#include "inspector/rows/ChoiceRow.h"

#include <QComboBox>

#include "inspector/InspectorContext.h"
#include "widgets/EventGuards.h"
#include "widgets/TYSegmentedControl.h"

namespace inspector {

ChoiceRow::ChoiceRow(InspectorContext& context, const QString& label, const QStringList& choices)
    : InspectorRow(context, label), m_box(new QComboBox) {
  m_box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  m_box->setPlaceholderText(QStringLiteral("—"));
  widgets::leaveWheelToPane(*m_box);
  addControl(m_box, 1);
  setChoices(choices);
  connect(m_box, &QComboBox::activated, this, [this](int index) {
    if (isBound())
      this->context().change(binding().stepName, [&] { binding().setAll(qint64{index}); });
  });
}

void ChoiceRow::setChoices(const QStringList& choices) {
  const QSignalBlocker quiet(m_box);
  m_box->clear();
  m_box->addItems(choices);
}

void ChoiceRow::showValues() {
  const auto index = static_cast<int>(binding().value().toNumber());
  const bool known = !binding().isMixed() && index >= 0 && index < m_box->count();
  m_box->setCurrentIndex(known ? index : -1);
}

void ChoiceRow::nameControls(const QString& name) {
  m_box->setAccessibleName(name);
}

const QStringList& SegmentsRow::textJustificationNames() {
  static const QStringList names{QStringLiteral("Left"), QStringLiteral("Center"),
                                 QStringLiteral("Right"), QStringLiteral("Justified"),
                                 QStringLiteral("Natural")};
  return names;
}

SegmentsRow::SegmentsRow(InspectorContext& context, const QString& label, const QStringList& titles)
    : InspectorRow(context, label), m_segments(new widgets::TYSegmentedControl) {
  for (const QString& title : titles) m_segments->addSegment(title);
  addControl(m_segments, 1);
  connect(m_segments, &widgets::TYSegmentedControl::activated, this, [this](int index) {
    if (isBound())
      this->context().change(binding().stepName, [&] { binding().setAll(qint64{index}); });
  });
}

SegmentsRow* SegmentsRow::forJustification(InspectorContext& context, const QString& label) {
  auto* row = new SegmentsRow(context, label, {});
  for (const QString& name : textJustificationNames())
    row->m_segments->addGlyph(QStringLiteral("Text") + name, name);
  return row;
}

void SegmentsRow::showValues() {
  const auto index = static_cast<int>(binding().value().toNumber());
  const bool known = !binding().isMixed() && index >= 0 && index < m_segments->count();
  m_segments->setSelectedSegment(known ? index : -1);
}

void SegmentsRow::nameControls(const QString& name) {
  m_segments->setAccessibleName(name);
}

}  // namespace inspector
