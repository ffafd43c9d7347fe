#include "timeline/TransportBar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QSlider>
#include <QToolButton>
#include <cmath>

#include "model/Composition.h"
#include "timeline/TransportCommands.h"
#include "widgets/DevicePixels.h"
#include "widgets/TYSegmentedControl.h"
#include "widgets/TYStyleKit.h"
#include "widgets/TYTimecodeField.h"
#include "widgets/TokenLabel.h"

namespace timeline {

using foundation::Result;
using foundation::Timecode;
using foundation::TimecodeRate;
using widgets::Token;
using widgets::TYSegmentedControl;
using widgets::TYStyleKit;

namespace {

constexpr int barHeight = 40;
constexpr int margin = 12;
constexpr int gap = 12;
constexpr int zoomGap = 4;
constexpr int segmentWidth = 34;
constexpr int zoomWidth = 150;
constexpr int narrowZoomWidth = 110;
constexpr int narrow = 1000;  ///< of the bar
constexpr int zoomSteps = 1000;
constexpr int zoomButtonStep = 100;

QToolButton* zoomButton(const QString& glyph, const QString& toolTip) {
  auto* button = new QToolButton;
  button->setIcon(TYStyleKit::image(glyph));
  button->setIconSize({16, 16});
  button->setFixedSize(24, 24);
  button->setAutoRaise(true);
  button->setToolTip(toolTip);
  button->setAccessibleName(toolTip);
  return button;
}

}  // namespace

TransportBar::TransportBar(QWidget* parent) : QWidget(parent) {
  setFixedHeight(barHeight);
  setAccessibleName(tr("Transport"));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(margin, 0, margin, 1);
  row->setSpacing(gap);
  makeControls();
  makeField();
  row->addWidget(m_controls);
  row->addWidget(m_field);
  row->addWidget(m_complaint, 1);
  row->addWidget(makeZoom());
  setComposition(nullptr);
}

void TransportBar::makeControls() {
  m_controls = new TYSegmentedControl(TYSegmentedControl::Mode::Momentary);
  m_controls->setAccessibleName(tr("Transport"));
  m_controls->addGlyph(QStringLiteral("TimelineStart"), tr("Go to Beginning (Home)"));
  m_controls->addGlyph(QStringLiteral("TimelineFrameBack"), tr("Previous Frame (,)"));
  m_controls->addGlyph(QStringLiteral("TimelinePlay"), tr("Play (Space)"));
  m_controls->addGlyph(QStringLiteral("TimelineFrameForwards"), tr("Next Frame (.)"));
  m_controls->addGlyph(QStringLiteral("TimelineEnd"), tr("Go to End (End)"));
  m_controls->setSegmentWidth(segmentWidth);
  m_controls->setOnToken(TransportCommands::Play, Token::Playing);
  connect(m_controls, &TYSegmentedControl::activated, this, [this](int segment) {
    if (m_composition) TransportCommands(*m_composition).controlAction(segment);
  });
}

void TransportBar::makeField() {
  m_field = new widgets::TYTimecodeField;
  m_field->setProminent(true);
  m_field->setAccessibleName(tr("Editor time"));
  m_field->installEventFilter(this);
  m_complaint = new widgets::TokenLabel({}, widgets::TextStyle::Small, Token::Broken);
  m_complaint->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  connect(m_field, &widgets::TYTimecodeField::complaintChanged, m_complaint, &QLabel::setText);
  connect(m_field, &widgets::TYTimecodeField::valueEdited, this, [this](double frames) {
    if (!m_composition) return;
    TransportCommands(*m_composition)
        .setTime(Timecode(std::llround(frames), m_rate).seconds(),
                 TransportCommands::Updated::Attributes);
  });
}

QWidget* TransportBar::makeZoom() {
  auto* group = new QWidget;
  auto* row = new QHBoxLayout(group);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(zoomGap);
  m_zoom = new QSlider(Qt::Horizontal);
  m_zoom->setRange(0, zoomSteps);
  m_zoom->setPageStep(zoomButtonStep);
  m_zoom->setSingleStep(zoomButtonStep / 5);
  m_zoom->setFixedWidth(zoomWidth);
  m_zoom->setAccessibleName(tr("Timeline zoom"));
  m_zoom->setToolTip(tr("Timeline Zoom (Ctrl and the wheel)"));
  connect(m_zoom, &QSlider::valueChanged, this,
          [this](int value) { Q_EMIT zoomChanged(value / double{zoomSteps}); });
  const auto add = [&](const QString& glyph, const QString& toolTip, int step) {
    QToolButton* button = zoomButton(glyph, toolTip);
    connect(button, &QToolButton::clicked, this,
            [this, step] { m_zoom->setValue(m_zoom->value() + step); });
    row->addWidget(button);
  };
  add(QStringLiteral("TimelineZoomOut"), tr("Show More Time"), -zoomButtonStep);
  row->addWidget(m_zoom);
  add(QStringLiteral("TimelineZoomIn"), tr("Show Less Time"), zoomButtonStep);
  return group;
}

void TransportBar::setComposition(model::Composition* composition) {
  m_observations.clear();
  m_composition = composition;
  setEnabled(composition != nullptr);
  updateRate();
  updatePlayMode();
  if (!composition) return;
  const auto follow = [&](const QString& key, void (TransportBar::*update)()) {
    m_observations.push_back(
        composition->observe(key, [this, update](const store::Change&) { (this->*update)(); }));
  };
  follow(QStringLiteral("playMode"), &TransportBar::updatePlayMode);
  follow(QStringLiteral("editorTimepoint"), &TransportBar::updateTime);
  follow(QStringLiteral("broadcastMode"), &TransportBar::updateRate);
  follow(QStringLiteral("duration"), &TransportBar::updateRange);
}

void TransportBar::updatePlayMode() {
  const bool plays = m_composition && m_composition->playMode();
  const QString name = plays ? tr("Stop (Space)") : tr("Play (Space)");
  m_controls->setGlyph(TransportCommands::Play,
                       plays ? QStringLiteral("TimelineStop") : QStringLiteral("TimelinePlay"));
  m_controls->setHighlighted(TransportCommands::Play, plays);
  QAbstractButton* segment = m_controls->segment(TransportCommands::Play);
  segment->setToolTip(name);
  segment->setAccessibleName(name);
}

void TransportBar::updateTime() {
  const double time = m_composition ? m_composition->editorTimepoint() : 0;
  m_field->setValue(static_cast<double>(Timecode::fromSeconds(time, m_rate).frames()));
}

void TransportBar::updateRate() {
  m_rate = m_composition ? m_composition->videoResolution().timecodeRate() : TimecodeRate();
  m_field->setNotation(
      [rate = m_rate](double frames) { return Timecode(std::llround(frames), rate).toString(); },
      [this](const QString& text, double present) { return framesFromText(text, present); });
  updateRange();
  updateTime();
}

Timecode TransportBar::end() const {
  return Timecode::fromSeconds(m_composition ? m_composition->duration() : 0, m_rate);
}

void TransportBar::updateRange() {
  m_field->setRange(0, static_cast<double>(end().frames()));
}

Result<double> TransportBar::framesFromText(const QString& text, double present) const {
  const double presentSeconds = Timecode(std::llround(present), m_rate).seconds();
  const auto read = Timecode::fromString(text, m_rate, presentSeconds);
  if (!read) return tl::unexpected(read.error());
  if (read->frames() <= end().frames())
    return static_cast<double>(std::max<qint64>(read->frames(), 0));
  // Steps forwards go as far as there is something; a time that is not there is a mistake.
  if (text.trimmed().startsWith(u'+')) return static_cast<double>(end().frames());
  return foundation::failure(tr("The graphic ends at %1.").arg(end().toString()));
}

void TransportBar::setLeastZoom(double zoom) {
  const QSignalBlocker blocker(m_zoom);
  m_zoom->setMinimum(qFloor(zoom * zoomSteps));
}

void TransportBar::setZoom(double zoom) {
  const QSignalBlocker blocker(m_zoom);
  m_zoom->setValue(qRound(zoom * zoomSteps));
}

bool TransportBar::eventFilter(QObject* watched, QEvent* event) {
  if (watched == m_field) fieldEvent(*event);
  return QWidget::eventFilter(watched, event);
}

void TransportBar::fieldEvent(QEvent& event) {
  if (event.type() == QEvent::FocusIn)
    Q_EMIT hintChanged(
        tr("A time as 1:12, 2s or 1.5s, frames on or back as +10 or -5. "
           "Up and Down step, with Shift by ten."));
  if (event.type() == QEvent::FocusOut) Q_EMIT hintChanged({});
  if (event.type() != QEvent::KeyPress) return;
  const int key = static_cast<QKeyEvent&>(event).key();
  const bool isReturn = key == Qt::Key_Return || key == Qt::Key_Enter;
  const bool leaves = key == Qt::Key_Escape && !m_field->isModified() && !m_field->isInvalid();
  if (!isReturn && !leaves) return;
  // The field reads the text first; what it does not understand stays in it.
  const auto end = [this] {
    if (!m_field->isInvalid()) Q_EMIT typingEnded();
  };
  QMetaObject::invokeMethod(this, end, Qt::QueuedConnection);
}

void TransportBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const widgets::DevicePixels pixels(painter);
  pixels.fill(rect(), TYStyleKit::colour(Token::Raised));
  pixels.horizontal(0, width(), height() - 1, TYStyleKit::colour(Token::Separator));
}

void TransportBar::resizeEvent(QResizeEvent* event) {
  m_zoom->setFixedWidth(width() < narrow ? narrowZoomWidth : zoomWidth);
  QWidget::resizeEvent(event);
}

}  // namespace timeline
