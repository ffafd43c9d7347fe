#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include "runtime/movie/MovieReader.h"
#include "support/GraphBuilder.h"
#include "support/TessaryProgram.h"
#include "support/TestMovie.h"

namespace {

using runtime::movie::MovieReader;
using support::GraphBuilder;

QString text(const char* s) {
  return QString::fromUtf8(s);
}

/// `tessary render` of a bar that crosses the picture at half its width a second, its colour and
/// alpha published as "Paint", into an empty folder.
class MovieOutput : public testing::Test {
 protected:
  void SetUp() override {
    GraphBuilder g;
    const QString time = g.node(text("QCTime"));
    const QString bar =
        g.node(text("QCSprite"), {}, {{text("inputWidth"), 0.5}, {text("inputHeight"), 2.0}});
    g.connect(time, text("outputTime"), bar, text("inputX"));
    g.publishInput(bar, text("inputColor"), text("Paint"));
    const auto made = quartz::QuartzComposition::compositionWithDictionary(g.composition());
    ASSERT_TRUE(made->writeToFile(source, true));
    ASSERT_TRUE(QDir(folder.path()).mkdir(text("out")));
  }
  void start(QProcess& process, const QStringList& arguments) const {
    process.setWorkingDirectory(out);
    // A shell that starts the tests in the background makes them ignore Ctrl+C.
    process.setChildProcessModifier([] { signal(SIGINT, SIG_DFL); });
    process.start(text(TESSARY_PROGRAM),
                  QStringList{text("render"), source, text("-o")} + arguments);
  }
  int render(const QStringList& arguments, QString* error = nullptr) const {
    QProcess process;
    start(process, arguments);
    process.waitForFinished(60'000);
    if (error) *error = QString::fromUtf8(process.readAllStandardError());
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
  }
  QStringList files() const { return QDir(out).entryList(QDir::Files | QDir::Hidden); }
  std::unique_ptr<MovieReader> read(const QString& name) const {
    auto reader = MovieReader::open(out + QLatin1Char('/') + name);
    if (reader) return std::move(*reader);
    ADD_FAILURE() << reader.error().text().toStdString();
    return {};
  }
  QTemporaryDir folder;
  QString source = folder.filePath(text("bar.qtz"));
  QString out = folder.filePath(text("out"));
};

TEST_F(MovieOutput, EveryContainerAndCodecIsReadBack) {
  const struct {
    const char* name;
    const char* codec;
    const char* found;
    bool alpha;
  } cases[] = {{"a.mov", "", "prores", true},
               {"b.mov", "qtrle", "qtrle", true},
               {"c.mp4", "", "h264", false},
               {"d.webm", "", "vp9", true},
               {"e.mkv", "", "vp9", true},
               {"f.mkv", "h264", "h264", false},
               {"g.mkv", "prores4444", "prores", true},
               {"h.MOV", "h264", "h264", false}};
  for (const auto& c : cases) {
    QStringList arguments{text(c.name),  text("--size"), text("128x96"),
                          text("--fps"), text("29.97"),  text("--frames"),
                          text("40"),    text("--set"),  text("Paint=#30C05080")};
    if (*c.codec) arguments += {text("--codec"), text(c.codec)};
    ASSERT_EQ(render(arguments), 0) << c.name;
    EXPECT_EQ(files(), QStringList{text(c.name)});
    const auto reader = read(text(c.name));
    ASSERT_TRUE(reader);
    const auto& info = reader->info();
    EXPECT_EQ(info.codec, text(c.found)) << c.name;
    EXPECT_EQ(info.size, QSize(128, 96)) << c.name;
    EXPECT_EQ(info.frames, 40) << c.name;
    EXPECT_EQ(info.rateNumerator * 1001, info.rateDenominator * 30000) << c.name;
    EXPECT_EQ(info.hasAlpha, c.alpha) << c.name;
    EXPECT_FALSE(info.isInterlaced) << c.name;
    for (const int frame : {0, 17, 25}) {
      const auto picture = reader->pictureAt(info.tickAt(frame * 1001 / 30000.0, false));
      ASSERT_TRUE(picture);
      const int bar = 64 + static_cast<int>(frame * 1001 / 30000.0 * 64);
      const QRgb inside =
          reinterpret_cast<const QRgb*>(picture->image.constScanLine(48))[std::min(bar, 126)];
      const QRgb outside =
          reinterpret_cast<const QRgb*>(picture->image.constScanLine(48))[bar - 30];
      const int tolerance = text(c.found) == QLatin1String("qtrle") ? 1 : 5;
      EXPECT_NEAR(qRed(inside), 0x18, tolerance) << c.name << frame;
      EXPECT_NEAR(qGreen(inside), 0x60, tolerance) << c.name << frame;
      EXPECT_NEAR(qBlue(inside), 0x28, tolerance) << c.name << frame;
      EXPECT_NEAR(qAlpha(inside), c.alpha ? 0x80 : 255, 2) << c.name << frame;
      EXPECT_NEAR(qGreen(outside), 0, tolerance) << c.name << frame;
      EXPECT_NEAR(qAlpha(outside), c.alpha ? 0 : 255, 2) << c.name << frame;
    }
    QFile::remove(out + QLatin1Char('/') + text(c.name));
  }
}

TEST_F(MovieOutput, InterlacedFormatsAreMarkedAndFieldsHaveTimesOfTheirOwn) {
  const QStringList common{text("--mode"), text("HD 1080i25"), text("--size"),
                           text("400x80"), text("--frames"),   text("4")};
  for (const char* codec : {"prores4444", "qtrle", "h264"}) {
    ASSERT_EQ(render(QStringList{text("i.mov"), text("--codec"), text(codec)} + common), 0);
    EXPECT_TRUE(read(text("i.mov"))->info().isInterlaced) << codec;
  }
  ASSERT_EQ(render(QStringList{text("p.mov"), text("--fps"), text("50")} + common), 0);
  EXPECT_FALSE(read(text("p.mov"))->info().isInterlaced);

  ASSERT_EQ(
      render(QStringList{text("f.mov"), text("--codec"), text("qtrle"), text("--fields")} + common),
      0);
  const auto reader = read(text("f.mov"));
  ASSERT_TRUE(reader);
  EXPECT_TRUE(reader->info().isInterlaced);
  const QImage frame = reader->pictureAt(reader->info().tickAt(2 / 25.0, false))->image;
  const auto firstPixel = [&](int y) {
    int x = 0;
    while (qAlpha(frame.pixel(x, y)) < 128) ++x;
    return x;
  };
  // The bar starts at 150 and moves 200 pixels a second: 4 from one field to the next.
  EXPECT_EQ(firstPixel(20), 166);
  EXPECT_EQ(firstPixel(21), 170);
}

TEST_F(MovieOutput, WrongCallsSayWhy) {
  const std::pair<QStringList, const char*> cases[] = {
      {{text("a.mov"), text("--codec"), text("vp9")}, ".mov files hold prores4444, qtrle, h264"},
      {{text("a.webm"), text("--codec"), text("h264")}, "hold vp9"},
      {{text("a.mov"), text("--codec"), text("best")}, "--codec takes prores4444"},
      {{text("a.png"), text("--codec"), text("h264")}, "for movies"},
      {{text("a.mp4"), text("--frames"), text("2"), text("--size"), text("33x20")}, "even width"},
      {{text("a.mov")}, "--frames"}};
  for (const auto& [arguments, part] : cases) {
    QString error;
    EXPECT_EQ(render(arguments, &error), 2) << part;
    EXPECT_TRUE(error.contains(text(part))) << error.toStdString();
  }
  EXPECT_TRUE(files().isEmpty());
  QString error;
  EXPECT_EQ(render({text("/dev/full/x.mov"), text("--frames"), text("1")}, &error), 4);
  EXPECT_TRUE(error.contains(text("/dev/full"))) << error.toStdString();
}

/// What goes on air does not depend on the machine that wrote it.
TEST_F(MovieOutput, AnyNumberOfThreadsWritesTheSameBytes) {
  const auto bytes = [&](const char* name) {
    QFile file(out + QLatin1Char('/') + text(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  };
  for (const char* name : {"a.mov", "b.mp4", "c.webm"}) {
    const QStringList arguments{text(name), text("--size"), text("640x480"), text("--frames"),
                                text("12")};
    ASSERT_EQ(render(arguments + QStringList{text("--threads"), text("1")}), 0) << name;
    const QByteArray one = bytes(name);
    ASSERT_EQ(render(arguments + QStringList{text("--threads"), text("3")}), 0) << name;
    EXPECT_EQ(one, bytes(name)) << name;
  }
}

TEST_F(MovieOutput, LinksAreFollowedAndPipesNotReplaced) {
  const QStringList brief{text("--size"), text("64x64"), text("--frames"), text("2")};
  QFile target(folder.filePath(text("target.mov")));
  ASSERT_TRUE(target.open(QIODevice::WriteOnly));
  target.close();
  ASSERT_TRUE(QDir().mkpath(out));
  ASSERT_TRUE(target.link(out + text("/link.mov")));
  ASSERT_EQ(render(QStringList{text("link.mov")} + brief), 0);
  EXPECT_TRUE(QFileInfo(out + text("/link.mov")).isSymLink());
  EXPECT_GT(QFileInfo(target).size(), 0);

  ASSERT_EQ(mkfifo(qPrintable(out + text("/pipe.mov")), 0600), 0);
  QString error;
  EXPECT_EQ(render(QStringList{text("pipe.mov")} + brief, &error), 4);
  EXPECT_TRUE(error.contains(text("no ordinary file"))) << error.toStdString();
}

/// Whoever stops a rendering finds what was there before.
TEST_F(MovieOutput, StoppingLeavesNoHalfFile) {
  for (const int how : {SIGINT, SIGTERM}) {
    QFile before(out + text("/kept.mov"));
    ASSERT_TRUE(before.open(QIODevice::WriteOnly));
    before.write("the one before");
    before.close();
    QProcess process;
    start(process,
          {text("kept.mov"), text("--frames"), text("1000000"), text("--size"), text("320x240")});
    QElapsedTimer clock;
    clock.start();
    while (files().size() < 2 && clock.elapsed() < 20'000) QThread::msleep(5);
    QThread::msleep(100);
    ASSERT_EQ(kill(static_cast<pid_t>(process.processId()), how), 0);
    ASSERT_TRUE(process.waitForFinished(20'000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 130);
    EXPECT_EQ(files(), QStringList{text("kept.mov")});
    ASSERT_TRUE(before.open(QIODevice::ReadOnly));
    EXPECT_EQ(before.readAll(), QByteArray("the one before"));
  }
}

TEST_F(MovieOutput, AFullDiskIsToldAndLeavesNothing) {
  for (const char* name : {"a.mov", "b.mp4", "c.webm"}) {
    QProcess process;
    process.setWorkingDirectory(out);
    process.setChildProcessModifier([] {
      const rlimit limit{20'000, 20'000};
      setrlimit(RLIMIT_FSIZE, &limit);
      signal(SIGXFSZ, SIG_IGN);
    });
    process.start(text(TESSARY_PROGRAM),
                  {text("render"), source, text("-o"), text(name), text("--frames"), text("1000"),
                   text("--size"), text("320x240"), text("--fps"), text("500")});
    ASSERT_TRUE(process.waitForFinished(60'000));
    const QString error = QString::fromUtf8(process.readAllStandardError());
    EXPECT_EQ(process.exitCode(), 4) << error.toStdString();
    EXPECT_TRUE(error.contains(text(name)) && error.contains(text("cannot be written")))
        << error.toStdString();
    EXPECT_TRUE(files().isEmpty()) << files().join(u' ').toStdString();
  }
}

/// From the document with a movie behind its graphic to a movie with both.
TEST_F(MovieOutput, ADocumentsBackgroundMovieIsInTheResult) {
  const QSize size(1280, 720);
  const auto format = runtime::movie::MovieFormat{
      .container = runtime::movie::MovieContainer::Mpeg4,
      .codec = runtime::movie::MovieCodec::H264,
      .size = {64, 48},
      .rateNumerator = 50,
  };
  ASSERT_TRUE(support::writeMovie(folder.filePath(text("loop.mp4")), format, 20, [&](int number) {
    return support::numberedPicture(number, format.size);
  }));
  const support::Outcome made =
      support::batch(text("new graphic.composition --mode \"HD 720p50\" --duration 1\n"
                          "set . movie=@loop.mp4\n"
                          "add Rectangle x=0 y=0 width=1280 height=100"),
                     folder.path());
  ASSERT_EQ(made.status, 0) << made.error.toStdString();
  source = folder.filePath(text("graphic.composition"));
  ASSERT_EQ(render({text("a.mov"), text("--background"), text("--frames"), text("30")}), 0);
  const auto reader = read(text("a.mov"));
  ASSERT_TRUE(reader);
  EXPECT_EQ(reader->info().size, size);
  for (const int frame : {0, 7, 25}) {
    const auto picture = reader->pictureAt(reader->info().tickAt(frame / 50.0, false));
    EXPECT_EQ(support::numberIn(picture->image), frame % 20);
    EXPECT_EQ(qAlpha(picture->image.pixel(640, 300)), 255);
  }
}

}  // namespace
