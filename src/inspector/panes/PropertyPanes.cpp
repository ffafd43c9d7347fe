#include "inspector/panes/PropertyPanes.h"

#include <QFileInfo>
#include <QHBoxLayout>

#include "inspector/InspectorContext.h"
#include "inspector/ValueTransformers.h"
#include "inspector/rows/CheckRow.h"
#include "inspector/rows/KeyFrameControl.h"
#include "inspector/rows/NumberRow.h"
#include "inspector/rows/TextRow.h"
#include "inspector/rows/TimeRow.h"
#include "model/Composition.h"
#include "widgets/TYPaneHeader.h"
#include "widgets/TokenLabel.h"

namespace inspector {

using model::AttributeValue;
using model::QuartzComponent;
using Components = QList<QuartzComponent*>;

namespace {

/// From here on two time codes stand side by side.
constexpr int wideEnough = 330;

Binding titles(const Components& components) {
  return {TitlePane::tr("Rename"), components.size(),
          [components](qsizetype i) { return AttributeValue(components[i]->title()); },
          [components](qsizetype i, const AttributeValue& value) {
            components[i]->setTitle(value.toString());
          }};
}

Binding times(const Components& components, const QString& stepName,
              double (QuartzComponent::*get)() const,
              const std::function<void(QuartzComponent&, double)>& set) {
  return {stepName, components.size(),
          [components, get](qsizetype i) { return AttributeValue((components[i]->*get)()); },
          [components, set](qsizetype i, const AttributeValue& value) {
            set(*components[i], value.toNumber());
          }};
}

}  // namespace

TitlePane::TitlePane(InspectorContext& context) : InspectorPane(context, tr("Title")) {
  m_title = add(new TextRow(context, tr("Title"), TextRow::Panel::Without));
  auto* line = new QWidget;
  auto* row = new QHBoxLayout(line);
  row->setContentsMargins(InspectorRow::margin, 2, KeyFrameControl::columnWidth, 2);
  row->setSpacing(InspectorRow::gap);
  auto* label =
      new widgets::TokenLabel(tr("File"), widgets::TextStyle::Body, widgets::Token::Text2);
  label->setFixedSize(InspectorRow::labelWidth, 24);
  m_file = new widgets::TokenLabel({}, widgets::TextStyle::Body, widgets::Token::Text2);
  m_file->setTextInteractionFlags(Qt::TextSelectableByMouse);
  m_file->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  row->addWidget(label);
  row->addWidget(m_file, 1);
  column()->addWidget(line);
}

void TitlePane::takeSelection() {
  const Components& components = context().components();
  m_title->bind(titles(components));
  header().setNote(CountGreaterThanOne::transformedValue(components.size())
                       ? tr("%L1 components").arg(components.size())
                       : QString());
}

void TitlePane::refresh() {
  InspectorPane::refresh();
  const Components& components = context().components();
  if (components.isEmpty()) return;
  const QString path = components.first()->compositionFilename();
  const bool same = std::all_of(components.begin(), components.end(), [&](const auto* component) {
    return component->compositionFilename() == path;
  });
  m_file->setText(same ? QFileInfo(path).fileName() : QStringLiteral("—"));
  m_file->setToolTip(same ? path : QString());
}

TimingPane::TimingPane(InspectorContext& context) : InspectorPane(context, tr("Timing")) {
  m_span = add(new TimeRow(context, tr("Start, End"), {tr("Start"), tr("End")}));
  m_start = add(new TimeRow(context, tr("Start"), {tr("Start")}));
  m_end = add(new TimeRow(context, tr("End"), {tr("End")}));
  m_duration = add(new TimeRow(context, tr("Duration"), {tr("Duration")}));
  arrange();
}

void TimingPane::takeSelection() {
  const Components& components = context().components();
  m_watched.clear();
  if (!components.isEmpty())
    for (const char* key : {"startTime", "endTime"})
      m_watched.push_back(context().watch(*components.first(), QString::fromLatin1(key)));
  const Binding start = times(components, tr("Change Start"), &QuartzComponent::startTime,
                              [](QuartzComponent& component, double time) {
                                component.setStartTime(component.validatedStartTime(time));
                              });
  const Binding end = times(components, tr("Change End"), &QuartzComponent::endTime,
                            [](QuartzComponent& component, double time) {
                              component.setEndTime(component.validatedEndTime(time));
                            });
  m_span->bind({start, end});
  m_start->InspectorRow::bind(start);
  m_end->InspectorRow::bind(end);
  m_duration->InspectorRow::bind(
      times(components, tr("Change Duration"), &QuartzComponent::duration,
            [](QuartzComponent& component, double time) { component.setDuration(time); }));
}

void TimingPane::arrange() {
  const bool wide = width() >= wideEnough;
  m_span->setVisible(wide);
  m_start->setVisible(!wide);
  m_end->setVisible(!wide);
}

void TimingPane::resizeEvent(QResizeEvent* event) {
  InspectorPane::resizeEvent(event);
  arrange();
}

AppearancePane::AppearancePane(InspectorContext& context)
    : InspectorPane(context, tr("Appearance")) {
  const NumberFormat percent{
      .unit = QStringLiteral("%"), .minimum = 0, .maximum = 100, .decimals = 1};
  m_opacity = add(new NumberRow(context, tr("Opacity"), {percent}, NumberRow::Slider::With));
  m_visible = add(new CheckRow(context, tr("Editor"), tr("Visible in editor")));
}

void AppearancePane::takeSelection() {
  const Components& components = context().components();
  m_opacity->bind({Binding::toNumbers(components, QStringLiteral("opacityHumanReadable"),
                                      tr("Change Opacity"))});
  m_opacity->setAttributes(context().attributesForKeys({QStringLiteral("opacity")}));
  m_visible->InspectorRow::bind(
      Binding{tr("Show in Editor"), components.size(),
              [components](qsizetype i) {
                return AttributeValue(components[i]->visibleInCompositionEditor());
              },
              [components](qsizetype i, const AttributeValue& value) {
                components[i]->setVisibleInCompositionEditor(value.toNumber() != 0);
              }});
  m_visible->setAttributes(
      context().attributesForKeys({QStringLiteral("visibleInCompositionEditor")}));
}

}  // namespace inspector
