#include "widgets/TYValueField.h"

#include <QKeyEvent>
#include <QPainter>
#include <limits>

#include "widgets/NumberScrub.h"
#include "widgets/TYGlyph.h"
#include "widgets/TYStyleKit.h"

namespace widgets {
namespace {

constexpr int kPadding = 8;
constexpr int kGap = 5;
constexpr int kGlyph = 16;
// QLineEdit draws this far inside the rectangle that the style gives it.
constexpr int kOwnMargin = 2;

double factor(Qt::KeyboardModifiers modifiers) {
  if (modifiers & Qt::ShiftModifier) return 10;
  return modifiers & (Qt::AltModifier | Qt::ControlModifier) ? 0.1 : 1;
}

QString dash() {
  return QStringLiteral("—");
}

}  // namespace

TYValueField::TYValueField(QWidget* parent)
    : QLineEdit(parent),
      m_minimum(std::numeric_limits<double>::lowest()),
      m_maximum(std::numeric_limits<double>::max()) {
  setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  setMinimumWidth(48);
  connect(this, &QLineEdit::textEdited, this, [this] { setComplaint({}); });
}

TYValueField::~TYValueField() = default;

void TYValueField::setValue(double value) {
  if (!m_mixed && value == m_value && !text().isEmpty()) return;
  m_value = value;
  m_mixed = false;
  if (!isModified() && !isInvalid()) showValue();
}

void TYValueField::setMixed(bool mixed) {
  m_mixed = mixed;
  if (!isModified() && !isInvalid()) showValue();
}

void TYValueField::setRange(double minimum, double maximum) {
  m_minimum = minimum;
  m_maximum = maximum;
}

void TYValueField::setPrefix(const QString& prefix) {
  m_prefix = prefix;
  updateMargins();
}

void TYValueField::setUnit(const QString& unit) {
  m_unit = unit;
  updateMargins();
}

void TYValueField::showValue() {
  const bool allSelected = hasFocus() && hasSelectedText();
  setText(m_mixed ? dash() : textForValue(m_value));
  setModified(false);
  setComplaint({});
  if (allSelected) selectAll();
}

bool TYValueField::commitText() {
  if (!isModified() && !isInvalid()) return true;
  const QString unchanged = m_mixed ? dash() : textForValue(m_value);
  if (text() == unchanged) {
    showValue();
    return true;
  }
  const auto change = parse(text());
  if (!change) {
    setModified(false);
    setComplaint(change.error().message);
    return false;
  }
  m_before = m_value;
  setModified(false);
  setComplaint({});
  Q_EMIT editBegan();
  apply(*change);
  Q_EMIT editCommitted();
  return true;
}

void TYValueField::apply(const NumberExpression& change) {
  if (m_mixed && change.isRelative()) {
    Q_EMIT relativeEdited(change);
    if (m_mixed) showValue();
    return;
  }
  m_mixed = false;
  m_value = std::clamp(change.appliedTo(m_before), m_minimum, m_maximum);
  showValue();
  Q_EMIT valueEdited(m_value);
}

void TYValueField::step(double steps) {
  if (isReadOnly() || !commitText()) return;
  beginScrub();
  scrub(steps);
  commitScrub();
}

void TYValueField::beginScrub() {
  if (m_scrubbing || isReadOnly() || !isEnabled()) return;
  m_scrubbing = true;
  m_before = m_value;
  update();
  Q_EMIT editBegan();
}

void TYValueField::scrub(double steps) {
  if (m_scrubbing) apply(NumberExpression::add(steps * m_step));
}

void TYValueField::commitScrub() {
  if (!m_scrubbing) return;
  m_scrubbing = false;
  update();
  Q_EMIT editCommitted();
}

void TYValueField::cancelScrub() {
  if (!m_scrubbing) return;
  m_scrubbing = false;
  if (!m_mixed) m_value = m_before;
  showValue();
  Q_EMIT editCancelled();
}

void TYValueField::setComplaint(const QString& complaint) {
  if (complaint == m_complaint) return;
  m_complaint = complaint;
  setProperty("invalid", !complaint.isEmpty());
  setToolTip(complaint);
  setAccessibleDescription(complaint);
  updateMargins();
  Q_EMIT complaintChanged(complaint);
}

void TYValueField::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Up:
      step(factor(event->modifiers()));
      return;
    case Qt::Key_Down:
      step(-factor(event->modifiers()));
      return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      // An entry that was pending is this field's business, further ones the window's.
      if (isModified() || isInvalid()) {
        if (commitText()) selectAll();
        return;
      }
      break;
    case Qt::Key_Escape:
      if (m_drag) {
        m_drag->cancel();
        m_drag.reset();
        return;
      }
      if (isModified() || isInvalid()) {
        showValue();
        selectAll();
        return;
      }
      event->ignore();
      return;
    default:
      break;
  }
  QLineEdit::keyPressEvent(event);
}

