#include "widgets/TYTooltipWindow.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPointer>
#include <QScreen>

#include "widgets/DevicePixels.h"
#include "widgets/TYStyleKit.h"
#include "widgets/TabularText.h"

namespace widgets {
namespace {

constexpr int kPadding = 9;
constexpr int kHeight = 24;
constexpr int kRadius = 4;
constexpr int kBelow = 12;

}  // namespace

TYTooltipWindow::TYTooltipWindow()
    : QWidget(nullptr, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowTransparentForInput |
                           Qt::WindowDoesNotAcceptFocus | Qt::NoDropShadowWindowHint) {
  setAttribute(Qt::WA_TranslucentBackground);
  setAttribute(Qt::WA_ShowWithoutActivating);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFont(TYStyleKit::font(TextStyle::Medium));
}

TYTooltipWindow& TYTooltipWindow::sharedWindow() {
  // Windows must go before the application does, so nothing static owns it.
  static QPointer<TYTooltipWindow> window;
  if (!window) {
    window = new TYTooltipWindow;
    connect(qApp, &QCoreApplication::aboutToQuit, qApp, [] { delete window; });
  }
  return *window;
}

void TYTooltipWindow::updateTipWithString(const QString& text, QPoint position) {
  m_text = text;
  setAccessibleName(text);
  const int width = qCeil(TabularText::width(font(), text)) + 2 * kPadding;
  QRect plate(position.x() - width / 2, position.y() + kBelow, width, kHeight);
  const QScreen* screen = QGuiApplication::screenAt(position);
  if (screen) {
    const QRect room = screen->availableGeometry();
    plate.moveLeft(
        std::clamp(plate.left(), room.left(), std::max(room.left(), room.right() - width)));
    if (plate.bottom() > room.bottom()) plate.moveBottom(position.y() - kBelow);
  }
  setGeometry(plate);
  setMask(roundedRegion(rect(), kRadius));
  update();
}

void TYTooltipWindow::showTooltip() {
  show();
}

void TYTooltipWindow::hideTooltip() {
  hide();
}

void TYTooltipWindow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  DevicePixels(painter).box(rect(), TYStyleKit::colour(Token::Raised),
                            TYStyleKit::colour(Token::Border), kRadius);
  painter.setFont(font());
  painter.setPen(TYStyleKit::colour(Token::Text));
  TabularText::draw(painter, rect(), Qt::AlignCenter, m_text);
}

}  // namespace widgets
