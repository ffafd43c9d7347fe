#include "widgets/color/ColorPlane.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>

#include "widgets/DevicePixels.h"
#include "widgets/TYStyleKit.h"

namespace widgets {
namespace {

constexpr double kRadius = 4;
constexpr double kKnob = 6;

}  // namespace

ColorPlane::ColorPlane(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setProperty("focusRing", true);
  setFixedHeight(132);
  setCursor(Qt::CrossCursor);
  setAccessibleName(tr("Saturation and brightness"));
}

void ColorPlane::setColor(double hue, double saturation, double value) {
  if (hue != m_hue) m_plane = {};
  m_hue = hue;
  m_saturation = saturation;
  m_value = value;
  setAccessibleDescription(tr("%1 %, %2 %").arg(qRound(saturation * 100)).arg(qRound(value * 100)));
  update();
}

void ColorPlane::moveTo(double saturation, double value) {
  setColor(m_hue, std::clamp(saturation, 0.0, 1.0), std::clamp(value, 0.0, 1.0));
  Q_EMIT edited(m_saturation, m_value);
}

void ColorPlane::mousePressEvent(QMouseEvent* event) {
  mouseMoveEvent(event);
}

void ColorPlane::mouseMoveEvent(QMouseEvent* event) {
  if (!(event->buttons() & Qt::LeftButton)) return;
  moveTo(event->position().x() / (width() - 1), 1 - event->position().y() / (height() - 1));
}

void ColorPlane::keyPressEvent(QKeyEvent* event) {
  const double step = event->modifiers() & Qt::ShiftModifier ? 0.1 : 0.01;
  switch (event->key()) {
    case Qt::Key_Left:
      moveTo(m_saturation - step, m_value);
      break;
    case Qt::Key_Right:
      moveTo(m_saturation + step, m_value);
      break;
    case Qt::Key_Up:
      moveTo(m_saturation, m_value + step);
      break;
    case Qt::Key_Down:
      moveTo(m_saturation, m_value - step);
      break;
    default:
      QWidget::keyPressEvent(event);
  }
}

void ColorPlane::resizeEvent(QResizeEvent*) {
  m_plane = {};
}

// White to the hue, then black over it: two gradients give every mixture.
const QImage& ColorPlane::plane() {
  if (!m_plane.isNull()) return m_plane;
  m_plane = QImage(size(), QImage::Format_RGB32);
  QPainter painter(&m_plane);
  QLinearGradient across(0, 0, width(), 0);
  across.setColorAt(0, Qt::white);
  across.setColorAt(1, QColor::fromHsvF(float(m_hue), 1, 1));
  painter.fillRect(rect(), across);
  QLinearGradient down(0, 0, 0, height());
  down.setColorAt(0, QColor(0, 0, 0, 0));
  down.setColorAt(1, Qt::black);
  painter.fillRect(rect(), down);
  return m_plane;
}

void ColorPlane::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath corners;
  corners.addRoundedRect(rect(), kRadius, kRadius);
  painter.setClipPath(corners);
  painter.drawImage(0, 0, plane());
  painter.setClipping(false);
  DevicePixels(painter).edge(rect(), TYStyleKit::colour(Token::Border), kRadius);

  const QPointF at(m_saturation * (width() - 1), (1 - m_value) * (height() - 1));
  const QPointF kept(std::clamp(at.x(), kKnob, width() - kKnob),
                     std::clamp(at.y(), kKnob, height() - kKnob));
  // White in black holds on any colour.
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(0, 0, 0, 160), 3.5));
  painter.drawEllipse(kept, kKnob - 1, kKnob - 1);
  painter.setPen(QPen(Qt::white, 2));
  painter.drawEllipse(kept, kKnob - 1, kKnob - 1);
}

}  // namespace widgets
