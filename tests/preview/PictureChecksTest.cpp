#include "preview/PictureChecks.h"

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QFileDialog>
#include <QMenu>

#include "PreviewFixture.h"

namespace preview {

namespace {

using Backdrop = PictureOptions::Backdrop;
using Channel = PictureOptions::Channel;
using Kind = BackdropSource::Kind;

/// The player with a graphic of nothing on red, in a window where it is shown pixel for pixel.
class PictureChecksTest : public PreviewTest {
 protected:
  PictureChecksTest() {
    document->composition()->setBackgroundMode(model::BackgroundMode::SolidColor);
    document->composition()->setBackgroundColor(foundation::Color(1, 0, 0));
    TYPreviewController::togglePreviewForCompositionDocument(*document);
    press(Qt::Key_0);
    EXPECT_TRUE(shows(Qt::red));
  }
  ~PictureChecksTest() override {
    press(Qt::Key_0);
    press(Qt::Key_P);
  }
  static void press(Qt::Key key) { QTest::keyClick(&player(), key); }
  [[nodiscard]] static QColor middle() {
    return player().view().grab().toImage().pixelColor(player().view().rect().center());
  }
  [[nodiscard]] static bool shows(const QColor& color) {
    return QTest::qWaitFor([&] { return player().view().picture() && middle() == color; }, 10'000);
  }
  static void putBehind(Backdrop backdrop, const QColor& color = Qt::blue) {
    player().checks().change([&](PictureOptions& options) {
      options.backdrop = backdrop;
      options.color = color;
    });
  }
  [[nodiscard]] static const PictureOptions& options() { return player().checks().options(); }
  [[nodiscard]] QString stillOf(const QColor& color) const {
    QImage still(40, 30, QImage::Format_RGB32);
    still.fill(color);
    const QString path = temporary.filePath(color.name().mid(1) + QStringLiteral(".png"));
    EXPECT_TRUE(still.save(path));
    return path;
  }

  const std::unique_ptr<CompositionDocument> document = graphic(5);
};

}  // namespace

TEST_F(PictureChecksTest, WhatIsLookedAtDecidesWhetherTheBackgroundIsExported) {
  const FramePump* pump = player().pump();
  press(Qt::Key_K);
  EXPECT_TRUE(shows(Qt::black));
  press(Qt::Key_P);
  EXPECT_TRUE(shows(Qt::red));
  // All that while it goes on playing.
  EXPECT_EQ(player().pump(), pump);
  putBehind(Backdrop::Color);
  EXPECT_TRUE(shows(Qt::blue));
  press(Qt::Key_F);
  EXPECT_TRUE(shows(Qt::black));
  EXPECT_EQ(player().statusRow().partShown(), QStringLiteral("Fill"));
  // What was chosen is there again in the next window, as long as the program runs.
  EXPECT_EQ(PictureOptions::fromDefaults(foundation::UserDefaults::standard()).channel,
            Channel::Picture);
  TYPreviewController::closeShared();
  settle();
  TYPreviewController::togglePreviewForCompositionDocument(*document);
  EXPECT_TRUE(shows(Qt::black));
  EXPECT_EQ(options().channel, Channel::Fill);
  EXPECT_EQ(options().backdrop, Backdrop::Color);
  for (auto* button : player().statusRow().findChildren<QAbstractButton*>())
    if (button->text() == QLatin1String("Fill")) QTest::mouseClick(button, Qt::LeftButton);
  EXPECT_TRUE(shows(Qt::blue));
  EXPECT_EQ(player().statusRow().partShown(), QString());

  TYPreviewController::documentWillClose(*document);
  putBehind(Backdrop::Own);
  EXPECT_EQ(options().backdrop, Backdrop::Color);
  EXPECT_THAT(player().statusRow().notice().toStdString(),
              testing::HasSubstr("The document was closed"));
  putBehind(Backdrop::Color, Qt::green);
  EXPECT_TRUE(shows(Qt::green));
}

TEST_F(PictureChecksTest, AFileReplacesTheFormerBackdropOnceItWasRead) {
  player().checks().showFile(Kind::Still, stillOf(Qt::green));
  EXPECT_TRUE(shows(Qt::green));
  EXPECT_EQ(options().backdrop, Backdrop::Still);
  const QString broken = temporary.filePath(QStringLiteral("broken.mov"));
  QFile file(broken);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("not a movie") > 0);
  file.close();
  player().checks().showFile(Kind::Movie, broken);
  ASSERT_TRUE(QTest::qWaitFor([] { return !player().statusRow().notice().isEmpty(); }, 10'000));
  EXPECT_THAT(player().statusRow().notice().toStdString(), testing::HasSubstr("broken.mov"));
  EXPECT_EQ(options().backdrop, Backdrop::Still);
  EXPECT_TRUE(options().movie.isEmpty());
  EXPECT_TRUE(shows(Qt::green));
  // One that is gone when the player is opened again.
  ASSERT_TRUE(QFile::remove(options().still));
  TYPreviewController::closeShared();
  settle();
  TYPreviewController::togglePreviewForCompositionDocument(*document);
  EXPECT_TRUE(shows(Qt::red));
  EXPECT_EQ(options().backdrop, Backdrop::Own);
  EXPECT_THAT(player().statusRow().notice().toStdString(), testing::HasSubstr("00ff00.png"));
}

TEST_F(PictureChecksTest, ThePictureIsZoomedAndMovedWithKeysWheelAndPointer) {
  PreviewView& view = player().view();
  const auto corner = [&] { return view.geometry().pictureRect().topLeft(); };
  EXPECT_EQ(player().statusRow().scaleText(), QString());
  press(Qt::Key_2);
  EXPECT_EQ(player().statusRow().scaleText(), QStringLiteral("200 %"));
  QPointF before = corner();
  QTest::mousePress(&view, Qt::LeftButton, {}, {300, 200});
  QTest::mouseMove(&view, {340, 210});
  QTest::mouseRelease(&view, Qt::LeftButton, {}, {340, 210});
  EXPECT_EQ(corner() - before, QPointF(40, 10));
  before = corner();
  press(Qt::Key_Left);
  EXPECT_GT(corner().x(), before.x());
  const auto wheel = [&](int angle, Qt::KeyboardModifiers modifiers) {
    QWheelEvent event({100, 100}, view.mapToGlobal(QPointF(100, 100)), {}, {0, angle}, {},
                      modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&view, &event);
  };
  before = corner();
  wheel(-120, {});
  EXPECT_LT(corner().y(), before.y());
  wheel(240, Qt::ControlModifier);
  EXPECT_EQ(view.geometry().zoom(), 400);
  // Space stays the trigger, and a new player looks as closely.
  TYPreviewController::closeShared();
  settle();
  TYPreviewController::togglePreviewForCompositionDocument(*document);
  EXPECT_EQ(player().view().geometry().zoom(), 400);
}

TEST_F(PictureChecksTest, AFieldIsSavedFromTheFrameOfTheMomentAndNoBackdropWithIt) {
  putBehind(Backdrop::Color);
  EXPECT_TRUE(shows(Qt::blue));
  player().checks().save(PictureSaver::Part::UpperField);
  auto* dialog = player().findChild<QFileDialog*>();
  ASSERT_TRUE(dialog);
  const QString path = temporary.filePath(QStringLiteral("field.png"));
  Q_EMIT dialog->fileSelected(path);
  dialog->close();
  const QString told = QStringLiteral("Saved field.png");
  ASSERT_TRUE(QTest::qWaitFor([&] { return player().statusRow().notice() == told; }, 10'000));
  const QImage field(path);
  EXPECT_EQ(field.size(), QSize(720, 288));
  EXPECT_EQ(field.pixel(360, 100), 0U);
  // Fields are offered for interlaced formats only.
  const auto offers = [](const char* text) {
    QMenu menu;
    PictureMenu(menu, player().checks().menuState(), {}).addAll();
    for (const QAction* action : menu.actions())
      if (action->text() == QLatin1String(text)) return true;
    return false;
  };
  EXPECT_TRUE(offers("Save Upper Field..."));
  document->composition()->setVideoResolution(model::VideoResolution(QStringLiteral("HD 720p50")));
  TYPreviewController::togglePreviewForCompositionDocument(*document);
  EXPECT_FALSE(offers("Save Upper Field..."));
  EXPECT_TRUE(offers("Save Picture..."));
}

}  // namespace preview
