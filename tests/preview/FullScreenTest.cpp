#include "preview/FullScreen.h"

#include <QWindow>

#include "PreviewFixture.h"
#include "preview/DisplayName.h"

namespace preview {

namespace {

/// The player on the whole screen; ends by whatever means.
class FullScreenTest : public PreviewTest {
 protected:
  FullScreenTest() {
    TYPreviewController::togglePreviewForCompositionDocument(*document);
    settle();
    before = player().geometry();
    QTest::keyClick(&player(), Qt::Key_F11);
    settle();
    EXPECT_TRUE(player().isShowingFullscreen());
  }
  [[nodiscard]] static bool isLeft() {
    return QTest::qWaitFor([] { return !player().isShowingFullscreen(); }, 2000);
  }

  const std::unique_ptr<CompositionDocument> document = graphic(5);
  QRect before;
};

TEST_F(FullScreenTest, TheWindowManagerMayEndIt) {
  // Nothing that the player did: the state of the window is gone.
  player().windowHandle()->setWindowStates(Qt::WindowNoState);
  ASSERT_TRUE(isLeft());
  settle();
  EXPECT_FALSE(player().isFullScreen());
  EXPECT_TRUE(player().statusRow().isVisible());
  EXPECT_EQ(player().geometry(), before);
  // Its own ways through other states do not.
  for (int i = 0; i < 3; ++i)
    TYPreviewController::showFullscreenOnScreen(DisplayName::name(*player().screen()));
  QTest::qWait(400);
  EXPECT_TRUE(player().isShowingFullscreen());
  EXPECT_TRUE(player().isFullScreen());
  EXPECT_FALSE(player().statusRow().isVisible());
}

TEST_F(FullScreenTest, AScreenThatIsTakenAwayEndsItAndTheWindowGoesToTheFirst) {
  QScreen* screen = player().screen();
  Q_EMIT qGuiApp->screenRemoved(nullptr);
  EXPECT_TRUE(player().isShowingFullscreen());
  Q_EMIT qGuiApp->screenRemoved(screen);
  EXPECT_FALSE(player().isShowingFullscreen());
  settle();
  EXPECT_FALSE(player().isFullScreen());
  EXPECT_TRUE(player().statusRow().isVisible());
  EXPECT_EQ(player().size(), before.size());
  EXPECT_TRUE(QGuiApplication::primaryScreen()->geometry().contains(player().pos()));
  EXPECT_EQ(player().statusRow().notice(),
            QStringLiteral("The screen of the full picture is gone"));
  // In a window it is of no concern.
  player().statusRow().setNotice({});
  Q_EMIT qGuiApp->screenRemoved(screen);
  EXPECT_EQ(player().statusRow().notice(), QString());
}

TEST_F(FullScreenTest, ThePointerIsHiddenWhileItRests) {
  PreviewView& view = player().view();
  const auto shape = [&] { return view.cursor().shape(); };
  const auto isHidden = [&] {
    return QTest::qWaitFor([&] { return shape() == Qt::BlankCursor; }, 4000);
  };
  EXPECT_TRUE(isHidden());
  // Another cursor for a picture that can be dragged: for when it is seen again.
  QTest::keyClick(&player(), Qt::Key_2);
  EXPECT_EQ(shape(), Qt::BlankCursor);
  QTest::mouseMove(&view, {300, 200});
  QTest::mouseMove(&view, {310, 200});
  EXPECT_EQ(shape(), Qt::OpenHandCursor);
  EXPECT_TRUE(isHidden());
  QTest::keyClick(&player(), Qt::Key_0);
  QTest::keyClick(&player(), Qt::Key_Escape);
  EXPECT_EQ(shape(), Qt::ArrowCursor);
}

}  // namespace

}  // namespace preview
