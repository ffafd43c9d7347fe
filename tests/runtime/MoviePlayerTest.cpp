#include "runtime/movie/MoviePlayer.h"

#include <QTemporaryDir>
#include <random>

#include "support/GraphBuilder.h"
#include "support/TestMovie.h"

namespace {

using namespace runtime::movie;
using support::GraphBuilder;
using support::numberIn;
using support::writeNumberedMovie;

QString text(const char* s) {
  return QString::fromUtf8(s);
}

class MoviePlaying : public testing::Test {
 protected:
  QTemporaryDir folder;
  QString at(const char* name) const { return folder.filePath(text(name)); }
};

/// Rates that differ from the movie's, pauses, jumps and loops show what the time says.
TEST_F(MoviePlaying, ATimeShowsTheSameFrameWhateverWasAskedBefore) {
  constexpr int frames = 60;
  ASSERT_TRUE(writeNumberedMovie(at("a.webm"), MovieCodec::Vp9, frames, 30000, 1001));
  std::mt19937 random(7);
  for (const double step : {1001 / 30000.0, 0.04, 0.02, 1001 / 15000.0, 0.5, -0.1}) {
    auto player = MoviePlayer::open(at("a.webm"));
    ASSERT_TRUE(player) << player.error().text().toStdString();
    double time = step < 0 ? 20 : 0;
    for (int i = 0; i < 150; ++i, time += step) {
      if (i % 40 == 39) time = static_cast<double>(random() % 10'000) / 1000;
      const auto picture = (*player)->pictureAt(time, true);
      ASSERT_TRUE(picture);
      const int expected = static_cast<int>(std::floor(time * 30000 / 1001 + 1e-3)) % frames;
      const int got = numberIn(picture->image);
      // At the very edge of two frames both are right.
      const double edge = std::abs(std::remainder(time * 30000 / 1001, 1.0));
      if (edge > 0.03 || edge < 1e-3) {
        ASSERT_EQ(got, expected) << step << " " << i << " " << time;
      }
    }
  }
}

TEST_F(MoviePlaying, ManyPlayersOpenAndCloseInTheMiddleOfDecoding) {
  ASSERT_TRUE(writeNumberedMovie(at("a.mp4"), MovieCodec::H264, 30));
  for (int i = 0; i < 30; ++i) {
    auto player = MoviePlayer::open(at("a.mp4"));
    ASSERT_TRUE(player);
    if (i % 2 == 0) {
      ASSERT_EQ(numberIn((*player)->pictureAt(0.04 * i, true)->image), i);
    }
  }
}

/// The node class as compositions hold it.
class MovieComposition : public MoviePlaying {
 protected:
  std::unique_ptr<runtime::CompositionRenderer> play(const QString& location) {
    GraphBuilder g;
    const QString node = g.node(text("QCMovieImporter"), {{text("asynchronousMode"), false}});
    const QString sprite =
        g.node(text("QCSprite"), {}, {{text("inputWidth"), 2.0}, {text("inputHeight"), 1.5}});
    g.connect(node, text("outputImage"), sprite, text("inputImage"));
    g.publishInput(node, text("inputMovieLocation"), text("file"));
    g.publishOutput(node, text("outputImage"), text("image"));
    g.publishOutput(node, text("outputMovieDuration"), text("duration"));
    g.setParameter(text("file"), location);
    auto renderer = g.renderer(at("c.qtz"));
    renderer->userInfo().insert(text("baseFolder"), folder.path());
    return renderer;
  }
};

TEST_F(MovieComposition, ShowsTheFrameOfItsTimeAndLoops) {
  ASSERT_TRUE(writeNumberedMovie(at("a.mov"), MovieCodec::ProRes4444, 20));
  const auto renderer = play(text("a.mov"));
  for (const int frame : {0, 1, 2, 2, 19, 20, 45, 3}) {
    const QImage image = renderer->imageAtTime(frame / 25.0, QSize(64, 48));
    EXPECT_EQ(numberIn(image), frame % 20);
  }
  EXPECT_DOUBLE_EQ(renderer->valueForOutputKey(text("duration")).toNumber(), 0.8);
  EXPECT_TRUE(renderer->isAnimated());
  // A frame that shows on is the same image.
  (void)renderer->renderAtTime(0.05, QSize(64, 48));
  const auto image = renderer->valueForOutputKey(text("image")).toImage();
  (void)renderer->renderAtTime(0.07, QSize(64, 48));
  EXPECT_EQ(renderer->valueForOutputKey(text("image")).toImage(), image);
  EXPECT_EQ(image.size(), QSize(64, 48));
  EXPECT_TRUE(renderer->findings().isEmpty()) << renderer->findings().join(u'\n').toStdString();
}

TEST_F(MovieComposition, AMissingOrBrokenMovieGivesNoImageAndOneFinding) {
  QFile broken(at("broken.mov"));
  ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
  broken.write(QByteArray(1000, '?'));
  broken.close();
  for (const char* name : {"missing.mov", "broken.mov", "https://localhost/a.mov"}) {
    const auto renderer = play(text(name));
    for (int i = 0; i < 5; ++i)
      EXPECT_EQ(renderer->imageAtTime(i, QSize(8, 8)).pixel(4, 4), 0U) << name;
    ASSERT_EQ(renderer->findings().size(), 1) << renderer->findings().join(u'\n').toStdString();
    EXPECT_TRUE(renderer->findings()[0].contains(text(name)));
    EXPECT_TRUE(renderer->valueForOutputKey(text("image")).toImage().isNull());
    // Another file starts afresh.
    ASSERT_TRUE(writeNumberedMovie(at("good.mp4"), MovieCodec::H264, 3));
    renderer->setValueForInputKey(text("good.mp4"), text("file"));
    EXPECT_EQ(numberIn(renderer->imageAtTime(0.04, QSize(64, 48))), 1);
    renderer->setValueForInputKey(text(""), text("file"));
    EXPECT_EQ(renderer->imageAtTime(0, QSize(8, 8)).pixel(4, 4), 0U);
    EXPECT_EQ(renderer->findings().size(), 1);
  }
}

/// A file that nobody vouches for cannot make as many players as it likes.
TEST_F(MovieComposition, OnlySoManyMoviesPlayAtOnce) {
  ASSERT_TRUE(writeNumberedMovie(at("a.mov"), MovieCodec::QuickTimeRle, 3));
  GraphBuilder g;
  for (int i = 0; i < 20; ++i) {
    const QString node =
        g.node(text("QCMovieImporter"), {}, {{text("inputMovieLocation"), text("a.mov")}});
    g.publishOutput(node, text("outputImage"), QString::number(i));
  }
  const auto renderer = g.renderer(at("c.qtz"));
  (void)renderer->renderAtTime(0, QSize(8, 8));
  int images = 0;
  for (int i = 0; i < 20; ++i)
    images += renderer->valueForOutputKey(QString::number(i)).toImage().isNull() ? 0 : 1;
  EXPECT_EQ(images, 16);
  EXPECT_EQ(renderer->findings().size(), 4);
}

}  // namespace
