#include "preview/StatusRow.h"

#include <QHBoxLayout>
#include <QLocale>
#include <QPainter>
#include <QPushButton>
#include <QToolButton>

#include "preview/ElidedLabel.h"
#include "preview/RowWord.h"
#include "widgets/DevicePixels.h"
#include "widgets/TYLinkButton.h"
#include "widgets/TYStyleKit.h"
#include "widgets/TokenLabel.h"

namespace preview {

using widgets::TextStyle;
using widgets::Token;
using widgets::TokenLabel;
using widgets::TYStyleKit;

namespace {
constexpr int margin = 8;
constexpr int rightMargin = 6;
constexpr int gap = 8;
constexpr int halfGap = 4;
constexpr int separatorX = 44;
constexpr int lampGap = 10;
constexpr int separatorInset = 10;
constexpr int triggerWidth = 96;
constexpr int control = 24;
/// Of a notice, before meter and scale get theirs.
constexpr int roomForNotice = 160;

void makeGlyphButton(QToolButton& button, const QString& glyph, const QString& name) {
  button.setIcon(TYStyleKit::image(glyph));
  button.setIconSize({16, 16});
  button.setFixedSize(control, control);
  button.setAutoRaise(true);
  button.setFocusPolicy(Qt::NoFocus);
  button.setToolTip(name);
  button.setAccessibleName(name);
}

}  // namespace

StatusRow::StatusRow(QWidget* parent)
    : QWidget(parent),
      m_reload(new QToolButton),
      m_lamp(new StatusLamp),
      m_status(new ElidedLabel(TextStyle::Medium, Token::Text)),
      m_notice(new ElidedLabel(TextStyle::Small, Token::Text2)),
      m_again(new widgets::TYLinkButton(tr("Reload"))),
      m_follow(new QToolButton),
      m_picture(new QToolButton),
      m_meter(new TokenLabel({}, TextStyle::Small, Token::Text3)),
      m_part(new RowWord(Token::Warning)),
      m_scale(new RowWord(Token::Text3)),
      m_triggerKey(new TokenLabel(tr("Space"), TextStyle::Body, Token::Text3)),
      m_trigger(new QPushButton(tr("Trigger"))),
      m_fields(new QToolButton) {
  setFixedHeight(rowHeight);
  makeGlyphButton(*m_reload, QStringLiteral("Reload"), tr("Play from the Beginning"));
  m_reload->setToolTip(tr("Play from the Beginning (R)"));
  makeGlyphButton(*m_follow, QStringLiteral("Link"), tr("Follow Edits"));
  m_follow->setToolTip(tr("Follow Edits (L)"));
  m_follow->setCheckable(true);
  makeGlyphButton(*m_picture, QStringLiteral("PictureChecks"),
                  tr("Zoom, Background, Key and Fill, Safe Areas, Save"));
  m_trigger->setIcon(TYStyleKit::image(QStringLiteral("Trigger"), Token::OnAccent));
  m_trigger->setFixedSize(triggerWidth, control);
  m_trigger->setDefault(true);
  m_trigger->setToolTip(tr("Trigger (Space)"));
  m_fields->setIcon(TYStyleKit::image(QStringLiteral("Inspector")));
  m_fields->setIconSize({16, 16});
  m_fields->setFixedSize(control, control);
  m_fields->setAutoRaise(true);
  m_fields->setCheckable(true);
  m_fields->setToolTip(tr("Fields (Ctrl+F)"));
  m_fields->setAccessibleName(tr("Fields"));
  // Keys are the window's: space is the trigger wherever the focus is.
  m_trigger->setFocusPolicy(Qt::NoFocus);
  m_fields->setFocusPolicy(Qt::NoFocus);
  m_part->setToolTip(tr("Back to the Picture (P)"));
  m_scale->setToolTip(tr("Zoom (0, 1, 2)"));
  m_scale->setAccessibleName(tr("Zoom"));
  m_again->setToolTip(tr("Play the Document as It Is Now (Shift+R)"));
  m_again->setFocusPolicy(Qt::NoFocus);
  m_again->hide();
  m_meter->setContentsMargins(gap, 0, 0, 0);
  m_meter->hide();
  addAll();
  observe();
  setTriggerVisible(false);
}

void StatusRow::addAll() {
  // Names of graphics may be long, but that it waits is always told in full.
  m_status->setText(tr("Waiting for Trigger"));
  m_status->setMinimumWidth(m_status->sizeHint().width());
  m_status->clear();
  m_status->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
  m_notice->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  m_again->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  // What is hidden for want of room must not keep the window from becoming narrow.
  m_meter->setMinimumWidth(1);
  m_scale->setMinimumWidth(1);
  m_scale->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  m_triggerKey->setMinimumWidth(1);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(margin, 0, rightMargin, 0);
  row->setSpacing(gap);
  row->addWidget(m_reload);
  row->addSpacing(separatorX + lampGap - margin - control - gap);
  row->addWidget(m_lamp);
  row->addSpacing(lampGap - gap);
  row->addWidget(m_status);
  row->addWidget(m_notice, 1);
  row->addWidget(m_again);
  row->addWidget(m_part);
  row->addWidget(m_picture);
  row->addWidget(m_follow);
  row->addWidget(m_meter);
  row->addWidget(m_scale);
  row->addSpacing(halfGap);
  row->addWidget(m_triggerKey);
  row->addWidget(m_trigger);
  row->addWidget(m_fields);
}

void StatusRow::observe() {
  connect(m_reload, &QToolButton::clicked, this, &StatusRow::reloadRequested);
  connect(m_trigger, &QPushButton::clicked, this, &StatusRow::triggerRequested);
  connect(m_fields, &QToolButton::clicked, this, &StatusRow::fieldsRequested);
  connect(m_again, &widgets::TYLinkButton::clicked, this, &StatusRow::againRequested);
  connect(m_picture, &QToolButton::clicked, this,
          [this] { Q_EMIT pictureMenuRequested(m_picture); });
  connect(m_scale, &RowWord::clicked, this, [this] { Q_EMIT zoomMenuRequested(m_scale); });
  connect(m_part, &RowWord::clicked, this, &StatusRow::wholePictureRequested);
  connect(m_follow, &QToolButton::clicked, this, &StatusRow::followToggled);
}

int StatusRow::roomForExtras() const {
  int taken = margin + rightMargin - gap;
  for (int i = 0; i < layout()->count(); ++i) {
    const QLayoutItem& item = *layout()->itemAt(i);
    const QWidget* widget = item.widget();
    const bool isExtra = widget == m_meter || widget == m_scale || widget == m_triggerKey;
    if (isExtra || (widget && widget->isHidden())) continue;
    taken += item.sizeHint().width() + (widget ? gap : 0);
  }
  return width() - taken - std::min(m_notice->sizeHint().width(), roomForNotice);
}

void StatusRow::arrange() {
  int room = roomForExtras();
  const auto show = [&room](QWidget& extra, bool isWanted) {
    const int needed = extra.sizeHint().width() + gap;
    const bool fits = isWanted && needed <= room;
    if (fits) room -= needed;
    extra.setVisible(fits);
  };
  show(*m_triggerKey, m_triggerIsVisible);
  show(*m_scale, !m_scale->text().isEmpty());
  show(*m_meter, m_wantsMeter);
}

void StatusRow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  arrange();
}

