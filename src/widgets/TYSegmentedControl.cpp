#include "widgets/TYSegmentedControl.h"

#include <QHBoxLayout>
#include <QKeyEvent>

#include "widgets/SegmentButton.h"

namespace widgets {
namespace {

SegmentButton* button(const QButtonGroup& group, int index) {
  return static_cast<SegmentButton*>(group.button(index));
}

}  // namespace

TYSegmentedControl::TYSegmentedControl(Mode mode, QWidget* parent) : QWidget(parent), m_mode(mode) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(0);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  m_group.setExclusive(false);
  connect(&m_group, &QButtonGroup::idClicked, this, [this](int index) {
    if (m_mode == Mode::SelectOne) setSelectedSegment(index);
    Q_EMIT activated(index);
  });
}

int TYSegmentedControl::addSegment(const QString& text, const QString& toolTip) {
  return add(text, {}, toolTip);
}

int TYSegmentedControl::addGlyph(const QString& glyph, const QString& toolTip) {
  return add({}, glyph, toolTip);
}

int TYSegmentedControl::add(const QString& text, const QString& glyph, const QString& toolTip) {
  const int index = count();
  auto* segment = new SegmentButton(this);
  segment->setText(text);
  segment->setGlyph(glyph);
  segment->setToolTip(toolTip);
  segment->setAccessibleName(text.isEmpty() ? toolTip : text);
  segment->setCheckable(m_mode != Mode::Momentary);
  segment->installEventFilter(this);
  m_group.addButton(segment, index);
  static_cast<QHBoxLayout*>(layout())->addWidget(segment, 1);
  updateTabStop();
  return index;
}

void TYSegmentedControl::setGlyph(int index, const QString& glyph) {
  button(m_group, index)->setGlyph(glyph);
}

void TYSegmentedControl::setOnToken(int index, Token token) {
  button(m_group, index)->setOnToken(token);
}

void TYSegmentedControl::setHighlighted(int index, bool highlighted) {
  button(m_group, index)->setHighlighted(highlighted);
}

void TYSegmentedControl::setSegmentWidth(int width) {
  for (QAbstractButton* segment : m_group.buttons()) segment->setFixedWidth(width);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

int TYSegmentedControl::count() const {
  return int(m_group.buttons().size());
}

void TYSegmentedControl::setSelectedSegment(int index) {
  for (int i = 0; i < count(); ++i) segment(i)->setChecked(i == index);
  updateTabStop();
}

bool TYSegmentedControl::isSelected(int index) const {
  return segment(index)->isChecked();
}

void TYSegmentedControl::setSelected(int index, bool selected) {
  segment(index)->setChecked(selected);
}

void TYSegmentedControl::setSegmentEnabled(int index, bool enabled) {
  segment(index)->setEnabled(enabled);
  updateTabStop();
}

// One segment takes the Tab key: the chosen one, else the first that can be used.
void TYSegmentedControl::updateTabStop() {
  int stop = selectedSegment();
  for (int i = 0; stop < 0 && i < count(); ++i)
    if (segment(i)->isEnabled()) stop = i;
  for (int i = 0; i < count(); ++i)
    segment(i)->setFocusPolicy(i == stop ? Qt::TabFocus : Qt::NoFocus);
}

void TYSegmentedControl::moveFocus(int from, int direction) {
  for (int to = from + direction; to >= 0 && to < count(); to += direction) {
    if (!segment(to)->isEnabled()) continue;
    segment(from)->setFocusPolicy(Qt::NoFocus);
    segment(to)->setFocusPolicy(Qt::TabFocus);
    segment(to)->setFocus(Qt::TabFocusReason);
    if (m_mode == Mode::SelectOne) segment(to)->click();
    return;
  }
}

bool TYSegmentedControl::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    const int index = m_group.id(static_cast<QAbstractButton*>(watched));
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    if (key == Qt::Key_Left || key == Qt::Key_Right) {
      moveFocus(index, (key == Qt::Key_Right) != mirrored ? 1 : -1);
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void TYSegmentedControl::changeEvent(QEvent* event) {
  if (event->type() == QEvent::EnabledChange) updateTabStop();
  QWidget::changeEvent(event);
}

}  // namespace widgets
