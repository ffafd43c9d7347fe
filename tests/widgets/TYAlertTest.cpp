#include "widgets/TYAlert.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>

#include "widgets/TYProgressSheet.h"

using namespace widgets;
using foundation::UserDefaults;

namespace {

class TYAlertTest : public testing::Test {
 protected:
  TYAlertTest() : defaults(folder.filePath(QStringLiteral("settings.ini"))), field(new QLineEdit) {
    auto* column = new QVBoxLayout(&window);
    column->addWidget(field);
    window.resize(700, 400);
    window.show();
    window.activateWindow();
    field->setFocus();
    QCoreApplication::processEvents();
    message.title = QStringLiteral("Save Document");
    message.text = QStringLiteral("To make paths relative you must first save this document.");
  }

  TYAlert* begin() {
    return TYAlert::begin(
        &window, message, [this](TYAlert::Answer answer) { answers.append(answer); }, defaults);
  }
  static void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

  QTemporaryDir folder;
  UserDefaults defaults;
  QWidget window;
  QLineEdit* field;
  TYAlert::Message message;
  QList<TYAlert::Answer> answers;
};

}  // namespace

TEST_F(TYAlertTest, returnConfirmsAndTheFocusComesBack) {
  const QPointer<TYAlert> alert = begin();
  ASSERT_TRUE(alert && alert->isVisible());
  EXPECT_EQ(alert->size(), window.size());
  EXPECT_FALSE(field->hasFocus());
  EXPECT_TRUE(answers.isEmpty());
  press(Qt::Key_Return);
  EXPECT_EQ(answers, QList{TYAlert::Answer::Default});
  EXPECT_TRUE(field->hasFocus());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(alert);
}

TEST_F(TYAlertTest, escapeAnswersWithTheAlternative) {
  message.alternateButton = QStringLiteral("Cancel");
  begin();
  press(Qt::Key_Escape);
  EXPECT_EQ(answers, QList{TYAlert::Answer::Alternate});
}

TEST_F(TYAlertTest, tabStaysWithinTheSheetAndReturnPressesTheFocusedButton) {
  message.alternateButton = QStringLiteral("Cancel");
  message.otherButton = QStringLiteral("Discard");
  TYAlert* alert = begin();
  QSet<QWidget*> visited;
  for (int i = 0; i < 6; ++i) {
    press(Qt::Key_Tab);
    EXPECT_TRUE(alert->isAncestorOf(QApplication::focusWidget()));
    visited.insert(QApplication::focusWidget());
  }
  EXPECT_EQ(visited.size(), 3);
  for (QPushButton* button : alert->findChildren<QPushButton*>())
    if (button->text() == message.otherButton) button->setFocus();
  press(Qt::Key_Return);
  EXPECT_EQ(answers, QList{TYAlert::Answer::Other});
}

TEST_F(TYAlertTest, theWindowBelowRests) {
  QShortcut shortcut(QKeySequence(Qt::CTRL | Qt::Key_K), &window);
  QSignalSpy activated(&shortcut, &QShortcut::activated);
  TYAlert* alert = begin();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_K, Qt::ControlModifier);
  QTest::mouseClick(alert, Qt::LeftButton, {}, QPoint(2, 399));
  EXPECT_EQ(activated.size(), 0);
  EXPECT_FALSE(field->hasFocus());
  EXPECT_TRUE(alert->isVisible());
  window.resize(800, 500);
  EXPECT_EQ(alert->size(), QSize(800, 500));
}

TEST_F(TYAlertTest, aMessageThatIsNotWantedAgainAnswersByItselfLater) {
  message.preferencesKey = QStringLiteral("suppressSaveDocument");
  TYAlert* alert = begin();
  alert->findChild<QCheckBox*>()->click();
  press(Qt::Key_Return);
  EXPECT_TRUE(TYAlert::isSuppressed(message.preferencesKey, defaults));
  EXPECT_EQ(begin(), nullptr);
  EXPECT_EQ(answers.size(), 1);
  QCoreApplication::processEvents();
  EXPECT_EQ(answers.size(), 2);
}

TEST_F(TYAlertTest, refusingKeepsTheMessage) {
  message.preferencesKey = QStringLiteral("suppressSaveDocument");
  message.alternateButton = QStringLiteral("Cancel");
  begin()->findChild<QCheckBox*>()->click();
  press(Qt::Key_Escape);
  EXPECT_FALSE(TYAlert::isSuppressed(message.preferencesKey, defaults));
}

TEST_F(TYAlertTest, aSecondMessageWaitsForTheFirst) {
  TYAlert* first = begin();
  TYAlert* second = begin();
  EXPECT_TRUE(first->isVisible());
  EXPECT_FALSE(second->isVisible());
  press(Qt::Key_Return);
  EXPECT_TRUE(second->isVisible());
  press(Qt::Key_Return);
  EXPECT_EQ(answers.size(), 2);
  EXPECT_TRUE(field->hasFocus());
}

TEST_F(TYAlertTest, progressCanBeStoppedOnce) {
  auto* sheet = new TYProgressSheet(&window, QStringLiteral("Exporting"));
  QSignalSpy stops(sheet, &TYProgressSheet::cancelRequested);
  sheet->present();
  sheet->setFraction(0.5);
  press(Qt::Key_Escape);
  press(Qt::Key_Escape);
  EXPECT_EQ(stops.size(), 1);
  EXPECT_TRUE(sheet->isCancelled());
  EXPECT_TRUE(sheet->isVisible());
  sheet->closeSheet();
  EXPECT_TRUE(field->hasFocus());
}

TEST_F(TYAlertTest, staysInTheMiddleOfAWindowThatGrowsWhileItOpens) {
  const TYAlert* alert = begin();
  ASSERT_TRUE(alert);
  window.resize(1200, 600);
  QTest::qWait(250);
  const auto* panel = alert->findChild<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
  EXPECT_NEAR(panel->geometry().center().x(), 600, 1);
}
