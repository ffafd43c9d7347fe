#include "app/AboutSheet.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "widgets/TokenLabel.h"

namespace app {

using widgets::TextStyle;
using widgets::Token;
using widgets::TokenLabel;

namespace {

constexpr int sheetWidth = 380;
constexpr int iconSize = 64;

}  // namespace

AboutSheet::AboutSheet(QWidget* window) : TYSheet(window) {
  setAccessibleName(tr("About Tessary"));
  setSheetWidth(sheetWidth);
  auto* row = new QHBoxLayout;
  row->setSpacing(16);
  if (const QIcon icon = QApplication::windowIcon(); !icon.isNull()) {
    auto* picture = new QLabel;
    picture->setPixmap(icon.pixmap(QSize(iconSize, iconSize), devicePixelRatioF()));
    row->addWidget(picture, 0, Qt::AlignTop);
  }
  auto* column = new QVBoxLayout;
  column->setSpacing(4);
  column->addWidget(new TokenLabel(QStringLiteral("Tessary"), TextStyle::SheetTitle, Token::Text));
  column->addWidget(new TokenLabel(tr("Version %1").arg(QApplication::applicationVersion()),
                                   TextStyle::Body, Token::Text2));
  column->addSpacing(8);
  for (const QString& line :
       {tr("Editor for broadcast graphics templates."), tr("Free software under the MIT licence."),
        tr("Drawn with Qt %1.").arg(QString::fromLatin1(qVersion()))})
    column->addWidget(new TokenLabel(line, TextStyle::Body, Token::Text2));
  row->addLayout(column, 1);
  body()->addLayout(row);
  connect(addButton(QStringLiteral("Ok"), true), &QPushButton::clicked, this,
          [this] { closeSheet(); });
}

}  // namespace app
