#include "preview/fields/TakeBar.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPushButton>

#include "widgets/EventGuards.h"
#include "widgets/TokenLabel.h"

namespace preview {

namespace {
constexpr int margin = 12;
constexpr int gap = 8;
constexpr int lineHeight = 24;
}  // namespace

TakeBar::TakeBar(QWidget* parent)
    : QWidget(parent),
      m_play(addButton(tr("Play"), tr("Play from the Beginning with All Values (R)"))),
      m_trigger(addButton(tr("Trigger"), tr("Trigger (Space)"))),
      m_update(addButton(tr("Update"), tr("Send What Was Held (Ctrl+Return)"))),
      m_reset(addButton(tr("Reset"), tr("All Values of the File, and Its Beginning"))),
      m_hold(new QCheckBox(tr("Hold Changes"))),
      m_held(new widgets::TokenLabel({}, widgets::TextStyle::Small, widgets::Token::Warning)) {
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(gap);
  for (QPushButton* button : {m_play, m_trigger, m_update, m_reset}) buttons->addWidget(button, 1);
  m_hold->setMinimumHeight(lineHeight);
  m_hold->setFocusPolicy(Qt::TabFocus);
  widgets::leaveSpaceToWindow(*m_hold);
  m_hold->setToolTip(tr("Changes are sent together, by Update"));
  auto* hold = new QHBoxLayout;
  hold->addWidget(m_hold);
  hold->addStretch(1);
  hold->addWidget(m_held);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(margin, gap, margin, gap / 2);
  column->setSpacing(gap / 2);
  column->addLayout(buttons);
  column->addLayout(hold);
  connect(m_play, &QPushButton::clicked, this, &TakeBar::playRequested);
  connect(m_trigger, &QPushButton::clicked, this, &TakeBar::triggerRequested);
  connect(m_update, &QPushButton::clicked, this, &TakeBar::updateRequested);
  connect(m_reset, &QPushButton::clicked, this, &TakeBar::resetRequested);
  connect(m_hold, &QCheckBox::clicked, this, &TakeBar::holdsChangesChosen);
  showState();
}

QPushButton* TakeBar::addButton(const QString& text, const QString& toolTip) {
  auto* button = new QPushButton(text);
  button->setFixedHeight(lineHeight);
  button->setMinimumWidth(0);
  button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  // A click leaves the keyboard where it is: the space bar is the trigger.
  button->setFocusPolicy(Qt::TabFocus);
  widgets::leaveSpaceToWindow(*button);
  button->setToolTip(toolTip);
  return button;
}

void TakeBar::setPlayable(bool playable) {
  m_isPlayable = playable;
  showState();
}

void TakeBar::setWaiting(bool isWaiting) {
  m_isWaiting = isWaiting;
  showState();
}

void TakeBar::setHoldsChanges(bool holds) {
  m_hold->setChecked(holds);
}

void TakeBar::setPendingCount(int count) {
  m_pending = count;
  showState();
}

void TakeBar::showState() {
  m_play->setEnabled(m_isPlayable);
  m_trigger->setEnabled(m_isPlayable && m_isWaiting);
  m_update->setEnabled(m_isPlayable && m_pending > 0);
  m_reset->setEnabled(m_isPlayable);
  m_held->setText(m_pending > 0 ? tr("%n held", nullptr, m_pending) : QString());
}

}  // namespace preview
