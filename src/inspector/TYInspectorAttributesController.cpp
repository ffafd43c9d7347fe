#include "inspector/TYInspectorAttributesController.h"

#include <QVBoxLayout>

#include "inspector/InspectorContext.h"
#include "inspector/rows/CheckRow.h"
#include "inspector/rows/ChoiceRow.h"
#include "inspector/rows/ColorRow.h"
#include "inspector/rows/FileRow.h"
#include "inspector/rows/FontRow.h"
#include "inspector/rows/ImageRow.h"
#include "inspector/rows/NumberRow.h"
#include "inspector/rows/RichTextRow.h"
#include "inspector/rows/TextRow.h"
#include "model/QuartzComponent.h"
#include "runtime/CompositionRenderer.h"
#include "widgets/TYPaneHeader.h"
#include "widgets/TokenLabel.h"

namespace inspector {

using model::AttributeType;

namespace {

constexpr size_t mostSpareRows = 60;

constexpr double stepsOfRange = 100;

}  // namespace

TYInspectorAttributesController::TYInspectorAttributesController(InspectorContext& context)
    : InspectorPane(context, tr("Attributes")) {
  m_none =
      new widgets::TokenLabel(tr("No attributes"), widgets::TextStyle::Body, widgets::Token::Text3);
  m_none->setContentsMargins(InspectorRow::margin, 4, InspectorRow::margin, 4);
  column()->addWidget(m_none);
}

TYInspectorAttributesController::Kind TYInspectorAttributesController::kindOf(
    const ShownAttribute& shown) {
  const model::Attribute& first = shown.first();
  Kind kind{.type = first.type(), .choices = {}};
  if (kind.type == AttributeType::IndexWithMenu) kind.choices = first.possibleValues();
  if (kind.type != AttributeType::Number && kind.type != AttributeType::Index) return kind;
  const runtime::CompositionRenderer* renderer =
      first.component() ? first.component()->renderer() : nullptr;
  if (const auto port = renderer ? renderer->inputAttributes(first.key()) : std::nullopt) {
    kind.minimum = port->minimum;
    kind.maximum = port->maximum;
  }
  return kind;
}

NumberRow* TYInspectorAttributesController::makeNumberRow(const Kind& kind, const QString& label) {
  NumberFormat format;
  if (kind.type == AttributeType::Index) {
    format.decimals = 0;
    format.minimum = 0;
  }
  format.minimum = kind.minimum.value_or(format.minimum);
  format.maximum = kind.maximum.value_or(format.maximum);
  if (kind.type == AttributeType::Number && kind.hasRange())
    format.step = std::min(1.0, (format.maximum - format.minimum) / stepsOfRange);
  return new NumberRow(context(), label, {format},
                       kind.hasRange() ? NumberRow::Slider::With : NumberRow::Slider::Without);
}

InspectorRow* TYInspectorAttributesController::makeRow(const Kind& kind, const QString& label) {
  switch (kind.type) {
    case AttributeType::String:
      return new TextRow(context(), label);
    case AttributeType::Index:
    case AttributeType::Number:
      return makeNumberRow(kind, label);
    case AttributeType::Boolean:
      return new CheckRow(context(), label);
    case AttributeType::IndexWithMenu:
      if (kind.choices == SegmentsRow::textJustificationNames())
        return SegmentsRow::forJustification(context(), label);
      return new ChoiceRow(context(), label, kind.choices);
    case AttributeType::Color:
      return new ColorRow(context(), label);
    case AttributeType::Image:
    case AttributeType::VideoInput:
      return new ImageRow(context(), label);
    case AttributeType::Font:
    case AttributeType::RichFont:
      return new FontRow(context(), label);
    case AttributeType::RichText:
      return new RichTextRow(context(), label);
    case AttributeType::File:
    case AttributeType::OtherFile:
      return new FileRow(context(), label);
  }
  // Types of later versions have no control yet; their texts can be seen.
  return new TextRow(context(), label);
}

InspectorRow* TYInspectorAttributesController::takeRow(std::vector<Made>& spare, const Kind& kind,
                                                       const QString& label) {
  const auto found =
      std::find_if(spare.begin(), spare.end(), [&](const Made& made) { return made.kind == kind; });
  if (found == spare.end()) return makeRow(kind, label);
  InspectorRow* row = found->row;
  spare.erase(found);
  row->setLabel(label);
  return row;
}

void TYInspectorAttributesController::takeSelection() {
  const QList<ShownAttribute> shown = shownAttributes(context().attributesByKey());
  std::vector<Made> spare = std::exchange(m_made, {});
  QList<InspectorRow*> rows;
  for (const ShownAttribute& attribute : shown) {
    const QString label = attribute.rowLabel();
    const Kind kind = kindOf(attribute);
    InspectorRow* row = takeRow(spare, kind, label);
    row->bind(Binding::toAttributes(attribute.attributes, tr("Change %1").arg(label)));
    row->setAttributes(attribute.attributes);
    rows.append(row);
    m_made.push_back({kind, row});
  }
  for (size_t i = 0; i < spare.size(); ++i) {
    spare[i].row->bind(QList<Binding>());
    spare[i].row->hide();
    if (i < mostSpareRows)
      m_made.push_back(spare[i]);
    else
      spare[i].row->deleteLater();
  }
  layOut(rows);
  m_none->setVisible(rows.isEmpty());
  header().setNote(rows.isEmpty() ? QString() : QString::number(rows.size()));
}

void TYInspectorAttributesController::layOut(const QList<InspectorRow*>& wanted) {
  if (wanted != rows()) {
    for (qsizetype i = 0; i < wanted.size(); ++i) {
      QLayoutItem* present = column()->itemAt(static_cast<int>(i) + 1);
      if (present && present->widget() == wanted[i]) continue;
      column()->removeWidget(wanted[i]);
      column()->insertWidget(static_cast<int>(i) + 1, wanted[i]);
    }
    setRows(wanted);
  }
  for (InspectorRow* row : wanted) row->show();
}

}  // namespace inspector
