#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QTest>

#include "app/AppDelegate.h"
#include "app/StatusLine.h"
#include "app/TYWindowController.h"
#include "canvas/CompositionView.h"
#include "model/Composition.h"
#include "widgets/TYAlert.h"

namespace app {

namespace {

class WindowLayoutTest : public testing::Test {
 protected:
  WindowLayoutTest() { start(); }

  void start() {
    delegate.reset();
    delegate = std::make_unique<AppDelegate>(
        defaults, document::RecoveryStore(folder.filePath(QStringLiteral("state"))));
    delegate->start({});
    settle();
  }
  static void settle() {
    for (int i = 0; i < 5; ++i) QApplication::processEvents();
  }
  [[nodiscard]] TYWindowController& window() const {
    return *delegate->windowOf(*delegate->controller().documents().last());
  }
  void resize(int width) {
    window().setWindowState(Qt::WindowNoState);
    window().setMinimumSize(1, 1);
    window().resize(width, 720);
    settle();
  }
  [[nodiscard]] QStringList shownDocks() const {
    QStringList names;
    for (const QDockWidget* dock : window().findChildren<QDockWidget*>())
      if (!dock->isHidden()) names.append(dock->objectName());
    names.sort();
    return names;
  }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : &window(), key,
                    modifiers);
    settle();
  }

  QTemporaryDir folder;
  foundation::UserDefaults defaults{folder.filePath(QStringLiteral("defaults.conf"))};
  std::unique_ptr<AppDelegate> delegate;
};

bool isInteractive(const QWidget& widget) {
  return qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QComboBox*>(&widget) ||
         qobject_cast<const QLineEdit*>(&widget) ||
         qobject_cast<const QAbstractItemView*>(&widget) ||
         (widget.focusPolicy() & Qt::TabFocus) != 0;
}

/// Parts that another control is made of are read with it.
bool isPart(const QWidget& widget) {
  for (const QWidget* parent = widget.parentWidget(); parent; parent = parent->parentWidget())
    if (qobject_cast<const QComboBox*>(parent) || qobject_cast<const QLineEdit*>(parent) ||
        qobject_cast<const QMenuBar*>(parent) || qobject_cast<const QAbstractItemView*>(parent))
      return true;
  return widget.objectName().startsWith(QStringLiteral("qt_"));
}

void expectNames(const QWidget& window) {
  for (QWidget* widget : window.findChildren<QWidget*>()) {
    if (!isInteractive(*widget) || isPart(*widget) || !widget->isVisibleTo(&window)) continue;
    QAccessibleInterface* told = QAccessible::queryAccessibleInterface(widget);
    ASSERT_TRUE(told);
    const std::string what =
        QStringLiteral("%1 %2 in %3")
            .arg(QString::fromLatin1(widget->metaObject()->className()), widget->objectName(),
                 QString::fromLatin1(widget->parent()->metaObject()->className()))
            .toStdString();
    EXPECT_FALSE(told->text(QAccessible::Name).isEmpty()) << what;
    EXPECT_NE(told->role(), QAccessible::NoRole) << what;
    EXPECT_NE(told->role(), QAccessible::Client) << what;
  }
}

void expectMnemonics(const QList<QAction*>& actions, const QString& menu) {
  QMap<QChar, QString> taken;
  for (QAction* action : actions) {
    if (action->isSeparator()) continue;
    if (action->menu()) expectMnemonics(action->menu()->actions(), action->text());
    const qsizetype at = action->text().indexOf(u'&');
    if (at < 0) continue;
    const QChar key = action->text().at(at + 1).toLower();
    EXPECT_FALSE(taken.contains(key)) << menu.toStdString() << ": " << action->text().toStdString()
                                      << " and " << taken.value(key).toStdString();
    taken.insert(key, action->text());
  }
}

}  // namespace

TEST_F(WindowLayoutTest, AMaximisedWindowComesBackAndShowsSheets) {
  window().findChild<QDockWidget*>(QStringLiteral("timeline"))->hide();
  EXPECT_TRUE(window().isMaximized());
  window().close();
  settle();
  // The kept layout is that of a larger window than the one that is made first.
  start();
  EXPECT_TRUE(window().isMaximized());
  EXPECT_THAT(shownDocks(), testing::Not(testing::Contains(QStringLiteral("timeline"))));
  window().showWarnings(QStringLiteral("Title"), {QStringLiteral("A warning")});
  settle();
  EXPECT_TRUE(window().findChild<widgets::TYAlert*>()->isVisible());
}

