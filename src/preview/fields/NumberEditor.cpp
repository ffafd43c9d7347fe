#include "preview/fields/NumberEditor.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <cmath>

#include "playout/AcceptedValues.h"
#include "preview/fields/FieldDescription.h"
#include "widgets/TYNumberField.h"

namespace preview {

namespace {

constexpr double unlimited = 1e15;

/// What an arrow key changes: so much that small ranges have steps, and counts are counted.
double stepWithin(double range) {
  if (range <= 2) return 0.01;
  return range <= 20 ? 0.1 : 1;
}

}  // namespace

class NumberEditor::LimitedField : public widgets::TYNumberField {
 public:
  LimitedField(const runtime::PortAttributes& port) : m_port(port) {
    const playout::AcceptedValues accepted(m_port);
    const bool isIndex = m_port.type == runtime::PortType::Index;
    const double lowest = accepted.lowest().value_or(-unlimited);
    const double highest = accepted.highest().value_or(unlimited);
    setRange(lowest, highest);
    setDecimals(isIndex ? 0 : 4);
    setStep(isIndex ? 1 : stepWithin(highest - lowest));
  }
  /// As with the key.
  void commit() {
    QKeyEvent pressed(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    if (isModified()) keyPressEvent(&pressed);
  }

 protected:
  [[nodiscard]] foundation::Result<widgets::NumberExpression> parse(
      const QString& text) const override {
    auto read = TYNumberField::parse(text);
    if (!read) return read;
    const double number = read->appliedTo(value());
    const bool isWhole = m_port.type != runtime::PortType::Index || number == std::floor(number);
    if (isWhole && playout::AcceptedValues(m_port).isWithinLimits(number)) return read;
    return foundation::failure(FieldDescription::wanted(m_port));
  }

 private:
  const runtime::PortAttributes m_port;
};

NumberEditor::NumberEditor(const runtime::PortAttributes& port, QWidget* parent)
    : FieldEditor(parent), m_field(new LimitedField(port)) {
  const bool isIndex = port.type == runtime::PortType::Index;
  watch(*m_field);
  line().addWidget(m_field, 1);
  line().addWidget(new QWidget, 1);
  connect(m_field, &widgets::TYValueField::editBegan, this, &FieldEditor::began);
  connect(m_field, &widgets::TYValueField::editCancelled, this, &FieldEditor::cancelled);
  connect(m_field, &widgets::TYValueField::complaintChanged, this, &FieldEditor::refused);
  connect(m_field, &widgets::TYValueField::valueEdited, this,
          [this, isIndex](double value) { Q_EMIT entered(isIndex ? std::round(value) : value); });
}

void NumberEditor::showValue(const Field& field) {
  m_field->setValue(field.current().toNumber());
}

QWidget& NumberEditor::control() const {
  return *m_field;
}

void NumberEditor::commitEntry() {
  m_field->commit();
}

void NumberEditor::dropEntry() {
  m_field->discardEntry();
}

bool NumberEditor::hasEntry() const {
  return m_field->isModified() || m_field->isInvalid();
}

}  // namespace preview
