#include "inspector/rows/NumberRow.h"

#include <QSlider>

#include "inspector/InspectorContext.h"
#include "inspector/rows/FieldBinder.h"
#include "widgets/EventGuards.h"
#include "widgets/TYNumberField.h"

namespace inspector {

using widgets::TYNumberField;

namespace {

constexpr int sliderSteps = 1000;
constexpr int fieldBesideSlider = 64;

}  // namespace

NumberRow::NumberRow(InspectorContext& context, const QString& label,
                     const QList<NumberFormat>& formats, Slider slider)
    : InspectorRow(context, label), m_formats(formats) {
  if (slider == Slider::With) addSlider();
  for (const NumberFormat& format : formats) {
    auto* field = new TYNumberField;
    field->setPrefix(format.prefix);
    field->setUnit(format.unit);
    field->setDecimals(format.decimals);
    field->setStep(format.step);
    connect(field, &widgets::TYValueField::complaintChanged, this,
            [this](const QString& complaint) { setComplaint(complaint); });
    m_fields.append(field);
    m_binders.append(new FieldBinder(context, *field, format.minimum, format.maximum));
    addControl(field, slider == Slider::With ? 0 : 1);
    if (slider == Slider::With) field->setFixedWidth(fieldBesideSlider);
  }
  if (formats.size() == 1 && slider == Slider::Without) addStretch();
  setScrubField(m_fields.first());
  nameControls(label);
}

void NumberRow::addSlider() {
  m_slider = new QSlider(Qt::Horizontal);
  m_slider->setRange(0, sliderSteps);
  m_slider->setPageStep(sliderSteps / 10);
  m_slider->setSingleStep(sliderSteps / 100);
  widgets::leaveWheelToPane(*m_slider);
  addControl(m_slider, 1);
  connect(m_slider, &QSlider::sliderPressed, this, [this] {
    if (isBound()) context().begin(binding().stepName);
  });
  connect(m_slider, &QSlider::valueChanged, this, &NumberRow::slide);
  connect(m_slider, &QSlider::sliderReleased, this, [this] { this->context().commit(); });
}

void NumberRow::slide(int position) {
  if (!isBound()) return;
  const NumberFormat& format = m_formats.first();
  const double value =
      format.minimum + (format.maximum - format.minimum) * position / double(sliderSteps);
  const auto write = [&] { binding().setAll(FieldBinder::likeValue(binding().value(), value)); };
  if (m_slider->isSliderDown() && context().isEditing())
    write();
  else
    context().change(binding().stepName, write);
}

void NumberRow::bind(const QList<Binding>& bindings) {
  InspectorRow::bind(bindings);
  for (qsizetype i = 0; i < m_binders.size(); ++i)
    m_binders[i]->bind(i < bindings.size() ? bindings[i] : Binding());
}

void NumberRow::showValues() {
  for (FieldBinder* binder : std::as_const(m_binders)) binder->refresh();
  if (m_slider) showSlider();
}

void NumberRow::showSlider() {
  const NumberFormat& format = m_formats.first();
  const double fraction = (binding().value().toNumber() - format.minimum) /
                          std::max(format.maximum - format.minimum, 1e-9);
  const QSignalBlocker quiet(m_slider);
  m_slider->setValue(qRound(std::clamp(fraction, 0.0, 1.0) * sliderSteps));
}

void NumberRow::nameControls(const QString& name) {
  for (qsizetype i = 0; i < m_fields.size(); ++i)
    m_fields[i]->setAccessibleName(m_formats[i].name.isEmpty() ? name : m_formats[i].name);
  if (m_slider) m_slider->setAccessibleName(name);
}

}  // namespace inspector
