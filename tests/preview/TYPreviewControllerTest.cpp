#include "preview/TYPreviewController.h"

#include <gmock/gmock.h>

#include <QPushButton>

#include "PreviewFixture.h"
#include "foundation/UserDefaults.h"
#include "preview/DisplayName.h"
#include "preview/FieldsPanel.h"
#include "support/LogGuard.h"

namespace preview {

namespace {

using Light = StatusLamp::Light;

TEST_F(PreviewTest, WaitsPlaysAndEndsAndSpaceIsTheTriggerWhileItIsHeld) {
  const auto document = graphic(0.6, 0.2);
  TYPreviewController::togglePreviewForCompositionDocument(*document);
  EXPECT_TRUE(player().isVisible());
  EXPECT_TRUE(player().windowFlags() & Qt::WindowStaysOnTopHint);
  EXPECT_EQ(temporaryFiles(), QStringList());
  EXPECT_EQ(player().windowTitle(), QStringLiteral("Preview – Untitled"));
  // From the beginning: that nothing is over yet is not told otherwise for a moment.
  EXPECT_EQ(status(), playing);
  // Nobody waits for it yet.
  QTest::keyClick(&player(), Qt::Key_Space);
  ASSERT_TRUE(reaches(waiting));
  EXPECT_EQ(player().statusRow().light(), Light::Waiting);
  EXPECT_TRUE(player().statusRow().findChild<QPushButton*>()->isVisible());
  QTest::qWait(150);
  EXPECT_EQ(status(), waiting);
  QTest::keyPress(&player(), Qt::Key_Space);
  ASSERT_TRUE(reaches(playing));
  EXPECT_FALSE(player().statusRow().findChild<QPushButton*>()->isVisible());
  QTest::keyRelease(&player(), Qt::Key_Space);
  ASSERT_TRUE(reaches(finished));
  EXPECT_EQ(player().statusRow().light(), Light::Finished);
  EXPECT_FALSE(player().setTrigger());

  QTest::keyClick(&player(), Qt::Key_R);
  ASSERT_TRUE(reaches(waiting));
  QTest::mouseClick(player().statusRow().findChild<QPushButton*>(), Qt::LeftButton);
  ASSERT_TRUE(reaches(finished));
}

TEST_F(PreviewTest, ThePictureIsShownWithItsBackgroundInAWindowOfItsSize) {
  const auto document = graphic(5);
  document->composition()->setBackgroundMode(model::BackgroundMode::SolidColor);
  document->composition()->setBackgroundColor(foundation::Color(1, 0, 0));
  TYPreviewController::togglePreviewForCompositionDocument(*document);
  ASSERT_TRUE(QTest::qWaitFor([] { return player().view().picture() != nullptr; }, 10'000));
  const QSize screen = player().screen()->availableGeometry().size();
  EXPECT_EQ(player().width() / double(player().height() - 32), 720 / 576.0);
  EXPECT_LE(player().height(), screen.height());
  const QImage shown = player().grab().toImage();
  EXPECT_EQ(shown.pixelColor(300, 200), QColor(Qt::red));
  // A larger picture than the screen is shown smaller, and says so.
  document->composition()->setVideoResolution(model::VideoResolution(QStringLiteral("UHD p50")));
  TYPreviewController::togglePreviewForCompositionDocument(*document);
  settle();
  EXPECT_LE(player().height(), screen.height());
  const double scale = player().view().geometry().factor();
  EXPECT_LT(scale, 1);
  EXPECT_EQ(player().statusRow().scaleText(), QStringLiteral("%1 %").arg(qRound(scale * 100)));
}

TEST_F(PreviewTest, ASlideshowGoesFromOneDocumentToTheNextAndBeginsAnew) {
  const auto a = graphic(0.2);
  const auto b = graphic(0.3);
  const auto c = graphic(0.2);
  TYPreviewController::runSlideshowForCompositions({a.get(), b.get(), c.get()});
  const auto shows = [](const CompositionDocument& document) {
    return QTest::qWaitFor([&] { return player().currentDocument() == &document; }, 10'000);
  };
  EXPECT_TRUE(shows(*a));
  EXPECT_TRUE(shows(*b));
  // One that is closed while it plays is left out from then on.
  TYPreviewController::documentWillClose(*b);
  EXPECT_EQ(player().statusRow().notice(), QStringLiteral("The document was closed"));
  EXPECT_TRUE(shows(*c));
  EXPECT_TRUE(shows(*a));
  EXPECT_TRUE(shows(*c));
  // Of one document: it plays again and again.
  TYPreviewController::runSlideshowForCompositions({a.get()});
  QTest::qWait(500);
  EXPECT_TRUE(reaches(playing));
  TYPreviewController::togglePreviewForCompositionDocument(*b);
  ASSERT_TRUE(reaches(finished));
  QTest::qWait(50);
  EXPECT_EQ(player().currentDocument(), b.get());
}

TEST_F(PreviewTest, WhatCannotBeExportedOrReadIsToldInTheWindow) {
  CompositionDocument empty;
  TYPreviewController::togglePreviewForCompositionDocument(empty);
  EXPECT_TRUE(player().isVisible());
  EXPECT_EQ(player().view().failureTitle(), QStringLiteral("\"Untitled\" could not be exported"));
  EXPECT_EQ(player().view().failureText(), QStringLiteral("The document holds no composition"));
  EXPECT_EQ(player().statusRow().light(), Light::Failed);
  QTest::keyClick(&player(), Qt::Key_Space);
  QTest::keyClick(&player(), Qt::Key_R);
  // No place for the file.
  const auto document = graphic(5);
  qputenv("TMPDIR", "/dev/null");
  TYPreviewController::togglePreviewForCompositionDocument(*document);
  EXPECT_EQ(status(), QStringLiteral("\"Untitled\" could not be exported"));
  EXPECT_FALSE(player().view().failureText().isEmpty());
  // With the next one all is well.
  qputenv("TMPDIR", QFile::encodeName(temporary.path()));
  QTest::keyClick(&player(), Qt::Key_R);
  EXPECT_TRUE(reaches(playing));
  EXPECT_EQ(player().view().failureTitle(), QString());
  EXPECT_FALSE(player().fieldsPanel().model().fields().empty());
  // The fields of what played before are gone with it.
  TYPreviewController::togglePreviewForCompositionDocument(empty);
  EXPECT_TRUE(player().fieldsPanel().model().fields().empty());
}

TEST_F(PreviewTest, ClosingTheWindowOrTheDocumentWhileItPlaysIsSafe) {
  auto document = graphic(5);
  TYPreviewController::togglePreviewForCompositionDocument(*document);
  ASSERT_TRUE(reaches(playing));
  TYPreviewController::documentWillClose(*document);
  document.reset();
  QTest::keyClick(&player(), Qt::Key_R);
  EXPECT_TRUE(reaches(playing));
  player().close();
  EXPECT_EQ(TYPreviewController::shared(), nullptr);
  settle();
  TYPreviewController::togglePreviewFullscreen();
  EXPECT_EQ(TYPreviewController::shared(), nullptr);
}

TEST_F(PreviewTest, AnEditOffersToPlayTheDocumentAgain) {
  const auto document = graphic(5);
  TYPreviewController::togglePreviewForCompositionDocument(*document);
  const auto offers = [](bool wanted) {
    return QTest::qWaitFor([&] { return player().statusRow().offersAgain() == wanted; }, 1000);
  };
  document->composition()->setEditorTimepoint(1);
  settle();
  EXPECT_TRUE(offers(false));
  document->composition()->setDuration(0.1);
  EXPECT_TRUE(offers(true));
  document->context().undo();
  EXPECT_TRUE(offers(false));
  document->context().redo();
  EXPECT_TRUE(reaches(playing));
  QTest::keyClick(&player(), Qt::Key_R, Qt::ShiftModifier);
  EXPECT_TRUE(offers(false));
  EXPECT_TRUE(reaches(finished));
  // Other contents have a history of their own.
  document->emptyDocumentWithResolution(model::VideoResolution(QStringLiteral("SD PAL")));
  EXPECT_TRUE(offers(true));
  settle();
  QTest::keyClick(&player(), Qt::Key_R, Qt::ShiftModifier);
  EXPECT_TRUE(offers(false));
  document->composition()->setDuration(3);
  EXPECT_TRUE(offers(true));
}

TEST_F(PreviewTest, AFollowedEditShowsWhereTheGraphicStands) {
  const auto document = graphic(0.6, 0.2);
  document->composition()->addStopFrame(0.4);
  document->composition()->setBackgroundMode(model::BackgroundMode::SolidColor);
  document->composition()->setBackgroundColor(foundation::Color(1, 0, 0));
  TYPreviewController::togglePreviewForCompositionDocument(*document);
  player().setFollows(true);
  ASSERT_TRUE(reaches(waiting));
  player().sendTrigger();
  ASSERT_TRUE(reaches(playing));
  ASSERT_TRUE(reaches(waiting));
  QTest::qWait(200);
  const double stood = player().view().picture()->time;
  document->composition()->setBackgroundColor(foundation::Color(0, 1, 0));
  const auto shows = [](const QColor& colour) {
    return QTest::qWaitFor(
        [&] { return player().view().picture()->image().pixelColor(300, 200) == colour; }, 10'000);
  };
  EXPECT_TRUE(shows(Qt::green));
  EXPECT_GT(player().view().picture()->time, stood);
  EXPECT_FALSE(player().statusRow().offersAgain());
  EXPECT_EQ(status(), waiting);
  QTest::qWait(100);
  EXPECT_EQ(status(), waiting);
  document->context().undo();
  EXPECT_TRUE(shows(Qt::red));
  // One trigger ends it: it stands at the second stop as before.
  player().sendTrigger();
  EXPECT_TRUE(reaches(finished));
  // A picture of another size begins anew.
  document->composition()->setVideoResolution(model::VideoResolution(QStringLiteral("UHD p50")));
  EXPECT_TRUE(reaches(playing));
  const auto& picture = player().view().picture();
  EXPECT_TRUE(QTest::qWaitFor([&] { return picture && picture->image().width() == 3840; }, 10'000));
}

TEST_F(PreviewTest, FieldsOfAnInterlacedFormatArePlayedAtTheirOwnTimes) {
  const auto document = graphic(5);
  const auto rate = [&] { return PreviewProgram::fromDocument(*document)->framesPerSecond; };
  EXPECT_EQ(rate(), 25);
  auto& defaults = foundation::UserDefaults::standard();
  defaults.setValue(true, QStringLiteral("previewFields"));
  EXPECT_EQ(rate(), 50);
  document->composition()->setVideoResolution(model::VideoResolution(QStringLiteral("UHD p50")));
  EXPECT_EQ(rate(), 50);
  defaults.setValue(false, QStringLiteral("previewFields"));
}

TEST_F(PreviewTest, FullScreenShowsThePictureAloneAndGoesBackToTheWindow) {
  const auto document = graphic(5);
  TYPreviewController::togglePreviewForCompositionDocument(*document);
  const QRect before = player().geometry();
  QTest::keyClick(&player(), Qt::Key_F11);
  settle();
  EXPECT_TRUE(player().isFullScreen());
  EXPECT_FALSE(player().statusRow().isVisible());
  EXPECT_EQ(player().geometry(), player().screen()->geometry());
  QTest::keyClick(&player(), Qt::Key_Escape);
  settle();
  EXPECT_FALSE(player().isFullScreen());
  EXPECT_EQ(player().geometry(), before);
  TYPreviewController::showFullscreenOnScreen(QStringLiteral("no such screen"));
  EXPECT_FALSE(player().isShowingFullscreen());
  TYPreviewController::showFullscreenOnScreen(DisplayName::name(*player().screen()));
  EXPECT_TRUE(player().isShowingFullscreen());
  TYPreviewController::togglePreviewFullscreen();
  EXPECT_FALSE(player().isShowingFullscreen());
}

TEST(DisplayName, IsTheProductsNameOrWhatElseIsKnown) {
  const auto name = [](const char* product, const char* connector) {
    return DisplayName::name(QString::fromUtf8(product), QString::fromUtf8(connector),
                             reinterpret_cast<const void*>(0x1f));
  };
  EXPECT_EQ(name("Studio 24", "DP-2"), QStringLiteral("Studio 24"));
  EXPECT_EQ(name("Panel", "eDP-1"), QStringLiteral("Panel (Built-In)"));
  EXPECT_EQ(name("", "HDMI-A-1"), QStringLiteral("HDMI-A-1"));
  EXPECT_EQ(name("", ""), QStringLiteral("Unknown Display (0x1f)"));
}

}  // namespace

}  // namespace preview
