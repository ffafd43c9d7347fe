#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

#include "app/AppDelegate.h"
#include "app/TYWindowController.h"
#include "model/Composition.h"
#include "preview/StatusRow.h"
#include "preview/TYPreviewController.h"

namespace app {

namespace {

using preview::TYPreviewController;

/// The editor with its player.
class PreviewCommandsTest : public testing::Test {
 protected:
  PreviewCommandsTest() { delegate->start({}); }

  [[nodiscard]] TYWindowController& window() const {
    return *delegate->windowOf(*delegate->controller().documents().last());
  }
  void run(const char* command) const {
    window().actions().action(QString::fromLatin1(command))->trigger();
  }
  [[nodiscard]] static bool plays(const document::CompositionDocument& document) {
    return QTest::qWaitFor(
        [&] {
          const TYPreviewController* player = TYPreviewController::shared();
          return player && player->currentDocument() == &document &&
                 player->statusRow().light() == preview::StatusLamp::Light::Playing;
        },
        10'000);
  }

  QTemporaryDir folder;
  foundation::UserDefaults defaults{folder.filePath(QStringLiteral("defaults.conf"))};
  std::unique_ptr<AppDelegate> delegate = std::make_unique<AppDelegate>(
      defaults, document::RecoveryStore(folder.filePath(QStringLiteral("state"))));
};

TEST_F(PreviewCommandsTest, ADocumentThatIsClosedGoesOnPlayingAndThePlayerGoesWithTheProgram) {
  delegate->controller().newDocument();
  document::CompositionDocument& document = window().document();
  run("showPreview");
  ASSERT_TRUE(plays(document));
  window().close();
  ASSERT_TRUE(
      QTest::qWaitFor([this] { return delegate->controller().documents().size() == 1; }, 10'000));
  ASSERT_NE(TYPreviewController::shared(), nullptr);
  EXPECT_EQ(TYPreviewController::shared()->currentDocument(), nullptr);
  EXPECT_EQ(TYPreviewController::shared()->statusRow().light(),
            preview::StatusLamp::Light::Playing);
  run("togglePreviewFullscreen");
  EXPECT_TRUE(TYPreviewController::shared()->isShowingFullscreen());
  delegate.reset();
  EXPECT_EQ(TYPreviewController::shared(), nullptr);
}

TEST_F(PreviewCommandsTest, TheSlideshowShowsAllDocuments) {
  window().composition()->setDuration(0.2);
  delegate->controller().newDocument();
  const QList<document::CompositionDocument*> documents = delegate->controller().documents();
  ASSERT_EQ(documents.size(), 2);
  run("runSlideshow");
  EXPECT_TRUE(plays(*documents.first()));
  EXPECT_TRUE(plays(*documents.last()));
}

}  // namespace

}  // namespace app
