#include "widgets/TYSearchField.h"

#include <QKeyEvent>
#include <QPainter>

#include "widgets/TYGlyph.h"
#include "widgets/TYStyleKit.h"

namespace widgets {

TYSearchField::TYSearchField(QWidget* parent) : QLineEdit(parent) {
  setPlaceholderText(tr("Search"));
  setAccessibleName(tr("Search"));
  setClearButtonEnabled(true);
  setTextMargins(20, 0, 0, 0);
}

void TYSearchField::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && !text().isEmpty()) {
    clear();
    return;
  }
  QLineEdit::keyPressEvent(event);
}

void TYSearchField::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  QPainter painter(this);
  TYGlyph::paint(painter, QStringLiteral("Search"), QRectF(7, (height() - 16) / 2.0, 16, 16),
                 TYStyleKit::colour(isEnabled() ? Token::Text3 : Token::TextDisabled));
}

}  // namespace widgets
