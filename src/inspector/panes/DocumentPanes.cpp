#include "inspector/panes/DocumentPanes.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "document/NewDocumentMenu.h"
#include "inspector/InspectorContext.h"
#include "inspector/ValueTransformers.h"
#include "inspector/panes/PaneLine.h"
#include "inspector/panes/PosterPicture.h"
#include "inspector/rows/CheckRow.h"
#include "inspector/rows/ChoiceRow.h"
#include "inspector/rows/ColorRow.h"
#include "inspector/rows/FileRow.h"
#include "inspector/rows/ImageRow.h"
#include "inspector/rows/KeyFrameControl.h"
#include "inspector/rows/NumberRow.h"
#include "inspector/rows/TextRow.h"
#include "inspector/rows/TimeRow.h"
#include "model/Composition.h"
#include "widgets/EventGuards.h"
#include "widgets/TYNumberField.h"
#include "widgets/TYPaneHeader.h"
#include "widgets/TokenLabel.h"

namespace inspector {

using model::AttributeValue;
using model::Composition;

namespace {

constexpr int leastPositionWidth = 84;  ///< four figures beside the button

/// One value of the composition; bound to nothing without one.
Binding toComposition(Composition* composition, const QString& stepName,
                      const std::function<AttributeValue(const Composition&)>& get,
                      const std::function<void(Composition&, const AttributeValue&)>& set) {
  if (!composition) return {};
  return {stepName, 1, [composition, get](qsizetype) { return get(*composition); },
          [composition, set](qsizetype, const AttributeValue& value) { set(*composition, value); }};
}

QString pictureText(const model::VideoResolution& resolution) {
  return FormatPane::tr("%1 × %2, %3 frames/s")
      .arg(resolution.width())
      .arg(resolution.height())
      .arg(QLocale().toString(resolution.framesPerSecond(), 'g', 4));
}

}  // namespace

FormatPane::FormatPane(InspectorContext& context)
    : InspectorPane(context, tr("Format")), m_formats(new QComboBox) {
  const document::NewDocumentMenu menu;
  for (const document::NewDocumentMenu::Item& item : menu.items()) {
    if (item.isSeparator())
      m_formats->insertSeparator(m_formats->count());
    else
      m_formats->addItem(item.title);
  }
  m_formats->setAccessibleName(tr("Format"));
  widgets::leaveWheelToPane(*m_formats);
  m_formats->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  auto* line = new PaneLine(tr("Format"));
  line->add(m_formats, 1);
  column()->addWidget(line);
  auto* picture = new PaneLine(tr("Picture"));
  m_picture = picture->addValue();
  column()->addWidget(picture);
  connect(m_formats, &QComboBox::activated, this, [this](int index) {
    const model::VideoResolution format(m_formats->itemText(index));
    if (format.width() <= 0) return;
    this->context().change(tr("Change Format"),
                           [&] { this->context().composition()->setVideoResolution(format); });
  });
}

void FormatPane::refresh() {
  const Composition* composition = context().composition();
  setEnabled(composition != nullptr);
  if (!composition) return;
  const QString title = composition->videoResolution().title();
  // Formats of older documents need not be in the menu.
  m_formats->setPlaceholderText(title);
  m_formats->setCurrentIndex(m_formats->findText(title));
  m_picture->setText(pictureText(composition->videoResolution()));
}

DocumentTimingPane::DocumentTimingPane(InspectorContext& context)
    : InspectorPane(context, tr("Timing")) {
  m_duration = add(new TimeRow(context, tr("Duration"), {tr("Duration")}));
  m_poster = add(new TimeRow(context, tr("Poster"), {tr("Time of the poster frame")}));
  auto* line = new PaneLine({});
  auto* set = new QPushButton(tr("Set"));
  set->setToolTip(tr("Takes the current time"));
  m_none = new QPushButton(tr("None"));
  m_none->setToolTip(tr("No poster frame: the picture below stands for the document"));
  line->add(set);
  line->add(m_none);
  line->add(new QWidget, 1);
  column()->addWidget(line);
  m_frame = new PosterPicture(context);
  m_frameLine = new PaneLine(tr("Picture"));
  m_frameLine->add(m_frame, 1);
  column()->addWidget(m_frameLine);
  m_picture = add(new ImageRow(context, tr("Picture")));
  connect(set, &QPushButton::clicked, this, [this] {
    this->context().change(tr("Set Poster Frame"),
                           [this] { this->context().composition()->setPosterFrameMode(0); });
  });
  connect(m_none, &QPushButton::clicked, this, [this] {
    this->context().change(tr("Remove Poster Frame"),
                           [this] { this->context().composition()->setPosterFrameMode(1); });
  });
}

void DocumentTimingPane::takeSelection() {
  Composition* composition = context().composition();
  m_duration->bind({toComposition(
      composition, tr("Change Duration"),
      [](const auto& c) { return AttributeValue(c.duration()); },
      [](Composition& c, const AttributeValue& value) {
        // At least a frame: a graphic without duration shows nothing.
        const double frame = 1 / std::max(1.0, c.videoResolution().framesPerSecond());
        c.setDuration(std::max(frame, value.toNumber()));
      })});
  m_poster->bind({toComposition(
      composition, tr("Set Poster Frame"),
      [](const auto& c) { return AttributeValue(std::max(0.0, c.posterFrameTimepoint())); },
      [](Composition& c, const AttributeValue& value) {
        c.setPosterFrameTimepoint(std::clamp(value.toNumber(), 0.0, c.duration()));
      })});
  m_picture->InspectorRow::bind(toComposition(
      composition, tr("Change Poster Image"),
      [](const auto& c) { return AttributeValue(c.posterFrameImage()); },
      [](Composition& c, const AttributeValue& value) { c.setPosterFrameImage(value.toImage()); }));
}

void DocumentTimingPane::refresh() {
  const bool hasTime = context().composition() && context().composition()->posterFrameMode() == 0;
  m_none->setEnabled(hasTime);
  m_picture->setVisible(!hasTime);
  m_frameLine->setVisible(hasTime);
  m_frame->refresh();
  header().setNote(hasTime ? QString() : tr("no poster frame"));
  InspectorPane::refresh();
}

BackgroundPane::BackgroundPane(InspectorContext& context)
    : InspectorPane(context, tr("Background")) {
  m_mode = add(new SegmentsRow(context, tr("Show"), {tr("Chess"), tr("Color"), tr("Image")}));
  m_color = add(new ColorRow(context, tr("Color")));
  m_image = add(new ImageRow(context, tr("Image")));
  m_movie = add(new FileRow(context, tr("Movie"), widgets::FileChooser::Movies));
}

void BackgroundPane::takeSelection() {
  Composition* composition = context().composition();
  m_mode->bind(toComposition(
      composition, tr("Change Background"),
      [](const auto& c) { return AttributeValue(static_cast<qint64>(c.backgroundMode())); },
      [](Composition& c, const AttributeValue& value) {
        c.setBackgroundMode(static_cast<model::BackgroundMode>(qRound(value.toNumber())));
      }));
  m_color->bind(toComposition(
      composition, tr("Change Background Color"),
      [](const auto& c) { return AttributeValue(c.backgroundColor()); },
      [](Composition& c, const AttributeValue& value) {
        if (const auto* color = value.as<foundation::Color>()) c.setBackgroundColor(*color);
      }));
  m_image->bind(toComposition(
      composition, tr("Change Background Image"),
      [](const auto& c) { return AttributeValue(c.backgroundImage()); },
      [](Composition& c, const AttributeValue& value) { c.setBackgroundImage(value.toImage()); }));
  m_movie->bind(toComposition(
      composition, tr("Change Background Movie"),
      [](const auto& c) { return AttributeValue(c.backgroundMovie()); },
      [](Composition& c, const AttributeValue& value) { c.setBackgroundMovie(value.toString()); }));
}

void BackgroundPane::refresh() {
  const Composition* composition = context().composition();
  m_color->setVisible(composition && composition->solidColorBackgroundMode());
  m_image->setVisible(composition && composition->imageBackgroundMode());
  m_movie->setVisible(composition && composition->imageBackgroundMode());
  InspectorPane::refresh();
}

OverlaysPane::OverlaysPane(InspectorContext& context) : InspectorPane(context, tr("Overlays")) {
  m_safeAreas = add(new CheckRow(context, tr("Canvas"), tr("Show safe areas")));
  m_rulers = add(new CheckRow(context, {}, tr("Show rulers and guides")));
  auto* line = new PaneLine(tr("Guides"));
  m_count = line->addValue();
  column()->addWidget(line);
  auto* buttons = new QWidget;
  auto* buttonRow = new QHBoxLayout(buttons);
  buttonRow->setContentsMargins(InspectorRow::margin, 2, KeyFrameControl::columnWidth, 2);
  buttonRow->setSpacing(InspectorRow::gap);
  for (const auto& [text, orientation] :
       {std::pair{tr("Add Horizontal"), Qt::Horizontal}, {tr("Add Vertical"), Qt::Vertical}}) {
    auto* button = new QPushButton(text);
    connect(button, &QPushButton::clicked, this,
            [this, orientation = orientation] { addGuide(orientation); });
    buttonRow->addWidget(button, 1);
  }
  column()->addWidget(buttons);
}

QList<model::Ruler*> OverlaysPane::guides() const {
  if (!context().composition()) return {};
  QList<model::Ruler*> sorted = context().composition()->rulers().list();
  std::stable_sort(sorted.begin(), sorted.end(), [](const model::Ruler* a, const model::Ruler* b) {
    return a->horizontal() && !b->horizontal();
  });
  return sorted;
}

void OverlaysPane::addGuide(Qt::Orientation line) {
  Composition* composition = context().composition();
  if (!composition) return;
  const bool across = line == Qt::Horizontal;
  composition->addRulerAtPosition((across ? composition->height() : composition->width()) / 2,
                                  across);
}

void OverlaysPane::takeSelection() {
  Composition* composition = context().composition();
  m_safeAreas->bind(toComposition(
      composition, tr("Show Safe Areas"),
      [](const auto& c) { return AttributeValue(c.showsSafeZones()); },
      [](Composition& c, const AttributeValue& value) {
        c.setShowsSafeZones(value.toNumber() != 0);
      }));
  m_rulers->bind(toComposition(
      composition, tr("Show Guides"), [](const auto& c) { return AttributeValue(c.showsRulers()); },
      [](Composition& c, const AttributeValue& value) {
        c.setShowsRulers(value.toNumber() != 0);
      }));
  bindGuides();
}

void OverlaysPane::letGo() {
  m_bound.clear();
  InspectorPane::letGo();
}

void OverlaysPane::bindGuides() {
  m_bound = guides();
  while (m_positions.size() < m_bound.size()) {
    auto* row = new NumberRow(
        context(), {},
        {NumberFormat{.unit = QStringLiteral("px"), .minimum = -1e5, .maximum = 1e5}});
    row->findChild<widgets::TYNumberField*>()->setMinimumWidth(leastPositionWidth);
    auto* remove = new QPushButton(tr("Remove"));
    const qsizetype index = m_positions.size();
    connect(remove, &QPushButton::clicked, this, [this, index] {
      context().commit();
      if (context().composition() && index < m_bound.size())
        context().composition()->removeRuler(*m_bound[index]);
    });
    row->addControl(remove, 0);
    m_positions.append(row);
    column()->addWidget(row);
  }
  for (qsizetype i = 0; i < m_positions.size(); ++i) {
    const bool used = i < m_bound.size();
    m_positions[i]->setVisible(used);
    if (!used) {
      m_positions[i]->bind(QList<Binding>());
      continue;
    }
    model::Ruler* guide = m_bound[i];
    m_positions[i]->setLabel(guide->horizontal() ? tr("Horizontal") : tr("Vertical"));
    m_positions[i]->bind({Binding{tr("Move Guide"), 1,
                                  [guide](qsizetype) { return AttributeValue(guide->position()); },
                                  [guide](qsizetype, const AttributeValue& value) {
                                    guide->setPosition(value.toNumber());
                                  }}});
  }
}

void OverlaysPane::refresh() {
  if (guides() != m_bound) bindGuides();
  const auto across = std::count_if(m_bound.begin(), m_bound.end(),
                                    [](const model::Ruler* guide) { return guide->horizontal(); });
  m_count->setText(m_bound.isEmpty()
                       ? tr("none")
                       : tr("%1 horizontal, %2 vertical").arg(across).arg(m_bound.size() - across));
  InspectorPane::refresh();
  for (qsizetype i = 0; i < m_bound.size(); ++i) m_positions[i]->refresh();
}

StopFramesPane::StopFramesPane(InspectorContext& context)
    : InspectorPane(context, tr("Stop frames")) {
  m_empty = new widgets::TokenLabel(tr("No stop frames"), widgets::TextStyle::Body,
                                    widgets::Token::Text3);
  m_empty->setContentsMargins(InspectorRow::margin, 4, InspectorRow::margin, 4);
  column()->addWidget(m_empty);
}

void StopFramesPane::takeSelection() {
  bindStopFrames();
}

void StopFramesPane::letGo() {
  m_bound.clear();
  for (TextRow* row : std::as_const(m_texts)) row->InspectorRow::bind(Binding());
}

void StopFramesPane::bindStopFrames() {
  const Composition* composition = context().composition();
  m_bound = composition ? composition->stopFramesSortedByTime() : QList<model::StopFrame*>();
  while (m_texts.size() < m_bound.size()) {
    m_texts.append(new TextRow(context(), {}, TextRow::Panel::Without));
    column()->addWidget(m_texts.last());
  }
  for (qsizetype i = 0; i < m_texts.size(); ++i) {
    const bool used = i < m_bound.size();
    m_texts[i]->setVisible(used);
    if (!used) {
      m_texts[i]->InspectorRow::bind(Binding());
      continue;
    }
    model::StopFrame* stop = m_bound[i];
    m_texts[i]->InspectorRow::bind(
        Binding{tr("Change Trigger Text"), 1,
                [stop](qsizetype) { return AttributeValue(stop->triggerInformation()); },
                [stop](qsizetype, const AttributeValue& value) {
                  stop->setTriggerInformation(value.toString());
                }});
  }
}

void StopFramesPane::refresh() {
  const Composition* composition = context().composition();
  if (!composition) return;
  if (composition->stopFramesSortedByTime() != m_bound) bindStopFrames();
  const TimepointToString times(composition->videoResolution().timecodeRate());
  for (qsizetype i = 0; i < m_bound.size(); ++i) {
    m_texts[i]->setLabel(times.transformedValue(m_bound[i]->timepoint()));
    m_texts[i]->refresh();
  }
  m_empty->setVisible(m_bound.isEmpty());
  header().setNote(m_bound.isEmpty() ? QString() : QString::number(m_bound.size()));
}

}  // namespace inspector
