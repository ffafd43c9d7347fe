#include "widgets/color/ColorPopover.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QToolButton>
#include <QVBoxLayout>

#include "widgets/DevicePixels.h"
#include "widgets/TYNumberField.h"
#include "widgets/TYStyleKit.h"
#include "widgets/color/ColorPlane.h"
#include "widgets/color/ColorRange.h"
#include "widgets/color/ColorSwatch.h"
#include "widgets/color/RecentColors.h"

namespace widgets {
namespace {

constexpr int kWidth = 236;
constexpr int kPadding = 12;
constexpr int kRadius = 6;

// Under Wayland no program may read the screen.
bool canReadScreen() {
  return !QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

QGradientStops hueStops() {
  QGradientStops stops;
  for (int i = 0; i <= 6; ++i) stops.append({i / 6.0, QColor::fromHsvF(float(i % 6) / 6.0F, 1, 1)});
  return stops;
}

}  // namespace

ColorPopover::ColorPopover(const QColor& color, bool hasAlpha, QWidget* parent,
                           const QList<QColor>& offers)
    : QWidget(parent, Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint),
      m_plane(new ColorPlane),
      m_hueRange(new ColorRange(tr("Hue"))),
      m_alphaRange(new ColorRange(tr("Opacity"))),
      m_hex(new QLineEdit),
      m_opacity(new TYNumberField) {
  setAttribute(Qt::WA_DeleteOnClose);
  setAttribute(Qt::WA_TranslucentBackground);
  setAccessibleName(tr("Color"));
  addEditors(hasAlpha, offers);
  setColor(color);
  setFixedWidth(kWidth);

  connect(m_plane, &ColorPlane::edited, this, [this](double saturation, double value) {
    changeTo(QColor::fromHsvF(float(m_hue), float(saturation), float(value), m_color.alphaF()));
  });
  connect(m_hueRange, &ColorRange::edited, this, [this](double hue) {
    m_hue = std::min(hue, 0.9999);
    changeTo(QColor::fromHsvF(float(m_hue), m_color.hsvSaturationF(), m_color.valueF(),
                              m_color.alphaF()));
  });
  const auto setAlpha = [this](double alpha) {
    QColor changed = m_color;
    changed.setAlphaF(float(alpha));
    changeTo(changed);
  };
  connect(m_alphaRange, &ColorRange::edited, this, setAlpha);
  connect(m_opacity, &TYValueField::valueEdited, this,
          [setAlpha](double percent) { setAlpha(percent / 100); });
  connect(m_hex, &QLineEdit::editingFinished, this, &ColorPopover::takeHex);
}

void ColorPopover::addEditors(bool hasAlpha, const QList<QColor>& offers) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
  column->setSpacing(10);
  column->addWidget(m_plane);
  column->addWidget(m_hueRange);
  column->addWidget(m_alphaRange);
  m_alphaRange->setVisible(hasAlpha);
  m_hueRange->setStops(hueStops());
  column->addLayout(entryRow(hasAlpha));
  const QList<QColor>& recent = RecentColors::shared().colors();
  if (!recent.isEmpty()) column->addLayout(swatchRow(recent));
  if (!offers.isEmpty()) column->addLayout(swatchRow(offers));
}

QHBoxLayout* ColorPopover::entryRow(bool hasAlpha) {
  auto* row = new QHBoxLayout;
  row->setSpacing(8);
  m_hex->setAccessibleName(tr("Hexadecimal"));
  m_opacity->setAccessibleName(tr("Opacity"));
  m_opacity->setRange(0, 100);
  m_opacity->setDecimals(0);
  m_opacity->setUnit(QStringLiteral("%"));
  m_opacity->setFixedWidth(64);
  m_opacity->setVisible(hasAlpha);
  row->addWidget(m_hex, 1);
  row->addWidget(m_opacity);
  if (canReadScreen()) {
    auto* dropper = new QToolButton;
    dropper->setIcon(TYStyleKit::image(QStringLiteral("Dropper")));
    dropper->setIconSize({16, 16});
    dropper->setToolTip(tr("Pick a color from the screen"));
    dropper->setAccessibleName(dropper->toolTip());
    connect(dropper, &QToolButton::clicked, this, &ColorPopover::startPicking);
    row->addWidget(dropper);
  }
  return row;
}

QHBoxLayout* ColorPopover::swatchRow(const QList<QColor>& colors) {
  auto* row = new QHBoxLayout;
  row->setSpacing(4);
  for (const QColor& color : colors) {
    auto* swatch = new ColorSwatch(color);
    connect(swatch, &QAbstractButton::clicked, this, [this, color] {
      setColor(color);
      Q_EMIT colorEdited(color);
    });
    row->addWidget(swatch);
  }
  row->addStretch();
  return row;
}

void ColorPopover::setColor(const QColor& color) {
  m_color = color.toRgb();
  if (m_color.hsvHueF() >= 0) m_hue = m_color.hsvHueF();
  showColor();
}

void ColorPopover::changeTo(const QColor& color) {
  m_color = color.toRgb();
  showColor();
  Q_EMIT colorEdited(m_color);
}

void ColorPopover::showColor() {
  m_plane->setColor(m_hue, m_color.hsvSaturationF(), m_color.valueF());
  m_hueRange->setFraction(m_hue);
  QColor from = m_color;
  QColor to = m_color;
  from.setAlpha(0);
  to.setAlpha(255);
  m_alphaRange->setStops({{0, from}, {1, to}});
  m_alphaRange->setFraction(m_color.alphaF());
  m_opacity->setValue(m_color.alphaF() * 100);
  m_hex->setProperty("invalid", false);
  m_hex->setText(hexText(m_color).left(7));
}

void ColorPopover::takeHex() {
  const QString text = m_hex->text();
  if (text == hexText(m_color).left(7)) return;
  QColor color = colorFromHex(text);
  m_hex->setProperty("invalid", !color.isValid());
  m_hex->update();
  if (!color.isValid()) return;
  const bool saysAlpha = text.trimmed().size() >= 8;
  if (!saysAlpha) color.setAlphaF(m_color.alphaF());
  setColor(color);
  Q_EMIT colorEdited(m_color);
}

QString ColorPopover::hexText(const QColor& color) {
  QString text = color.name(QColor::HexRgb).toUpper();
  if (color.alpha() < 255) text += QStringLiteral("%1").arg(color.alpha(), 2, 16, QLatin1Char('0'));
  return text.toUpper();
}

QColor ColorPopover::colorFromHex(const QString& text) {
  static const QRegularExpression form(
      QStringLiteral("^#?([0-9a-fA-F]{3}|[0-9a-fA-F]{6}|[0-9a-fA-F]{8})$"));
  const QString digits = form.match(text.trimmed()).captured(1);
  if (digits.isEmpty()) return {};
  QColor color(QLatin1Char('#') + digits.left(digits.size() == 8 ? 6 : digits.size()));
  if (digits.size() == 8) color.setAlpha(digits.right(2).toInt(nullptr, 16));
  return color;
}

void ColorPopover::startPicking() {
  m_picking = true;
  setCursor(Qt::CrossCursor);
  // As a pop-up it gets the clicks wherever they are.
  grabMouse(Qt::CrossCursor);
}

void ColorPopover::pickAt(QPoint position) {
  m_picking = false;
  releaseMouse();
  unsetCursor();
  QScreen* screen = QGuiApplication::screenAt(position);
  if (!screen) return;
  const QPoint local = position - screen->geometry().topLeft();
  const QImage pixel = screen->grabWindow(0, local.x(), local.y(), 1, 1).toImage();
  if (pixel.isNull()) return;
  setColor(pixel.pixelColor(0, 0));
  Q_EMIT colorEdited(m_color);
}

void ColorPopover::showBeside(const QRect& globalRect) {
  adjustSize();
  QPoint at(globalRect.left(), globalRect.bottom() + 5);
  if (const QScreen* screen = QGuiApplication::screenAt(globalRect.center())) {
    const QRect room = screen->availableGeometry();
    if (at.y() + height() > room.bottom()) at.setY(globalRect.top() - 4 - height());
    at.setX(std::clamp(at.x(), room.left(), std::max(room.left(), room.right() - width())));
  }
  move(at);
  setMask(roundedRegion(rect(), kRadius));
  show();
  m_hex->setFocus(Qt::PopupFocusReason);
  m_hex->selectAll();
}

void ColorPopover::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Escape:
      if (m_picking) {
        m_picking = false;
        releaseMouse();
        unsetCursor();
        return;
      }
      m_kept = false;
      close();
      return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (!m_hex->property("invalid").toBool()) close();
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

void ColorPopover::mousePressEvent(QMouseEvent* event) {
  if (m_picking) {
    pickAt(event->globalPosition().toPoint());
  } else if (!rect().contains(event->pos())) {
    close();
  }
}

void ColorPopover::closeEvent(QCloseEvent* event) {
  if (m_kept) takeHex();
  Q_EMIT finished(m_kept);
  QWidget::closeEvent(event);
}

void ColorPopover::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  DevicePixels(painter).box(rect(), TYStyleKit::colour(Token::Raised),
                            TYStyleKit::colour(Token::Border), kRadius);
}

}  // namespace widgets