void StatusRow::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  arrange();
}

void StatusRow::setStatus(StatusLamp::Light light, const QString& text) {
  m_lamp->setLight(light);
  m_status->setText(text);
  m_status->setToolTip(text);
  arrange();
}

QString StatusRow::status() const {
  return m_status->text();
}

void StatusRow::setTriggerVisible(bool visible) {
  m_triggerIsVisible = visible;
  m_trigger->setVisible(visible);
  arrange();
}

void StatusRow::setNotice(const QString& text, const QString& details) {
  m_notice->setText(text);
  m_notice->setToolTip(details.isEmpty() ? text : details);
  arrange();
}

QString StatusRow::notice() const {
  return m_notice->text();
}

void StatusRow::setOffersAgain(bool offers) {
  m_again->setVisible(offers);
  arrange();
}

bool StatusRow::offersAgain() const {
  return !m_again->isHidden();
}

void StatusRow::setFollows(bool follows) {
  m_follow->setChecked(follows);
}

void StatusRow::setScale(std::optional<int> percent) {
  m_scale->setText(percent ? tr("%1 %").arg(*percent) : QString());
  arrange();
}

void StatusRow::setPartShown(const QString& name) {
  m_part->setText(name);
  m_part->setVisible(!name.isEmpty());
  m_part->updateGeometry();
  arrange();
}

QString StatusRow::partShown() const {
  return m_part->text();
}

QString StatusRow::scaleText() const {
  return m_scale->text();
}

QRect StatusRow::pictureButtonRect() const {
  return {m_picture->mapToGlobal(QPoint(0, 0)), m_picture->size()};
}

void StatusRow::showReading(const FrameMeter::Reading& reading) {
  const QLocale locale;
  m_meter->setText(tr("%1 fps · %2 ms, longest %3 · %4 dropped")
                       .arg(locale.toString(reading.framesPerSecond, 'f', 0),
                            locale.toString(reading.milliseconds, 'f', 1),
                            locale.toString(reading.longest, 'f', 1),
                            locale.toString(reading.dropped + reading.unseen)));
  arrange();
}

void StatusRow::setMeterVisible(bool visible) {
  m_wantsMeter = visible;
  arrange();
}

void StatusRow::setFieldsShown(bool shown) {
  m_fields->setChecked(shown);
}

void StatusRow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const widgets::DevicePixels pixels(painter);
  pixels.fill(rect(), TYStyleKit::colour(Token::Raised));
  pixels.vertical(separatorX, separatorInset, height() - separatorInset,
                  TYStyleKit::colour(Token::Separator));
}

}  // namespace preview
