#include "widgets/color/ColorRange.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QSignalBlocker>

#include "widgets/Chessboard.h"
#include "widgets/DevicePixels.h"
#include "widgets/TYStyleKit.h"

namespace widgets {
namespace {

constexpr int kHeight = 14;
constexpr double kTrack = 10;
constexpr double kKnob = 6;

}  // namespace

ColorRange::ColorRange(const QString& name, QWidget* parent) : QAbstractSlider(parent) {
  setOrientation(Qt::Horizontal);
  setRange(0, kSteps);
  setSingleStep(kSteps / 100);
  setPageStep(kSteps / 10);
  setFocusPolicy(Qt::StrongFocus);
  setFixedHeight(kHeight);
  setAccessibleName(name);
  connect(this, &QAbstractSlider::valueChanged, this, [this](int value) {
    update();
    Q_EMIT edited(double(value) / kSteps);
  });
}

void ColorRange::setStops(const QGradientStops& stops) {
  m_stops = stops;
  update();
}

void ColorRange::setFraction(double fraction) {
  const QSignalBlocker quiet(this);
  setValue(qRound(fraction * kSteps));
  update();
}

void ColorRange::mousePressEvent(QMouseEvent* event) {
  mouseMoveEvent(event);
}

void ColorRange::mouseMoveEvent(QMouseEvent* event) {
  if (!(event->buttons() & Qt::LeftButton)) return;
  const double room = width() - 2 * kKnob;
  setValue(qRound((event->position().x() - kKnob) / room * kSteps));
}

void ColorRange::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF track(0, (height() - kTrack) / 2, width(), kTrack);
  QPainterPath path;
  path.addRoundedRect(track, kTrack / 2, kTrack / 2);
  QLinearGradient colours(kKnob, 0, width() - kKnob, 0);
  colours.setStops(m_stops);
  const bool transparent = std::any_of(m_stops.begin(), m_stops.end(), [](const QGradientStop& s) {
    return s.second.alpha() < 255;
  });
  if (transparent) painter.fillPath(path, chessboardBrush(5));
  painter.fillPath(path, colours);
  DevicePixels(painter).edge(track, TYStyleKit::colour(Token::Border), kTrack / 2);

  const QPointF at(kKnob + double(value()) / kSteps * (width() - 2 * kKnob), height() / 2.0);
  painter.setPen(QPen(QColor(0, 0, 0, 160), 3.5));
  painter.setBrush(Qt::NoBrush);
  painter.drawEllipse(at, kKnob - 1.5, kKnob - 1.5);
  painter.setPen(QPen(Qt::white, 2));
  painter.drawEllipse(at, kKnob - 1.5, kKnob - 1.5);
}

}  // namespace widgets
