#include "widgets/TYSheet.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPropertyAnimation>
#include <QPushButton>
#include <QVBoxLayout>

#include "widgets/DevicePixels.h"
#include "widgets/TYStyleKit.h"

namespace widgets {
namespace {

constexpr int kPadding = 20;
constexpr int kFromTop = 24;
constexpr int kSideRoom = 24;
constexpr double kRadius = 10;
constexpr int kShadow = 28;
constexpr int kOpeningInMilliseconds = 120;
const QColor kVeil(0, 0, 0, 115);

// The sheets of a window in the order in which they were made.
QList<TYSheet*> sheetsOf(const QWidget* window) {
  return window->findChildren<TYSheet*>(QString(), Qt::FindDirectChildrenOnly);
}

void drawShadow(QPainter& painter, const QRectF& sheet) {
  QColor colour = TYStyleKit::colour(Token::Shadow);
  colour.setAlphaF(float(colour.alphaF() / kShadow * 1.6));
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour);
  for (int reach = 2; reach <= kShadow; reach += 2) {
    const QRectF around = sheet.adjusted(-reach, -reach / 2.0 + 6, reach, reach + 4);
    painter.drawRoundedRect(around, kRadius + reach, kRadius + reach);
  }
}

}  // namespace

TYSheet::TYSheet(QWidget* window)
    : QWidget(window->window()),
      m_panel(new QWidget(this)),
      m_body(new QVBoxLayout),
      m_footer(new QHBoxLayout) {
  hide();
  setFocusPolicy(Qt::StrongFocus);
  auto* column = new QVBoxLayout(m_panel);
  column->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
  column->setSpacing(18);
  m_body->setSpacing(6);
  m_footer->setSpacing(8);
  m_footer->addStretch();
  column->addLayout(m_body);
  column->addLayout(m_footer);
  m_panel->setAutoFillBackground(false);
  parentWidget()->installEventFilter(this);
}

TYSheet::~TYSheet() = default;

QPushButton* TYSheet::addButton(const QString& text, bool isDefault) {
  auto* button = new QPushButton(text);
  button->setProperty("large", true);
  button->setAutoDefault(false);
  m_footer->addWidget(button);
  if (isDefault) {
    button->setDefault(true);
    m_default = button;
  }
  return button;
}

void TYSheet::setFooterWidget(QWidget* widget) {
  m_footer->insertWidget(0, widget);
}

void TYSheet::present() {
  for (const TYSheet* sheet : sheetsOf(parentWidget())) m_isWaiting |= sheet->m_isOpen;
  if (!m_isWaiting) open();
}

void TYSheet::open() {
  m_isOpen = true;
  m_isWaiting = false;
  m_focusBefore = parentWidget()->focusWidget();
  show();
  raise();
  place();
  QWidget* first = m_panel->nextInFocusChain();
  while (first != m_panel && m_panel->isAncestorOf(first) && !(first->focusPolicy() & Qt::TabFocus))
    first = first->nextInFocusChain();
  (m_default ? static_cast<QWidget*>(m_default) : first)->setFocus(Qt::OtherFocusReason);
  if (TYStyleKit::reducedMotion()) return;
  auto* slide = new QPropertyAnimation(m_panel, "pos", this);
  m_slide = slide;
  slide->setDuration(kOpeningInMilliseconds);
  slide->setStartValue(m_panel->pos() - QPoint(0, kFromTop));
  slide->setEndValue(m_panel->pos());
  slide->setEasingCurve(QEasingCurve::OutCubic);
  connect(slide, &QPropertyAnimation::valueChanged, this, [this] { update(); });
  slide->start(QAbstractAnimation::DeleteWhenStopped);
}

void TYSheet::closeSheet() {
  QWidget* window = parentWidget();
  m_isOpen = false;
  hide();
  setParent(nullptr);
  deleteLater();
  if (m_focusBefore) m_focusBefore->setFocus(Qt::OtherFocusReason);
  for (TYSheet* sheet : sheetsOf(window)) {
    if (!sheet->m_isWaiting) continue;
    sheet->open();
    break;
  }
}

QRect TYSheet::sheetRect() const {
  const int wanted = std::max(m_width, m_panel->minimumSizeHint().width());
  const int width = std::min(wanted, this->width() - 2 * kSideRoom);
  int height = m_panel->sizeHint().height();
  if (m_panel->layout()->hasHeightForWidth()) height = m_panel->layout()->heightForWidth(width);
  height = std::min(height, this->height() - kFromTop);
  return {(this->width() - width) / 2, kFromTop, width, height};
}

void TYSheet::place() {
  // It would go on to where the panel was to be before.
  if (m_slide) m_slide->stop();
  setGeometry(parentWidget()->rect());
  m_panel->setGeometry(sheetRect());
}

bool TYSheet::eventFilter(QObject* watched, QEvent* event) {
  if (m_isOpen && event->type() == QEvent::Resize) place();
  return QWidget::eventFilter(watched, event);
}

bool TYSheet::event(QEvent* event) {
  switch (event->type()) {
    // Keys and clicks that the sheet does not use end here; the window's shortcuts rest.
    case QEvent::ShortcutOverride:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
      event->accept();
      return true;
    case QEvent::LayoutRequest:
      if (m_isOpen) place();
      break;
    default:
      break;
  }
  return QWidget::event(event);
}

void TYSheet::keyPressEvent(QKeyEvent* event) {
  event->accept();
  if (event->key() == Qt::Key_Escape) {
    cancelled();
  } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    auto* focused = qobject_cast<QPushButton*>(focusWidget());
    QPushButton* pressed = focused ? focused : m_default.data();
    if (pressed && pressed->isEnabled()) pressed->click();
  }
}

// Tab goes round within the sheet.
bool TYSheet::focusNextPrevChild(bool next) {
  QWidget* at = focusWidget() ? focusWidget() : m_panel;
  for (QWidget* to = next ? at->nextInFocusChain() : at->previousInFocusChain(); to != at;
       to = next ? to->nextInFocusChain() : to->previousInFocusChain()) {
    const bool takes = (to->focusPolicy() & Qt::TabFocus) && to->isEnabled() && to->isVisible();
    if (takes && m_panel->isAncestorOf(to)) {
      to->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
      break;
    }
  }
  return true;
}

void TYSheet::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), kVeil);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF sheet = m_panel->geometry();
  drawShadow(painter, sheet);
  DevicePixels(painter).box(sheet, TYStyleKit::colour(Token::Panel),
                            TYStyleKit::colour(Token::Border), kRadius);
}

}  // namespace widgets
