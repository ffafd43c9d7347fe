#include "preview/fields/ElidedNote.h"

#include <QPainter>

#include "widgets/TYStyleKit.h"

namespace preview {

using widgets::TYStyleKit;

ElidedNote::ElidedNote(QWidget* parent) : QWidget(parent) {
  setFont(TYStyleKit::font(widgets::TextStyle::Small));
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void ElidedNote::setText(const QString& text) {
  if (m_text == text) return;
  m_text = text;
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
  painter.drawText(rect(), Qt::AlignVCenter | Qt::AlignLeading,
                   fontMetrics().elidedText(m_text, Qt::ElideRight, width()));
}

}  // namespace preview
