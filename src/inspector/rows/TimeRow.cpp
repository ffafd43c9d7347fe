#include "inspector/rows/TimeRow.h"

#include "inspector/InspectorContext.h"
#include "inspector/ValueTransformers.h"
#include "inspector/rows/FieldBinder.h"
#include "model/Composition.h"
#include "widgets/TYTimecodeField.h"

namespace inspector {

namespace {

constexpr double longest = 24 * 60 * 60;
constexpr int aloneWidth = 92;  // in narrow panels too a whole time code is seen

}  // namespace

TimeRow::TimeRow(InspectorContext& context, const QString& label, const QStringList& names)
    : InspectorRow(context, label), m_names(names) {
  for (const QString& name : names) {
    auto* field = new widgets::TYTimecodeField;
    field->setAccessibleName(name);
    if (names.size() == 1) field->setMinimumWidth(aloneWidth);
    connect(field, &widgets::TYValueField::complaintChanged, this,
            [this](const QString& complaint) { setComplaint(complaint); });
    m_fields.append(field);
    m_binders.append(new FieldBinder(context, *field, 0, longest));
    addControl(field, 1);
  }
  if (names.size() == 1) addStretch();
  setScrubField(m_fields.first());
}

void TimeRow::bind(const QList<Binding>& bindings) {
  InspectorRow::bind(bindings);
  if (!context().composition()) return;
  const TimepointToString transformer(context().composition()->videoResolution().timecodeRate());
  for (qsizetype i = 0; i < m_fields.size(); ++i) {
    m_fields[i]->setNotation(
        [transformer](double seconds) { return transformer.transformedValue(seconds); },
        [transformer](const QString& text, double present) {
          return transformer.reverseTransformedValue(text, present);
        });
    m_fields[i]->setStep(1 / transformer.rate().framesPerSecond());
    m_binders[i]->bind(i < bindings.size() ? bindings[i] : Binding());
  }
}

void TimeRow::showValues() {
  for (FieldBinder* binder : std::as_const(m_binders)) binder->refresh();
}

void TimeRow::nameControls(const QString&) {
  for (qsizetype i = 0; i < m_fields.size(); ++i) m_fields[i]->setAccessibleName(m_names[i]);
}

}  // namespace inspector