TEST_F(WindowLayoutTest, PanelsMakeRoomInNarrowWindowsAndComeBack) {
  resize(1180);
  const QStringList all = shownDocks();
  EXPECT_THAT(all, testing::SizeIs(4));
  resize(1100);
  EXPECT_THAT(shownDocks(), testing::Not(testing::Contains(QStringLiteral("library"))));
  EXPECT_THAT(shownDocks(), testing::Contains(QStringLiteral("inspector")));
  resize(640);
  EXPECT_EQ(shownDocks(), QStringList{QStringLiteral("timeline")});
  EXPECT_EQ(window().width(), 640);
  // What its user shows there stays.
  window().findChild<QDockWidget*>(QStringLiteral("library"))->show();
  resize(660);
  EXPECT_THAT(shownDocks(), testing::Contains(QStringLiteral("library")));
  resize(1300);
  EXPECT_EQ(shownDocks(), all);
}

TEST_F(WindowLayoutTest, WhatWasFoldedAwayIsThereInTheNextWideWindow) {
  resize(1180);
  const QStringList all = shownDocks();
  resize(640);
  window().close();
  settle();
  start();
  resize(1300);
  EXPECT_EQ(shownDocks(), all);
}

TEST_F(WindowLayoutTest, AFormatThatIsNotKnownHasNoSizeAndNoZoomThatCouldBeShown) {
  window().composition()->setZoomMode(0);  // to fit
  window().composition()->setVideoResolution(model::VideoResolution(QStringLiteral("HD 999z")));
  settle();
  for (const QLabel* label : window().findChild<StatusLine*>()->findChildren<QLabel*>())
    EXPECT_FALSE(label->text().contains(u'-') || label->text().contains(QStringLiteral("0 ×")))
        << label->text().toStdString();
}

TEST_F(WindowLayoutTest, AHintDoesNotWidenItsWindow) {
  resize(640);
  window().findChild<StatusLine*>()->showHint(QString(400, u'm'));
  settle();
  EXPECT_EQ(window().width(), 640);
}

TEST_F(WindowLayoutTest, QuittingWithUnsavedChangesKeepsTheLayoutToo) {
  window().composition()->setDuration(9);
  window().findChild<QDockWidget*>(QStringLiteral("timeline"))->hide();
  window().services().quit();
  settle();
  for (QAbstractButton* button : window().findChildren<QAbstractButton*>())
    if (button->text() == QLatin1String("Don't Save")) button->click();
  settle();
  start();
  EXPECT_THAT(shownDocks(), testing::Not(testing::Contains(QStringLiteral("timeline"))));
}

TEST_F(WindowLayoutTest, TheKeyboardGoesFromPanelToPanel) {
  resize(1300);
  window().activateWindow();
  window().view().setFocus();
  QWidget* const from = QApplication::focusWidget();
  ASSERT_EQ(from, &window().view());
  int steps = 0;
  do {
    press(Qt::Key_F6);
    ++steps;
  } while (QApplication::focusWidget() != from && steps < 20);
  EXPECT_GE(steps, 4);
  EXPECT_LT(steps, 20);
  press(Qt::Key_F6);
  QWidget* const after = QApplication::focusWidget();
  EXPECT_NE(after, from);
  press(Qt::Key_F6, Qt::ShiftModifier);
  EXPECT_EQ(QApplication::focusWidget(), from);
  // Back to where it was in there.
  press(Qt::Key_F6);
  EXPECT_EQ(QApplication::focusWidget(), after);
}

TEST_F(WindowLayoutTest, EveryControlHasANameAndARole) {
  resize(1300);
  window().addStandardComponent(QStringLiteral("TextComponent"));
  settle();
  expectNames(window());
  window().services().showPreferences();
  settle();
  for (QWidget* other : QApplication::topLevelWidgets())
    if (other != &window() && other->isVisible() && other->isWindow()) expectNames(*other);
}

TEST_F(WindowLayoutTest, MnemonicsAreOnePerMenu) {
  expectMnemonics(window().findChild<QMenuBar*>()->actions(), QStringLiteral("menu bar"));
}

}  // namespace app
