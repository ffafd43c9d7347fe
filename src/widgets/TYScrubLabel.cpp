#include "widgets/TYScrubLabel.h"

#include <QKeyEvent>
#include <QPainter>

#include "widgets/NumberScrub.h"
#include "widgets/TYStyleKit.h"
#include "widgets/TYValueField.h"

namespace widgets {

TYScrubLabel::TYScrubLabel(const QString& text, TYValueField* field, QWidget* parent)
    : QLabel(text, parent) {
  setField(field);
}

TYScrubLabel::~TYScrubLabel() = default;

void TYScrubLabel::setField(TYValueField* field) {
  m_field = field;
  setBuddy(field);
  if (!field) return;
  setCursor(Qt::SizeHorCursor);
  if (field->accessibleName().isEmpty())
    field->setAccessibleName((text() + QLatin1Char(' ') + field->prefix()).trimmed());
}

bool TYScrubLabel::isReady() const {
  return m_field && m_field->isEnabled() && !m_field->isReadOnly();
}

void TYScrubLabel::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !isReady()) return;
  m_drag = std::make_unique<NumberScrub>(*m_field, event->globalPosition());
  // Esc has to reach the drag wherever the focus is.
  grabKeyboard();
  update();
}

void TYScrubLabel::mouseMoveEvent(QMouseEvent* event) {
  if (m_drag && m_field) m_drag->move(event->globalPosition(), event->modifiers());
}

void TYScrubLabel::mouseReleaseEvent(QMouseEvent*) {
  if (!m_drag) return;
  const bool moved = m_field && m_drag->finish();
  end();
  if (!moved && m_field) {
    m_field->setFocus(Qt::MouseFocusReason);
    m_field->selectAll();
  }
}

void TYScrubLabel::keyPressEvent(QKeyEvent* event) {
  if (!m_drag || event->key() != Qt::Key_Escape) return;
  if (m_field) m_drag->cancel();
  end();
}

void TYScrubLabel::end() {
  m_drag.reset();
  releaseKeyboard();
  update();
}

void TYScrubLabel::enterEvent(QEnterEvent*) {
  update();
}

void TYScrubLabel::leaveEvent(QEvent*) {
  update();
}

void TYScrubLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const bool lit = isReady() && (m_drag || underMouse());
  const Token token = !isEnabled() ? Token::TextDisabled : lit ? Token::Accent : Token::Text2;
  painter.setPen(TYStyleKit::colour(token));
  const QFontMetrics metrics(font());
  const QString shown = metrics.elidedText(text(), Qt::ElideRight, width());
  painter.drawText(rect(), int(alignment()) | Qt::TextShowMnemonic, shown);
  if (!lit) return;
  QPen dots(painter.pen().color(), 1);
  dots.setDashPattern({1, 1});
  painter.setPen(dots);
  const int y = rect().center().y() + metrics.height() / 2 - 1;
  painter.drawLine(0, y, metrics.horizontalAdvance(shown), y);
}

}  // namespace widgets