void TYValueField::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  if (event->reason() != Qt::MouseFocusReason && event->reason() != Qt::PopupFocusReason)
    selectAll();
}

void TYValueField::focusOutEvent(QFocusEvent* event) {
  if (event->reason() != Qt::PopupFocusReason) commitText();
  QLineEdit::focusOutEvent(event);
}

void TYValueField::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && isEnabled() && !isReadOnly() &&
      prefixRect().contains(event->pos())) {
    if (commitText()) m_drag = std::make_unique<NumberScrub>(*this, event->globalPosition());
    return;
  }
  const bool selectsAll = !hasFocus();
  QLineEdit::mousePressEvent(event);
  if (selectsAll && m_mixed) selectAll();
}

void TYValueField::mouseMoveEvent(QMouseEvent* event) {
  if (m_drag) {
    m_drag->move(event->globalPosition(), event->modifiers());
    return;
  }
  const bool overPrefix = isEnabled() && prefixRect().contains(event->pos());
  setCursor(overPrefix ? Qt::SizeHorCursor : Qt::IBeamCursor);
  QLineEdit::mouseMoveEvent(event);
}

void TYValueField::mouseReleaseEvent(QMouseEvent* event) {
  if (!m_drag) {
    QLineEdit::mouseReleaseEvent(event);
    return;
  }
  const bool moved = m_drag->finish();
  m_drag.reset();
  if (!moved) {
    setFocus(Qt::MouseFocusReason);
    selectAll();
  }
}

void TYValueField::updateMargins() {
  const QFontMetrics metrics(font());
  const int left = m_prefix.isEmpty() ? 0 : metrics.horizontalAdvance(m_prefix) + kGap;
  int right = m_unit.isEmpty() ? 0 : metrics.horizontalAdvance(m_unit) + kGap;
  if (isInvalid()) right = kGlyph + kGap;
  setTextMargins(left, 0, right, 0);
  update();
}

QRect TYValueField::prefixRect() const {
  if (m_prefix.isEmpty()) return {};
  return {0, 0, kPadding + QFontMetrics(font()).horizontalAdvance(m_prefix) + kGap - kOwnMargin,
          height()};
}

void TYValueField::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  QPainter painter(this);
  painter.setFont(font());
  painter.setPen(TYStyleKit::colour(isEnabled() ? Token::Text3 : Token::TextDisabled));
  const QRect inside = rect().adjusted(kPadding, 0, -kPadding, 0);
  painter.drawText(inside, Qt::AlignLeft | Qt::AlignVCenter, m_prefix);
  if (isInvalid()) {
    const QRectF box(inside.right() + 1 - kGlyph, (height() - kGlyph) / 2.0, kGlyph, kGlyph);
    TYGlyph::paint(painter, QStringLiteral("Warning"), box, TYStyleKit::colour(Token::Broken));
  } else {
    painter.drawText(inside, Qt::AlignRight | Qt::AlignVCenter, m_unit);
  }
}

}  // namespace widgets
