#include "widgets/TYColorWell.h"

#include <QPainter>
#include <QPainterPath>

#include "widgets/Chessboard.h"
#include "widgets/TYStyleKit.h"
#include "widgets/color/ColorPopover.h"
#include "widgets/color/RecentColors.h"
#include "widgets/style/StyleDrawing.h"

namespace widgets {

TYColorWell::TYColorWell(QWidget* parent) : QAbstractButton(parent) {
  setAttribute(Qt::WA_Hover);
  setFocusPolicy(Qt::TabFocus);
  setFixedSize(sizeHint());
  setAccessibleName(tr("Color"));
  setColor(Qt::white);
  connect(this, &QAbstractButton::clicked, this, &TYColorWell::openPopover);
}

TYColorWell::~TYColorWell() {
  delete m_popover;
}

ColorPopover* TYColorWell::popover() const {
  return m_popover;
}

void TYColorWell::setColor(const QColor& color) {
  m_color = color;
  m_mixed = false;
  setAccessibleDescription(ColorPopover::hexText(color));
  update();
}

void TYColorWell::setMixed(bool mixed) {
  m_mixed = mixed;
  if (mixed) setAccessibleDescription(tr("Several colors"));
  update();
}

void TYColorWell::openPopover() {
  if (m_popover) return;
  m_before = m_color;
  m_mixedBefore = m_mixed;
  m_popover = new ColorPopover(m_color, m_hasAlpha, this, m_offers ? m_offers() : QList<QColor>());
  connect(m_popover, &ColorPopover::colorEdited, this, &TYColorWell::take);
  connect(m_popover, &ColorPopover::finished, this, &TYColorWell::finish);
  m_popover->showBeside(QRect(mapToGlobal(QPoint(0, 0)), size()));
}

void TYColorWell::take(const QColor& color) {
  if (!m_editing) {
    m_editing = true;
    Q_EMIT editBegan();
  }
  setColor(color);
  Q_EMIT colorEdited(color);
}

void TYColorWell::finish(bool kept) {
  if (!m_editing) return;
  m_editing = false;
  if (kept) {
    RecentColors::shared().add(m_color);
    Q_EMIT editCommitted();
  } else {
    setColor(m_before);
    setMixed(m_mixedBefore);
    Q_EMIT editCancelled();
  }
}

void TYColorWell::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QStyle::State state = isEnabled() ? QStyle::State_Enabled : QStyle::State_None;
  if (underMouse()) state |= QStyle::State_MouseOver;
  if (m_popover) state |= QStyle::State_HasFocus;
  drawField(rect(), state, false, painter);
  if (m_mixed) {
    painter.setPen(TYStyleKit::colour(isEnabled() ? Token::Text3 : Token::TextDisabled));
    painter.drawText(rect(), Qt::AlignCenter, QStringLiteral("—"));
    return;
  }
  QPainterPath inside;
  inside.addRoundedRect(QRectF(rect()).adjusted(4, 4, -4, -4), 2, 2);
  painter.setRenderHint(QPainter::Antialiasing);
  QColor colour = m_color;
  if (!isEnabled()) colour.setAlphaF(colour.alphaF() * 0.45F);
  if (m_color.alpha() < 255) painter.fillPath(inside, chessboardBrush(4));
  painter.fillPath(inside, colour);
}

}  // namespace widgets
