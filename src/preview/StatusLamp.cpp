#include "preview/StatusLamp.h"

#include <QPainter>

#include "widgets/TYStyleKit.h"

namespace preview {

using widgets::Token;

namespace {
constexpr double side = 8;
constexpr double ring = 1.5;
}  // namespace

StatusLamp::StatusLamp(QWidget* parent) : QWidget(parent) {
  setFixedSize(static_cast<int>(side), static_cast<int>(side));
}

void StatusLamp::setLight(Light light) {
  m_light = light;
  update();
}

void StatusLamp::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const auto disc = [&](Token token) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(widgets::TYStyleKit::colour(token));
    painter.drawEllipse(QRectF(0, 0, side, side));
  };
  switch (m_light) {
    case Light::Waiting:
      return disc(Token::Warning);
    case Light::Playing:
      return disc(Token::Playing);
    case Light::Failed:
      return painter.fillRect(QRectF(0, 0, side, side), widgets::TYStyleKit::colour(Token::Broken));
    case Light::Finished:
      painter.setPen(QPen(widgets::TYStyleKit::colour(Token::Text2), ring));
      painter.setBrush(Qt::NoBrush);
      painter.drawEllipse(QRectF(0, 0, side, side).adjusted(1, 1, -1, -1));
  }
}

}  // namespace preview
