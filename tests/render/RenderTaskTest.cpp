#include "render/RenderTask.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <thread>

#include "model/Composition.h"
#include "model/StandardComponents.h"
#include "runtime/movie/MovieReader.h"
#include "support/FileSizeLimit.h"
#include "support/TessaryProgram.h"

namespace {

using render::RenderSettings;
using render::RenderSource;
using render::RenderTask;
using State = RenderTask::State;

QString q(const char* text) {
  return QString::fromUtf8(text);
}

/// An example document, and an empty folder to render into.
class RenderTaskTest : public testing::Test {
 protected:
  [[nodiscard]] static QString example(const char* name) {
    return q(TESSARY_EXAMPLES "/harbour/") + q(name) + q(".composition");
  }
  static std::unique_ptr<document::CompositionDocument> open(const char* name) {
    auto document =
        std::make_unique<document::CompositionDocument>(model::StandardComponents::located());
    EXPECT_TRUE(document->readFromURL(QUrl::fromLocalFile(example(name))));
    return document;
  }
  static RenderSource source(const char* name, bool background = false) {
    auto made = RenderSource::fromDocument(*open(name), background);
    EXPECT_TRUE(made) << made.error().text().toStdString();
    return *made;
  }
  /// Small pictures at 10 a second.
  [[nodiscard]] RenderSettings settings(const char* output) const {
    RenderSettings s;
    s.output = *render::OutputName::read(folder.filePath(q(output)));
    s.size = QSize(160, 90);
    s.rate = render::FrameRate{10, 1};
    s.automaticTrigger = true;
    s.clock = QDateTime::fromString(q("2026-01-31T20:00:00Z"), Qt::ISODate);
    return s;
  }
  [[nodiscard]] QStringList files(const char* subfolder = "") const {
    return QDir(folder.filePath(q(subfolder)))
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
  }
  QTemporaryDir folder;
};

QByteArray contents(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TEST_F(RenderTaskTest, PicturesAreThoseOfTheCommandLine) {
  RenderSettings s = settings("task/");
  s.frames = 12;
  s.background = true;
  RenderTask task(source("lower-third", true), s);
  task.start();
  task.wait();
  ASSERT_EQ(task.state(), State::Done) << task.error().text().toStdString();
  const auto outcome = support::tessary(
      {q("render"), example("lower-third"), q("-o"), folder.filePath(q("program/")), q("--size"),
       q("160x90"), q("--fps"), q("10"), q("--frames"), q("12"), q("--trigger"), q("auto"),
       q("--background"), q("--clock"), q("2026-01-31T20:00:00Z")});
  EXPECT_LE(outcome.status, 1) << outcome.error.toStdString();
  ASSERT_EQ(files("task").size(), 12);
  ASSERT_EQ(files("task"), files("program"));
  for (const QString& name : files("task"))
    EXPECT_TRUE(contents(folder.filePath(q("task/") + name)) ==
                contents(folder.filePath(q("program/") + name)))
        << name.toStdString();
}

TEST_F(RenderTaskTest, StopsAreHeldUntilTheyArePressedAndTheGraphicGoesToItsEnd) {
  const auto framesWith = [this](const char* output, double hold) {
    RenderSettings s = settings(output);
    s.stopHold = hold;
    RenderTask task(source("lower-third"), s);
    std::vector<qint64> seen;
    std::mutex mutex;
    QObject::connect(
        &task, &RenderTask::advanced, &task,
        [&] {
          const std::lock_guard lock(mutex);
          seen.push_back(task.progress().frames);
        },
        Qt::DirectConnection);
    task.start();
    task.wait();
    EXPECT_EQ(task.state(), State::Done) << task.error().text().toStdString();
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
    EXPECT_FALSE(seen.empty());
    EXPECT_EQ(task.progress().total, task.progress().frames);
    return task.progress().frames;
  };
  const qint64 stops = static_cast<qint64>(open("lower-third")->composition()->stopFrames().size());
  ASSERT_GT(stops, 0);
  const qint64 atOnce = framesWith("a.mov", 0);
  EXPECT_EQ(framesWith("b.mov", 1.5), atOnce + 15 * stops);
  const auto movie = runtime::movie::MovieReader::open(folder.filePath(q("a.mov")));
  ASSERT_TRUE(movie);
  EXPECT_EQ((*movie)->info().size, QSize(160, 90));
}

TEST_F(RenderTaskTest, ACancelledMovieEndsSoonAndLeavesNothing) {
  RenderSettings s = settings("long.mov");
  s.frames = 1'000'000;
  RenderTask task(source("ticker"), s);
  std::atomic<bool> advanced = false;
  QObject::connect(
      &task, &RenderTask::advanced, &task, [&] { advanced = task.progress().frames > 0; },
      Qt::DirectConnection);
  task.start();
  for (int i = 0; i < 2000 && !advanced; ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  ASSERT_TRUE(advanced);
  QElapsedTimer clock;
  clock.start();
  task.cancel();
  task.wait();
  EXPECT_LT(clock.elapsed(), 3000);
  EXPECT_EQ(task.state(), State::Cancelled);
  EXPECT_EQ(files(), QStringList());

  RenderTask unstarted(source("ticker"), s);
  unstarted.cancel();
  unstarted.start();
  unstarted.wait();
  EXPECT_EQ(unstarted.state(), State::Cancelled);
}

TEST_F(RenderTaskTest, FailuresNameTheFileAndTheReason) {
  QFile blocking(folder.filePath(q("file")));
  ASSERT_TRUE(blocking.open(QIODevice::WriteOnly));
  blocking.close();
  RenderTask noFolder(source("lower-third"), settings("file/sub/a.mov"));
  noFolder.start();
  noFolder.wait();
  ASSERT_EQ(noFolder.state(), State::Failed);
  EXPECT_EQ(noFolder.error().file, folder.filePath(q("file/sub")));

  for (const char* output : {"full.mov", "full/"}) {
    RenderSettings s = settings(output);
    s.size = QSize(640, 360);
    s.frames = 30;
    s.from = 1;
    s.background = true;
    RenderTask task(source("opener", true), s);
    const support::FileSizeLimit limit(2000);
    task.start();
    task.wait();
    ASSERT_EQ(task.state(), State::Failed) << output;
    EXPECT_TRUE(task.error().file.startsWith(folder.filePath(q("full"))))
        << task.error().text().toStdString();
    EXPECT_FALSE(task.error().message.isEmpty());
  }
  EXPECT_EQ(files("full"), QStringList());
  EXPECT_EQ(files(), (QStringList{q("file"), q("full")}));
}

TEST_F(RenderTaskTest, ValuesThatTheGraphicDoesNotTakeAreRefused) {
  RenderTask task(source("lower-third"), settings("a.png"), {{q("nothing"), 1}});
  task.start();
  task.wait();
  EXPECT_EQ(task.state(), State::Failed);
  EXPECT_TRUE(task.error().message.contains(q("nothing"))) << task.error().text().toStdString();
  EXPECT_EQ(files(), QStringList());
}

}  // namespace
