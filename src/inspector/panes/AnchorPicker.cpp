#include "inspector/panes/AnchorPicker.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "widgets/Accessibility.h"
#include "widgets/TYStyleKit.h"
#include "widgets/style/StyleDrawing.h"

namespace inspector {

using widgets::Token;
using widgets::TYStyleKit;

namespace {

constexpr int side = 52;
constexpr int inset = 10;
constexpr int pitch = (side - 2 * inset) / 2;
constexpr double dot = 2;
constexpr double chosenDot = 3.5;

}  // namespace

AnchorPicker::AnchorPicker(QWidget* parent) : QWidget(parent) {
  widgets::setAccessibleRole(*this, QAccessible::Table);
  setFocusPolicy(Qt::TabFocus);
  setFixedSize(side, side);
  setToolTip(tr("The point that the position is about, and that stays when the size changes"));
  updateName();
}

QSize AnchorPicker::sizeHint() const {
  return {side, side};
}

void AnchorPicker::setCell(const QPoint& cell) {
  const QPoint inside(std::clamp(cell.x(), 0, 2), std::clamp(cell.y(), 0, 2));
  if (inside == m_cell) return;
  m_cell = inside;
  updateName();
  update();
  Q_EMIT anchorChanged();
}

void AnchorPicker::updateName() {
  static const QList<QStringList> names{{tr("Top left"), tr("Top"), tr("Top right")},
                                        {tr("Left"), tr("Center"), tr("Right")},
                                        {tr("Bottom left"), tr("Bottom"), tr("Bottom right")}};
  setAccessibleName(tr("Anchor: %1").arg(names[m_cell.y()][m_cell.x()]));
}

void AnchorPicker::mousePressEvent(QMouseEvent* event) {
  const QPoint at = event->position().toPoint() * 3;
  setCell({at.x() / side, at.y() / side});
}

void AnchorPicker::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Left:
      return setCell(m_cell - QPoint(1, 0));
    case Qt::Key_Right:
      return setCell(m_cell + QPoint(1, 0));
    case Qt::Key_Up:
      return setCell(m_cell - QPoint(0, 1));
    case Qt::Key_Down:
      return setCell(m_cell + QPoint(0, 1));
    default:
      QWidget::keyPressEvent(event);
  }
}

void AnchorPicker::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  update();
}

void AnchorPicker::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QStyle::State state = isEnabled() ? QStyle::State_Enabled : QStyle::State_None;
  if (hasFocus()) state |= QStyle::State_HasFocus;
  widgets::drawField(rect(), state, false, painter);
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor rest = TYStyleKit::colour(isEnabled() ? Token::Border : Token::TextDisabled);
  painter.setPen(QPen(rest, 1));
  painter.drawRect(QRectF(inset + 0.5, inset + 0.5, 2 * pitch - 1, 2 * pitch - 1));
  painter.setPen(Qt::NoPen);
  for (int y = 0; y < 3; ++y)
    for (int x = 0; x < 3; ++x) {
      const bool chosen = isEnabled() && m_cell == QPoint(x, y);
      const double radius = chosen ? chosenDot : dot;
      painter.setBrush(chosen ? TYStyleKit::colour(Token::Accent) : rest);
      painter.drawEllipse(QPointF(inset + x * pitch, inset + y * pitch), radius, radius);
    }
}

}  // namespace inspector
