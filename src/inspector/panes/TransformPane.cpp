#include "inspector/panes/TransformPane.h"

#include <QHBoxLayout>
#include <QPushButton>

#include "inspector/InspectorContext.h"
#include "inspector/panes/AnchorPicker.h"
#include "inspector/rows/CheckRow.h"
#include "inspector/rows/KeyFrameControl.h"
#include "inspector/rows/NumberRow.h"
#include "model/Composition.h"
#include "widgets/TokenLabel.h"

namespace inspector {

using model::AttributeValue;
using model::QuartzComponent;
using Components = QList<QuartzComponent*>;

namespace {

/// The coordinate of an anchor.
Binding position(const Components& components, double fraction, Qt::Orientation axis) {
  const bool across = axis == Qt::Horizontal;
  return {TransformPane::tr("Move"), components.size(),
          [=](qsizetype i) {
            const QRectF frame = components[i]->drawingFrame();
            return AttributeValue(across ? frame.x() + fraction * frame.width()
                                         : frame.y() + fraction * frame.height());
          },
          [=](qsizetype i, const AttributeValue& value) {
            QuartzComponent& component = *components[i];
            if (across)
              component.setOriginX(value.toNumber() - fraction * component.width());
            else
              component.setOriginY(value.toNumber() - fraction * component.height());
          }};
}

/// A side that grows from an anchor.
Binding side(const Components& components, const QPointF& fraction, Qt::Orientation axis) {
  const bool across = axis == Qt::Horizontal;
  return {TransformPane::tr("Resize"), components.size(),
          [=](qsizetype i) {
            return AttributeValue(across ? components[i]->width() : components[i]->height());
          },
          [=](qsizetype i, const AttributeValue& value) {
            QuartzComponent& component = *components[i];
            const QRectF before = component.drawingFrame();
            if (across)
              component.setWidth(value.toNumber());
            else
              component.setHeight(value.toNumber());
            const QRectF after = component.drawingFrame();
            if (fraction.x() != 0 && after.width() != before.width())
              component.setOriginX(before.x() + fraction.x() * (before.width() - after.width()));
            if (fraction.y() != 0 && after.height() != before.height())
              component.setOriginY(before.y() + fraction.y() * (before.height() - after.height()));
          }};
}

NumberFormat axis(const QString& prefix, const QString& name, double minimum = -1e6) {
  NumberFormat format{.prefix = prefix, .name = name, .minimum = minimum, .maximum = 1e6};
  return format;
}

}  // namespace

TransformPane::TransformPane(InspectorContext& context) : InspectorPane(context, tr("Transform")) {
  const QString x = QStringLiteral("X");
  const QString y = QStringLiteral("Y");
  m_position = add(new NumberRow(context, tr("Position"), {axis(x, tr("X")), axis(y, tr("Y"))}));
  m_size = add(new NumberRow(
      context, tr("Size"),
      {axis(QStringLiteral("W"), tr("Width"), 0), axis(QStringLiteral("H"), tr("Height"), 0)}));
  m_proportions = add(new CheckRow(context, tr("Proportions"), tr("Constrain")));

  auto* line = new QWidget;
  auto* anchorRow = new QHBoxLayout(line);
  anchorRow->setContentsMargins(InspectorRow::margin, 2, KeyFrameControl::columnWidth, 2);
  anchorRow->setSpacing(InspectorRow::gap);
  auto* label =
      new widgets::TokenLabel(tr("Anchor"), widgets::TextStyle::Body, widgets::Token::Text2);
  label->setFixedSize(InspectorRow::labelWidth, 24);
  m_anchor = new AnchorPicker;
  m_fit = new QPushButton(tr("Fit to Content"));
  m_fit->setToolTip(tr("Takes the size that the content has by itself"));
  anchorRow->addWidget(label, 0, Qt::AlignTop);
  anchorRow->addWidget(m_anchor, 0, Qt::AlignTop);
  anchorRow->addStretch();
  anchorRow->addWidget(m_fit, 0, Qt::AlignTop);
  column()->addWidget(line);

  m_rotation =
      add(new NumberRow(context, tr("Z-Rotation"), {NumberFormat{.unit = QStringLiteral("°")}}));
  m_margin =
      add(new NumberRow(context, tr("Margin"), {axis(x, tr("Margin X")), axis(y, tr("Margin Y"))}));
  connect(m_anchor, &AnchorPicker::anchorChanged, this, [this] {
    bindFrame();
    refresh();
  });
  connect(m_fit, &QPushButton::clicked, this, &TransformPane::fitToContent);
}

void TransformPane::bindFrame() {
  const Components& components = context().components();
  const QPointF at = m_anchor->fraction();
  m_position->bind(
      {position(components, at.x(), Qt::Horizontal), position(components, at.y(), Qt::Vertical)});
  m_position->setAttributes(
      context().attributesForKeys({QStringLiteral("originX"), QStringLiteral("originY")}));
  m_size->bind({side(components, at, Qt::Horizontal), side(components, at, Qt::Vertical)});
  m_size->setAttributes(
      context().attributesForKeys({QStringLiteral("inputWidth"), QStringLiteral("inputHeight")}));
}

void TransformPane::takeSelection() {
  const Components& components = context().components();
  bindFrame();
  m_proportions->InspectorRow::bind(Binding{
      tr("Constrain Proportions"), components.size(),
      [components](qsizetype i) { return AttributeValue(components[i]->constrainProportions()); },
      [components](qsizetype i, const AttributeValue& value) {
        components[i]->setConstrainProportions(value.toNumber() != 0);
      }});
  m_rotation->bind({Binding::toNumbers(components, QStringLiteral("zRotation"), tr("Rotate"))});
  m_rotation->setAttributes(context().attributesForKeys({QStringLiteral("zRotation")}));
  m_margin->bind({Binding::toNumbers(components, QStringLiteral("marginX"), tr("Change Margin")),
                  Binding::toNumbers(components, QStringLiteral("marginY"), tr("Change Margin"))});
  m_margin->setAttributes(
      context().attributesForKeys({QStringLiteral("marginX"), QStringLiteral("marginY")}));
}

void TransformPane::refresh() {
  InspectorPane::refresh();
  m_anchor->setEnabled(!context().components().isEmpty());
  m_fit->setEnabled(!context().components().isEmpty());
}

void TransformPane::fitToContent() {
  if (context().composition()) context().composition()->sizeToFitSelection();
}

}  // namespace inspector
