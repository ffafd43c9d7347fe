#include "inspector/rows/ColorRow.h"

#include "inspector/InspectorContext.h"
#include "model/Composition.h"
#include "widgets/TYColorWell.h"

namespace inspector {

using foundation::Color;
using widgets::TYColorWell;

namespace {

constexpr qsizetype mostOffered = 10;

}  // namespace

ColorRow::ColorRow(InspectorContext& context, const QString& label)
    : InspectorRow(context, label), m_well(new TYColorWell) {
  m_well->setColor(Qt::black);
  m_well->setOffers([this] { return colorsOfDocument(); });
  addControl(m_well, 0);
  addStretch();
  connect(m_well, &TYColorWell::editBegan, this, [this] {
    if (isBound()) this->context().begin(binding().stepName);
  });
  connect(m_well, &TYColorWell::colorEdited, this, [this](const QColor& color) {
    if (isBound()) binding().setAll(Color::fromQColor(color));
  });
  connect(m_well, &TYColorWell::editCommitted, this, [this] { this->context().commit(); });
  connect(m_well, &TYColorWell::editCancelled, this, [this] { this->context().cancel(); });
}

QList<QColor> ColorRow::colorsOfDocument() const {
  QList<QColor> colors;
  if (!context().composition()) return colors;
  for (const model::QuartzComponent* component : context().composition()->components())
    for (const model::Attribute* attribute : component->attributes()) {
      if (attribute->type() != model::AttributeType::Color) continue;
      const model::AttributeValue value = attribute->currentValue();
      const auto* color = value.as<Color>();
      if (color && !colors.contains(color->toQColor())) colors.append(color->toQColor());
      if (colors.size() == mostOffered) return colors;
    }
  return colors;
}

void ColorRow::showValues() {
  const model::AttributeValue value = binding().value();
  const auto* color = value.as<Color>();
  m_well->setColor(color ? color->toQColor() : QColor(Qt::black));
  m_well->setMixed(binding().isMixed());
}

void ColorRow::nameControls(const QString& name) {
  m_well->setAccessibleName(name);
}

}  // namespace inspector
