#include "widgets/TYKeyDiamond.h"

#include <QPainter>

#include "widgets/TYGlyph.h"
#include "widgets/TYStyleKit.h"

namespace widgets {
namespace {

Token token(TYKeyDiamond::State state, bool hovered) {
  switch (state) {
    case TYKeyDiamond::State::Still:
      return hovered ? Token::Text : Token::Text3;
    case TYKeyDiamond::State::Animated:
      return hovered ? Token::Text : Token::Keyframe;
    case TYKeyDiamond::State::KeyHere:
      return Token::KeyframeSelected;
  }
  return Token::Text3;
}

}  // namespace

TYKeyDiamond::TYKeyDiamond(QWidget* parent) : QAbstractButton(parent) {
  setAttribute(Qt::WA_Hover);
  setFocusPolicy(Qt::TabFocus);
  setFixedSize(sizeHint());
  setState(State::Still);
}

void TYKeyDiamond::setState(State state) {
  if (state == m_state) return;
  m_state = state;
  const QString words = state == State::Still      ? tr("Not animated")
                        : state == State::Animated ? tr("Animated")
                                                   : tr("Key frame at this time");
  setAccessibleName(words);
  setToolTip(words);
  update();
}

void TYKeyDiamond::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Token colour = isEnabled() ? token(m_state, underMouse()) : Token::TextDisabled;
  TYGlyph::paint(painter,
                 m_state == State::Still ? QStringLiteral("KeyOff") : QStringLiteral("KeyOn"),
                 rect(), TYStyleKit::colour(colour));
}

}  // namespace widgets
