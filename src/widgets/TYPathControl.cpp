#include "widgets/TYPathControl.h"

#include <QDir>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>

#include "widgets/DevicePixels.h"
#include "widgets/TYGlyph.h"
#include "widgets/TYStyleKit.h"

namespace widgets {
namespace {

constexpr int controlHeight = 24;
constexpr double radius = 4;
constexpr int padding = 8;
constexpr int glyphSize = 16;
constexpr int glyphGap = 6;
const QString divider = QStringLiteral(" › ");
const QString leftOut = QStringLiteral("… › ");

}  // namespace

TYPathControl::TYPathControl(QWidget* parent) : QWidget(parent) {
  setFixedHeight(controlHeight);
  setFocusPolicy(Qt::TabFocus);
  setMouseTracking(true);
  setFont(TYStyleKit::font(TextStyle::Body));
}

void TYPathControl::setPlaceholder(const QString& text) {
  m_placeholder = text;
  update();
}

void TYPathControl::setPath(const QString& path) {
  m_path = path;
  m_items.clear();
  m_current = -1;
  const QString home = QDir::homePath();
  QString left = QDir::cleanPath(path);
  const bool isInHome = left == home || left.startsWith(home + u'/');
  QString folder = isInHome ? home : QStringLiteral("/");
  if (!path.isEmpty()) {
    m_items.append({isInHome ? tr("Home") : QStringLiteral("/"), folder});
    left = isInHome ? left.mid(home.size()) : left;
    for (const QString& name : left.split(u'/', Qt::SkipEmptyParts)) {
      folder = QDir(folder).filePath(name);
      m_items.append({name, folder});
    }
  }
  setAccessibleDescription(path);
  updateGeometry();
  update();
}

QList<QRect> TYPathControl::places() const {
  const QFontMetrics metrics(font());
  const int gap = metrics.horizontalAdvance(divider);
  const int space = width() - 2 * padding - glyphSize - glyphGap;
  QList<int> widths;
  for (const Item& item : m_items) widths.append(metrics.horizontalAdvance(item.name));
  qsizetype first = 0;
  const auto needed = [&] {
    int sum = first > 0 ? metrics.horizontalAdvance(leftOut) : 0;
    for (qsizetype i = first; i < widths.size(); ++i) sum += widths.at(i) + (i > first ? gap : 0);
    return sum;
  };
  while (first + 1 < widths.size() && needed() > space) ++first;
  int x = padding + glyphSize + glyphGap + (first > 0 ? metrics.horizontalAdvance(leftOut) : 0);
  QList<QRect> result;
  for (qsizetype i = 0; i < widths.size(); ++i) {
    const int right = width() - padding;
    const int shown = i < first ? 0 : std::max(0, std::min(widths.at(i), right - x));
    result.append(QRect(x, 0, shown, height()));
    if (i >= first) x += widths.at(i) + gap;
  }
  return result;
}

int TYPathControl::itemAt(const QPoint& position) const {
  const QList<QRect> all = places();
  for (int i = 0; i < all.size(); ++i)
    if (all.at(i).contains(position)) return i;
  return -1;
}

void TYPathControl::setCurrent(int item) {
  if (m_current == item) return;
  m_current = item;
  setCursor(item >= 0 ? Qt::PointingHandCursor : Qt::ArrowCursor);
  update();
}

void TYPathControl::mouseMoveEvent(QMouseEvent* event) {
  setCurrent(itemAt(event->position().toPoint()));
}

void TYPathControl::mousePressEvent(QMouseEvent* event) {
  const int item = itemAt(event->position().toPoint());
  if (item >= 0 && event->button() == Qt::LeftButton) Q_EMIT itemClicked(m_items.at(item).path);
}

void TYPathControl::leaveEvent(QEvent*) {
  setCurrent(-1);
}

void TYPathControl::keyPressEvent(QKeyEvent* event) {
  const int last = static_cast<int>(m_items.size()) - 1;
  if (event->key() == Qt::Key_Left)
    setCurrent(std::max(0, (m_current < 0 ? last + 1 : m_current) - 1));
  else if (event->key() == Qt::Key_Right)
    setCurrent(std::min(last, m_current + 1));
  else if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Space) && m_current >= 0)
    Q_EMIT itemClicked(QString(m_items.at(m_current).path));
  else
    QWidget::keyPressEvent(event);
}

bool TYPathControl::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip && !m_path.isEmpty()) {
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                       QDir::toNativeSeparators(m_path), this);
    return true;
  }
  if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) update();
  return QWidget::event(event);
}

void TYPathControl::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const DevicePixels pixels(painter);
  pixels.box(rect(), TYStyleKit::colour(Token::Field),
             TYStyleKit::colour(hasFocus() ? Token::Accent : Token::Border), radius);
  TYGlyph::paint(painter, QStringLiteral("Folder"),
                 QRectF(padding, (height() - glyphSize) / 2.0, glyphSize, glyphSize),
                 TYStyleKit::colour(Token::Text2));
  const QRect line = rect().adjusted(padding + glyphSize + glyphGap, 0, -padding, 0);
  if (m_items.isEmpty()) {
    painter.setPen(TYStyleKit::colour(Token::Text3));
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, m_placeholder);
    return;
  }
  const QList<QRect> all = places();
  const bool isCut = all.size() > 1 && all.first().width() == 0;
  painter.setPen(TYStyleKit::colour(Token::Text3));
  if (isCut) painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, leftOut);
  for (int i = 0; i < all.size(); ++i) {
    if (all.at(i).width() == 0) continue;
    painter.setPen(TYStyleKit::colour(i == m_current ? Token::Accent : Token::Text));
    painter.drawText(
        all.at(i), Qt::AlignLeft | Qt::AlignVCenter,
        painter.fontMetrics().elidedText(m_items.at(i).name, Qt::ElideMiddle, all.at(i).width()));
    painter.setPen(TYStyleKit::colour(Token::Text3));
    if (i + 1 < all.size())
      painter.drawText(
          QPoint(all.at(i).right() + 1, (height() + painter.fontMetrics().capHeight()) / 2),
          divider);
  }
}

}  // namespace widgets
