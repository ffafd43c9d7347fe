#include "preview/FileBackdrop.h"

#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <QTemporaryDir>

#include "support/TestMovie.h"

namespace preview {

namespace {

using Kind = BackdropSource::Kind;

/// Collects what a file gives.
class FileBackdropTest : public testing::Test {
 protected:
  void open(Kind kind, const QString& path, const QSize& wanted) {
    file.reset();
    failure.reset();
    isReady = false;
    file = std::make_unique<FileBackdrop>(
        kind, path, wanted,
        FileBackdrop::Hooks{
            .imageReady = [this] { change([this] { isReady = true; }); },
            .failed =
                [this](const foundation::Error& error) { change([&] { failure = error; }); }});
  }
  void change(const std::function<void()>& act) {
    const std::lock_guard lock(mutex);
    act();
    changed.notify_all();
  }
  /// Null when none came in time.
  QImage next(std::chrono::milliseconds mostTime = std::chrono::seconds(10)) {
    std::unique_lock lock(mutex);
    if (!changed.wait_for(lock, mostTime, [this] { return std::exchange(isReady, false); }))
      return {};
    return file->takeImage();
  }

  QTemporaryDir folder;
  std::mutex mutex;
  std::condition_variable changed;
  bool isReady = false;
  std::optional<foundation::Error> failure;
  std::unique_ptr<FileBackdrop> file;
};

}  // namespace

TEST_F(FileBackdropTest, AStillCoversThePictureAndThenNothingHappens) {
  QImage still(100, 50, QImage::Format_RGB32);
  still.fill(Qt::red);
  for (int x = 25; x < 75; ++x)
    for (int y = 0; y < 50; ++y) still.setPixelColor(x, y, Qt::blue);
  const QString path = folder.filePath(QStringLiteral("a.png"));
  ASSERT_TRUE(still.save(path));
  open(Kind::Still, path, {20, 20});
  const QImage shown = next();
  ASSERT_EQ(shown.size(), QSize(20, 20));
  EXPECT_EQ(shown.pixelColor(1, 10), QColor(Qt::blue));
  EXPECT_EQ(shown.pixelColor(18, 10), QColor(Qt::blue));
  file->beginAnew();
  EXPECT_TRUE(next(std::chrono::milliseconds(150)).isNull());
  file->setSize({40, 20});
  EXPECT_EQ(next().size(), QSize(40, 20));
  EXPECT_EQ(FileBackdrop::covering(still, {10, 50}).pixelColor(5, 5), QColor(Qt::blue));
}

TEST_F(FileBackdropTest, AMoviePlaysInRealTimeAgainAndAgain) {
  const QString path = folder.filePath(QStringLiteral("a.mov"));
  constexpr int frames = 12;
  ASSERT_TRUE(
      support::writeNumberedMovie(path, runtime::movie::MovieCodec::QuickTimeRle, frames, 50));
  QElapsedTimer clock;
  clock.start();
  open(Kind::Movie, path, {64, 48});
  std::vector<int> numbers;
  while (numbers.size() < 2 * frames) {
    const QImage image = next();
    ASSERT_FALSE(image.isNull());
    numbers.push_back(support::numberIn(image));
  }
  EXPECT_EQ(numbers.front(), 0);
  EXPECT_GE(clock.elapsed(), (2 * frames - 2) * 20);
  int rounds = 0;
  for (size_t i = 1; i < numbers.size(); ++i)
    if (numbers[i] < numbers[i - 1]) ++rounds;
  EXPECT_GE(rounds, 1);
  while (support::numberIn(next()) < 5) continue;
  file->beginAnew();
  // One may have been under way.
  next();
  EXPECT_LE(support::numberIn(next()), 4);
}

TEST_F(FileBackdropTest, WhatCannotBeReadIsToldWithTheFileAndTheReason) {
  const QString path = folder.filePath(QStringLiteral("a.mov"));
  QFile broken(path);
  ASSERT_TRUE(broken.open(QIODevice::WriteOnly) && broken.write(QByteArray(5000, 'x')));
  broken.close();
  for (const auto& [kind, wrong] :
       {std::pair(Kind::Movie, path), std::pair(Kind::Still, path),
        std::pair(Kind::Movie, folder.filePath(QStringLiteral("none.mov")))}) {
    open(kind, wrong, {64, 48});
    std::unique_lock lock(mutex);
    ASSERT_TRUE(changed.wait_for(lock, std::chrono::seconds(10), [this] { return !!failure; }));
    EXPECT_EQ(failure->file, wrong);
    EXPECT_FALSE(failure->message.isEmpty());
  }
}

}  // namespace preview
