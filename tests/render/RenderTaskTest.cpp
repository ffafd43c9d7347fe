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

TEST_F(RenderTaskTest, WhereStopsPassTimesAreThoseOfTheTimeLine) {
  const auto still = [this](const RenderSource& played, double time, bool passesStops) {
    RenderSettings s = settings("still.png");
    s.rate = render::FrameRate{50, 1};
    s.automaticTrigger = false;
    s.passesStops = passesStops;
    s.from = time;
    s.frames = 1;
    RenderTask task(played, s);
    task.start();
    task.wait();
    EXPECT_EQ(task.state(), State::Done) << task.error().text().toStdString();
    return contents(folder.filePath(q("still.png")));
  };
  const auto document = open("lower-third");
  model::Composition& composition = *document->composition();
  for (model::StopFrame* stop : composition.stopFrames()) composition.removeStopFrame(*stop);
  const auto without = RenderSource::fromDocument(*document, false);
  const double duration = composition.duration();
  composition.addStopFrame(0.31);
  composition.addStopFrame(duration - 0.4);
  const auto with = RenderSource::fromDocument(*document, false);
  ASSERT_TRUE(without && with);
  QSet<QByteArray> pictures;
  for (const double time : {0.1, 0.3, 0.31, 0.34, 0.405, 0.5, 0.66, duration - 0.38,
                            duration - 0.26, duration - 0.11, duration}) {
    const QByteArray expected = still(*without, time, false);
    EXPECT_TRUE(still(*with, time, true) == expected) << time;
    pictures.insert(expected);
  }
  EXPECT_GT(pictures.size(), 7) << "the graphic should move at these times";
  EXPECT_FALSE(still(*with, duration - 0.26, false) == still(*without, duration - 0.26, false))
      << "without that, stops wait";
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
  const auto errorWith = [this](const RenderSource& played) {
    RenderTask task(played, settings("a.png"), {q("Ada"), {{q("Gone_Text"), 1}}});
    task.start();
    task.wait();
    EXPECT_EQ(task.state(), State::Failed);
    return task.error();
  };
  const foundation::Error saved = errorWith(source("lower-third"));
  EXPECT_TRUE(saved.message.contains(q("\"Ada\""))) << saved.text().toStdString();
  EXPECT_TRUE(saved.message.contains(q("Gone_Text"))) << saved.text().toStdString();
  EXPECT_EQ(saved.file, example("lower-third"));
  document::CompositionDocument unsaved(model::StandardComponents::located());
  unsaved.emptyDocumentWithResolution(model::VideoResolution(QStringLiteral("HD 720p50")));
  const auto played = RenderSource::fromDocument(unsaved, false);
  ASSERT_TRUE(played);
  EXPECT_EQ(errorWith(*played).file, unsaved.displayName());
  EXPECT_EQ(files(), QStringList());
}

}  // namespace
