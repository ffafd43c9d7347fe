#include "inspector/rows/FieldBinder.h"

#include "inspector/InspectorContext.h"
#include "widgets/EventGuards.h"
#include "widgets/TYValueField.h"

namespace inspector {

using model::AttributeValue;
using widgets::TYValueField;

FieldBinder::FieldBinder(InspectorContext& context, TYValueField& field, double minimum,
                         double maximum)
    : QObject(&field), m_context(context), m_field(field), m_minimum(minimum), m_maximum(maximum) {
  field.setRange(minimum, maximum);
  widgets::leaveUndoToWindow(field);
  connect(&field, &TYValueField::editBegan, this, &FieldBinder::begin);
  connect(&field, &TYValueField::valueEdited, this, &FieldBinder::edit);
  connect(&field, &TYValueField::relativeEdited, this, &FieldBinder::editRelatively);
  connect(&field, &TYValueField::editCommitted, &context, [&context] { context.commit(); });
  connect(&field, &TYValueField::editCancelled, &context, [&context] { context.cancel(); });
}

AttributeValue FieldBinder::likeValue(const AttributeValue& model, double number) {
  if (model.as<qint64>()) return static_cast<qint64>(std::llround(std::max(number, 0.0)));
  if (model.as<bool>()) return number != 0;
  return number;
}

void FieldBinder::bind(const Binding& binding) {
  m_binding = binding;
  m_before.clear();
  m_field.discardEntry();
}

void FieldBinder::refresh() {
  if (m_field.isScrubbing() && m_field.isMixed()) return;  // the dash stays while each one moves
  const bool mixed = m_binding.isMixed();
  m_field.setValue(m_binding.value().toNumber());
  m_field.setMixed(mixed);
}

void FieldBinder::begin() {
  m_context.begin(m_binding.stepName);
  m_before.clear();
  for (qsizetype i = 0; i < m_binding.count; ++i) m_before.push_back(m_binding.get(i).toNumber());
}

void FieldBinder::edit(double value) {
  if (m_binding.count > 0) m_binding.setAll(likeValue(m_binding.value(), value));
}

void FieldBinder::editRelatively(const widgets::NumberExpression& change) {
  if (m_before.size() != static_cast<size_t>(m_binding.count)) return;
  for (qsizetype i = 0; i < m_binding.count; ++i) {
    const double value = change.appliedTo(m_before[static_cast<size_t>(i)]);
    m_binding.set(i, likeValue(m_binding.get(i), std::clamp(value, m_minimum, m_maximum)));
  }
}

}  // namespace inspector
