// Shows every control of the widgets layer in its states, for the eye and for pictures:
//   widgets_gallery [--theme dark|light|contrast] [--shot FILE.png]
//                   [--page controls|bars|glyphs|sheet|menu|combo|tip|colour|ring]
#include <QApplication>
#include <QComboBox>
#include <QCommandLineParser>
#include <QFocusEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QToolTip>

#include "gallery/Pages.h"
#include "widgets/TYAlert.h"
#include "widgets/TYColorWell.h"
#include "widgets/TYSplitter.h"
#include "widgets/TYStyleKit.h"
#include "widgets/TYTooltipWindow.h"
#include "widgets/TYValueField.h"
#include "widgets/color/RecentColors.h"

namespace {

using namespace widgets;

void fillMenus(QMainWindow& window) {
  QMenu* file = window.menuBar()->addMenu(QStringLiteral("&File"));
  QMenu* edit = window.menuBar()->addMenu(QStringLiteral("&Edit"));
  window.menuBar()->addMenu(QStringLiteral("Component"));
  file->addAction(QStringLiteral("Open..."))->setShortcut(QKeySequence::Open);
  edit->addAction(QStringLiteral("Undo Move Headline"))->setShortcut(QKeySequence::Undo);
  edit->addAction(QStringLiteral("Redo Change Color"))
      ->setShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+Z")));
  edit->addSeparator();
  QAction* cut = edit->addAction(QStringLiteral("Cut"));
  cut->setShortcut(QKeySequence::Cut);
  cut->setEnabled(false);
  QAction* grid = edit->addAction(QStringLiteral("Show Guides"));
  grid->setCheckable(true);
  grid->setChecked(true);
  edit->addAction(TYStyleKit::image(QStringLiteral("RoundedRectangle")),
                  QStringLiteral("Rounded Rectangle"));
  edit->addMenu(QStringLiteral("Arrange"))->addAction(QStringLiteral("Forward"));
}

QWidget* content(const QString& page) {
  if (page == QLatin1String("glyphs")) return gallery::glyphPage();
  if (page == QLatin1String("bars")) return gallery::barsPage();
  auto* splitter = new TYSplitter(Qt::Horizontal);
  for (QWidget* part : {gallery::inspectorPage(), gallery::mixedPage(), gallery::standardPage()}) {
    part->setAutoFillBackground(true);
    splitter->addWidget(part);
  }
  splitter->setSizes({340, 340, 420});
  return splitter;
}

void showAlert(QMainWindow& window) {
  TYAlert::Message message;
  message.title = QStringLiteral("Embed Resources");
  message.text =
      QStringLiteral("The following resources were embedded in the composition document:");
  message.list = {QStringLiteral("Image\tHome › Pictures › sunrise-logo.png"),
                  QStringLiteral("Document\tHome › Videos › bridge-dawn.mov")};
  message.preferencesKey = QStringLiteral("galleryAlert");
  message.alternateButton = QStringLiteral("Cancel");
  TYAlert::begin(&window, message);
}

void stage(QMainWindow& window, const QString& page) {
  if (auto* focus = window.findChild<QLineEdit*>(QStringLiteral("focus"))) {
    focus->setFocus();
    focus->selectAll();
  }
  if (auto* wrong = window.findChild<QLineEdit*>(QStringLiteral("wrong"))) {
    QFocusEvent out(QEvent::FocusOut);
    QApplication::sendEvent(wrong, &out);
  }
  if (page == QLatin1String("ring"))
    window.findChild<QPushButton*>(QStringLiteral("ring"))->setFocus(Qt::TabFocusReason);
  if (page == QLatin1String("sheet")) showAlert(window);
  if (page == QLatin1String("menu")) {
    QMenu* menu = window.menuBar()->actions().at(1)->menu();
    menu->popup(window.mapToGlobal(QPoint(44, 26)));
    menu->setActiveAction(menu->actions().constFirst());
    TYTooltipWindow::sharedWindow().updateTipWithString(QStringLiteral("00:00:01:08"),
                                                        window.mapToGlobal(QPoint(500, 300)));
    TYTooltipWindow::sharedWindow().showTooltip();
  }
  if (page == QLatin1String("combo")) window.findChild<QComboBox*>()->showPopup();
  if (page == QLatin1String("tip"))
    QToolTip::showText(window.mapToGlobal(QPoint(400, 300)),
                       QStringLiteral("Select two or more components."), &window);
  if (page == QLatin1String("colour")) {
    RecentColors::shared().add(Qt::red);
    RecentColors::shared().add(QColor(79, 90, 226));
    RecentColors::shared().add(QColor(255, 176, 46, 120));
    window.findChild<TYColorWell*>()->click();
  }
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QCommandLineParser parser;
  const QCommandLineOption theme(QStringLiteral("theme"), {}, QStringLiteral("name"),
                                 QStringLiteral("dark"));
  const QCommandLineOption page(QStringLiteral("page"), {}, QStringLiteral("name"),
                                QStringLiteral("controls"));
  const QCommandLineOption shot(QStringLiteral("shot"), {}, QStringLiteral("file"));
  parser.addOptions({theme, page, shot});
  parser.process(application);

  TYStyleKit::install(application);
  const bool light = parser.value(theme) == QLatin1String("light");
  TYStyleKit::shared().setAppearance(light ? TYStyleKit::Appearance::Light
                                           : TYStyleKit::Appearance::Dark);
  if (parser.value(theme) == QLatin1String("contrast"))
    TYStyleKit::shared().setContrast(TYStyleKit::Contrast::High);

  QMainWindow window;
  window.setWindowTitle(QStringLiteral("Widgets"));
  fillMenus(window);
  window.setCentralWidget(content(parser.value(page)));
  window.resize(1180, 800);
  window.move(0, 0);
  window.show();
  window.activateWindow();
  QTimer::singleShot(200, &window, [&] { stage(window, parser.value(page)); });
  if (parser.isSet(shot))
    QTimer::singleShot(900, &window, [&] {
      const QRect r = window.geometry();
      window.screen()->grabWindow(0, r.x(), r.y(), r.width(), r.height()).save(parser.value(shot));
      QApplication::quit();
    });
  return QApplication::exec();
}
