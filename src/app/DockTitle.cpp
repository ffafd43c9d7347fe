#include "app/DockTitle.h"

#include <QDockWidget>
#include <QHBoxLayout>
#include <QPainter>
#include <QToolButton>

#include "widgets/DevicePixels.h"
#include "widgets/GlyphView.h"
#include "widgets/TokenLabel.h"

namespace app {

using widgets::Token;
using widgets::TYStyleKit;

namespace {

constexpr int titleHeight = 36;
constexpr int glyphSize = 16;
constexpr int margin = 12;

}  // namespace

DockTitle::DockTitle(QDockWidget& dock, const QString& glyph) : m_controls(new QHBoxLayout) {
  setFixedHeight(titleHeight);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(margin, 0, margin - 4, 0);
  row->setSpacing(10);
  row->addWidget(new widgets::GlyphView(glyph, glyphSize, Token::Text2));
  row->addWidget(
      new widgets::TokenLabel(dock.windowTitle(), widgets::TextStyle::Title, Token::Text), 1);
  m_controls->setSpacing(4);
  row->addLayout(m_controls);
  auto* close = new QToolButton;
  close->setIcon(TYStyleKit::image(QStringLiteral("Close")));
  close->setIconSize({glyphSize, glyphSize});
  close->setAutoRaise(true);
  close->setFocusPolicy(Qt::TabFocus);
  close->setToolTip(tr("Hide %1").arg(dock.windowTitle()));
  close->setAccessibleName(close->toolTip());
  connect(close, &QToolButton::clicked, &dock, &QWidget::close);
  row->addWidget(close);
  dock.setTitleBarWidget(this);
}

void DockTitle::addControl(QWidget* control) {
  m_controls->addWidget(control);
}

QSize DockTitle::sizeHint() const {
  return {QWidget::sizeHint().width(), titleHeight};
}

void DockTitle::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), TYStyleKit::colour(Token::Panel));
}

}  // namespace app
