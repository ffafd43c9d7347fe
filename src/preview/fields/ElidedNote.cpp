#include "preview/fields/ElidedNote.h"

#include <QPainter>

#include "widgets/TYStyleKit.h"

namespace preview {

using widgets::TYStyleKit;

ElidedNote::ElidedNote(QWidget* parent) : QWidget(parent) {
  setFont(TYStyleKit::font(widgets::TextStyle::Small));
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void ElidedNote::setText(const QString& first, const QString& rest) {
  if (m_first == first && m_rest == rest) return;
  m_first = first;
  m_rest = rest;
  update();
}

void ElidedNote::setToken(widgets::Token token) {
  m_token = token;
  update();
}

QSize ElidedNote::sizeHint() const {
  return {0, fontMetrics().height()};
}

void ElidedNote::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(TYStyleKit::colour(m_token));
  const QFontMetrics metrics = fontMetrics();
  const int forFirst = std::max(width() - metrics.horizontalAdvance(m_rest), width() / 2);
  const Qt::TextElideMode mode = m_rest.isEmpty() ? Qt::ElideRight : Qt::ElideMiddle;
  const QString text = metrics.elidedText(m_first, mode, forFirst) + m_rest;
  painter.drawText(rect(), Qt::AlignVCenter | Qt::AlignLeading,
                   metrics.elidedText(text, Qt::ElideRight, width()));
}

}  // namespace preview
