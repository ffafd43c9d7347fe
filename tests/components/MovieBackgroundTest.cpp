#include <QTemporaryDir>

#include "quartz/QuartzComposition.h"
#include "runtime/CompositionRenderer.h"
#include "support/TestMovie.h"

namespace {

using quartz::QuartzComposition;

std::unique_ptr<runtime::CompositionRenderer> backgroundWith(
    const QString& movie, const QString& folder,
    const foundation::Color& color = foundation::Color::black()) {
  auto file = QuartzComposition::compositionWithFile(
      QStringLiteral(TESSARY_COMPONENTS "/MovieBackground.qtz"));
  EXPECT_TRUE(file);
  quartz::QuartzPatch* patch = (*file)->rootPatch()->patchWithName(QStringLiteral("Background"));
  patch->setPortValue(QuartzComposition::quartzValueForObject(movie), QStringLiteral("Filename"));
  patch->setPortValue(QuartzComposition::quartzValueForObject(color),
                      QStringLiteral("backgroundColor"));
  auto compiled = runtime::CompiledComposition::compile(**file);
  EXPECT_TRUE(compiled);
  auto renderer = std::make_unique<runtime::CompositionRenderer>(*compiled);
  renderer->userInfo().insert(QStringLiteral("baseFolder"), folder);
  return renderer;
}

/// The movie fills the picture whatever its size, lies over the background colour, and moves with
/// time.
TEST(MovieBackground, ShowsTheMovieOverTheWholePicture) {
  const QTemporaryDir folder;
  const runtime::movie::MovieFormat format{.container = runtime::movie::MovieContainer::Matroska,
                                           .codec = runtime::movie::MovieCodec::ProRes4444,
                                           .size = {64, 32},
                                           .threads = 1};
  ASSERT_TRUE(
      support::writeMovie(folder.filePath(QStringLiteral("loop.mkv")), format, 10, [&](int number) {
        return support::numberedPicture(number, format.size, QColor(0, 60, 120, 128));
      }));
  const auto renderer = backgroundWith(QStringLiteral("loop.mkv"), folder.path());
  for (const int frame : {0, 3, 9, 10, 1}) {
    const QImage image = renderer->imageAtTime(frame / 25.0, QSize(320, 180));
    EXPECT_EQ(support::numberIn(image), frame % 10);
    for (const QPoint& corner : {QPoint(2, 177), QPoint(317, 177)}) {
      const QColor color = image.pixelColor(corner);
      EXPECT_EQ(color.alpha(), 255);
      EXPECT_NEAR(color.blue(), 60, 4);  // half of it over black
    }
  }
  EXPECT_TRUE(renderer->findings().isEmpty()) << renderer->findings().join(u'\n').toStdString();
}

TEST(MovieBackground, WithoutItsMovieTheBackgroundColorShows) {
  const QTemporaryDir folder;
  const auto renderer = backgroundWith(QStringLiteral("gone.mov"), folder.path(),
                                       foundation::Color{0.2, 0.4, 0.6, 1});
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(renderer->imageAtTime(i, QSize(32, 18)).pixel(16, 9), 0xFF336699U);
  ASSERT_EQ(renderer->findings().size(), 1);
  EXPECT_TRUE(renderer->findings()[0].contains(folder.filePath(QStringLiteral("gone.mov"))));
}

}  // namespace
