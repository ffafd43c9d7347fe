#include "widgets/TYPaneHeader.h"

#include <QKeyEvent>
#include <QPainter>

#include "widgets/DevicePixels.h"
#include "widgets/TYGlyph.h"
#include "widgets/TYStyleKit.h"

namespace widgets {
namespace {

constexpr int kHeight = 28;
constexpr int kTriangle = 8;
constexpr int kTitle = 28;
constexpr int kMargin = 12;

}  // namespace

TYPaneHeader::TYPaneHeader(const QString& title, QWidget* parent) : QAbstractButton(parent) {
  setText(title);
  setFont(TYStyleKit::font(TextStyle::Title));
  setCheckable(true);
  setChecked(true);
  setAttribute(Qt::WA_Hover);
  setFocusPolicy(Qt::TabFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  connect(this, &QAbstractButton::toggled, this, [this](bool open) {
    if (m_content) m_content->setVisible(open);
  });
}

void TYPaneHeader::setContent(QWidget* content) {
  m_content = content;
  if (content) content->setVisible(isOpen());
}

void TYPaneHeader::setNote(const QString& note) {
  m_note = note;
  setAccessibleDescription(note);
  update();
}

void TYPaneHeader::setFixed(bool fixed) {
  m_fixed = fixed;
  setEnabled(!fixed);
  setOpen(true);
}

void TYPaneHeader::setRuled(bool ruled) {
  m_ruled = ruled;
  update();
}

QSize TYPaneHeader::sizeHint() const {
  return {120, kHeight};
}

void TYPaneHeader::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right) {
    setOpen((event->key() == Qt::Key_Right) == (layoutDirection() == Qt::LeftToRight));
    return;
  }
  QAbstractButton::keyPressEvent(event);
}

void TYPaneHeader::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (m_ruled)
    DevicePixels(painter).horizontal(0, width(), 0, TYStyleKit::colour(Token::Separator));
  if (!m_fixed) {
    const QRectF box(kTriangle, (height() - 16) / 2.0, 16, 16);
    TYGlyph::paint(painter,
                   isOpen() ? QStringLiteral("DisclosingOpen") : QStringLiteral("DisclosingClosed"),
                   box, TYStyleKit::colour(underMouse() ? Token::Text : Token::Text2));
  }
  painter.setFont(TYStyleKit::font(TextStyle::Body));
  painter.setPen(TYStyleKit::colour(Token::Text3));
  const QRect inside = rect().adjusted(m_fixed ? kMargin : kTitle, 0, -kMargin, 0);
  painter.drawText(inside, Qt::AlignRight | Qt::AlignVCenter, m_note);
  const int room = inside.width() - painter.fontMetrics().horizontalAdvance(m_note) - 8;
  painter.setFont(font());
  painter.setPen(TYStyleKit::colour(Token::Text));
  painter.drawText(inside, Qt::AlignLeft | Qt::AlignVCenter,
                   painter.fontMetrics().elidedText(text(), Qt::ElideRight, room));
}

}  // namespace widgets
