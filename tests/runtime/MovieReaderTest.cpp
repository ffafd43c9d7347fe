#include "runtime/movie/MovieReader.h"

#include <QFile>
#include <QTemporaryDir>
#include <random>

#include "support/TestMovie.h"

namespace {

using namespace runtime::movie;
using support::numberedPicture;
using support::numberIn;
using support::writeMovie;
using support::writeNumberedMovie;

QString text(const char* s) {
  return QString::fromUtf8(s);
}

struct Kind {
  const char* file;
  MovieCodec codec;
  qint64 numerator;
  qint64 denominator;
};
const Kind kinds[] = {
    {"a.mov", MovieCodec::ProRes4444, 25, 1}, {"b.mov", MovieCodec::QuickTimeRle, 50, 1},
    {"c.mov", MovieCodec::H264, 24000, 1001}, {"d.mp4", MovieCodec::H264, 30000, 1001},
    {"e.webm", MovieCodec::Vp9, 30000, 1001}, {"f.mkv", MovieCodec::Vp9, 60000, 1001},
    {"g.mkv", MovieCodec::H264, 60, 1},       {"h.mkv", MovieCodec::ProRes4444, 24, 1}};

class MovieReading : public testing::Test {
 protected:
  QTemporaryDir folder;
  QString at(const char* name) const { return folder.filePath(text(name)); }
  std::unique_ptr<MovieReader> open(const char* name) const {
    auto reader = MovieReader::open(at(name));
    if (reader) return std::move(*reader);
    ADD_FAILURE() << reader.error().text().toStdString();
    return {};
  }
};

TEST_F(MovieReading, EveryKindTellsItsSizeRateAndLength) {
  constexpr int frames = 130;
  for (const Kind& kind : kinds) {
    ASSERT_TRUE(
        writeNumberedMovie(at(kind.file), kind.codec, frames, kind.numerator, kind.denominator));
    const auto reader = open(kind.file);
    ASSERT_TRUE(reader) << kind.file;
    const MovieInfo& info = reader->info();
    EXPECT_EQ(info.size, QSize(64, 48)) << kind.file;
    EXPECT_EQ(info.frames, frames) << kind.file;
    EXPECT_EQ(info.rateNumerator * kind.denominator, kind.numerator * info.rateDenominator)
        << kind.file << " " << info.rateNumerator << "/" << info.rateDenominator;
    EXPECT_DOUBLE_EQ(info.duration, static_cast<double>(frames * kind.denominator) /
                                        static_cast<double>(kind.numerator));
    EXPECT_EQ(info.hasAlpha, keepsAlpha(kind.codec)) << kind.file;
    EXPECT_FALSE(info.isInterlaced) << kind.file;
  }
}

/// At the time of each frame that frame shows, whatever was read before: forwards, backwards, far
/// and near, and across the end of a loop.
TEST_F(MovieReading, AnyFrameIsFoundExactlyFromAnywhere) {
  constexpr int frames = 130;
  for (const Kind& kind : kinds) {
    ASSERT_TRUE(
        writeNumberedMovie(at(kind.file), kind.codec, frames, kind.numerator, kind.denominator));
    const auto reader = open(kind.file);
    ASSERT_TRUE(reader) << kind.file;
    std::mt19937 random(4711);
    for (int i = 0; i < 250; ++i) {
      const int number = i < frames ? i : static_cast<int>(random() % (3 * frames));
      const double time =
          static_cast<double>(number * kind.denominator) / static_cast<double>(kind.numerator);
      const auto picture = reader->pictureAt(reader->info().tickAt(time, true));
      ASSERT_TRUE(picture) << picture.error().text().toStdString();
      ASSERT_EQ(numberIn(picture->image), number % frames) << kind.file << " " << i;
    }
    EXPECT_FALSE(reader->isDamaged()) << kind.file;
  }
}

TEST_F(MovieReading, BetweenFramesTheEarlierOneShowsAndTheLastStays) {
  ASSERT_TRUE(writeNumberedMovie(at("a.mp4"), MovieCodec::H264, 50));
  const auto reader = open("a.mp4");
  ASSERT_TRUE(reader);
  const auto number = [&](double time, bool loop) {
    return numberIn(reader->pictureAt(reader->info().tickAt(time, loop))->image);
  };
  EXPECT_EQ(number(0.0399, false), 0);
  EXPECT_EQ(number(0.0401, false), 1);
  EXPECT_EQ(number(1.999, true), 49);
  EXPECT_EQ(number(2.0, true), 0);
  EXPECT_EQ(number(2.0, false), 49);
  EXPECT_EQ(number(1e300, false), 49);
  EXPECT_EQ(number(-5, true), 0);
  EXPECT_EQ(number(std::nan(""), true), 0);
  // A loop neither gains nor loses time.
  EXPECT_EQ(number(2.0 * 100'000 + 0.04, true), 1);
}

/// Straight alpha in the file, premultiplied pixels out of it; colours by the tagged matrix.
TEST_F(MovieReading, ColoursAndAlphaComeBack) {
  const QColor grounds[] = {{255, 0, 0, 255},    {0, 200, 40, 128}, {20, 60, 250, 30},
                            {128, 128, 128, 77}, {255, 255, 255},   {0, 0, 0, 0}};
  for (const Kind& kind : kinds) {
    // SD and HD sizes are told apart only where nothing is tagged.
    const QSize size = kind.codec == MovieCodec::H264 ? QSize(64, 720) : QSize(67, 51);
    const MovieFormat format{
        .container = *containerOf(at(kind.file)), .codec = kind.codec, .size = size, .threads = 1};
    ASSERT_TRUE(writeMovie(at(kind.file), format, 6, [&](int i) {
      QImage image(size, QImage::Format_ARGB32);
      image.fill(grounds[i]);
      return image;
    }));
    const auto reader = open(kind.file);
    ASSERT_TRUE(reader);
    for (int i = 0; i < 6; ++i) {
      const auto picture = reader->pictureAt(reader->info().tickAt(i / 25.0, false));
      ASSERT_TRUE(picture);
      ASSERT_EQ(picture->image.format(), QImage::Format_ARGB32_Premultiplied);
      QColor expected = grounds[i];
      if (!keepsAlpha(kind.codec)) expected.setAlpha(255);
      const QRgb wanted = qPremultiply(expected.rgba());
      const QRgb got = reinterpret_cast<const QRgb*>(picture->image.constScanLine(20))[33];
      const int tolerance = kind.codec == MovieCodec::QuickTimeRle ? 1 : 4;
      EXPECT_NEAR(qRed(got), qRed(wanted), tolerance) << kind.file << " " << i;
      EXPECT_NEAR(qGreen(got), qGreen(wanted), tolerance) << kind.file << " " << i;
      EXPECT_NEAR(qBlue(got), qBlue(wanted), tolerance) << kind.file << " " << i;
      EXPECT_NEAR(qAlpha(got), qAlpha(wanted), 3) << kind.file << " " << i;
    }
  }
}

/// The chroma of one field stays out of the other: red upper lines, blue lower ones.
TEST_F(MovieReading, FieldsKeepTheirLines) {
  for (const Kind& kind : kinds) {
    if (kind.codec == MovieCodec::Vp9) continue;  // has no fields
    const MovieFormat format{.container = *containerOf(at(kind.file)),
                             .codec = kind.codec,
                             .size = {64, 64},
                             .isInterlaced = true,
                             .threads = 1};
    ASSERT_TRUE(writeMovie(at(kind.file), format, 3, [&](int) {
      QImage image(64, 64, QImage::Format_ARGB32);
      for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x)
          image.setPixel(x, y, y % 2 == 0 ? qRgb(200, 20, 20) : qRgb(20, 20, 200));
      return image;
    }));
    const auto reader = open(kind.file);
    ASSERT_TRUE(reader);
    EXPECT_TRUE(reader->info().isInterlaced) << kind.file;
    const auto picture = reader->pictureAt(0);
    ASSERT_TRUE(picture);
    EXPECT_NEAR(qRed(picture->image.pixel(30, 30)), 200, 8) << kind.file;
    EXPECT_NEAR(qBlue(picture->image.pixel(30, 30)), 20, 8) << kind.file;
    EXPECT_NEAR(qRed(picture->image.pixel(30, 31)), 20, 8) << kind.file;
    EXPECT_NEAR(qBlue(picture->image.pixel(30, 31)), 200, 8) << kind.file;
  }
}

TEST_F(MovieReading, WhatIsNoMovieIsNamedWithTheReason) {
  QFile nonsense(at("nonsense.mov"));
  ASSERT_TRUE(nonsense.open(QIODevice::WriteOnly));
  nonsense.write(QByteArray(5000, 'x'));
  nonsense.close();
  // A list that names another file is not followed.
  QFile list(at("list.mov"));
  ASSERT_TRUE(list.open(QIODevice::WriteOnly));
  list.write("#EXTM3U\n#EXT-X-TARGETDURATION:10\n#EXTINF:10,\nfile:///etc/passwd\n");
  list.close();
  ASSERT_TRUE(QFile(at("empty.mov")).open(QIODevice::WriteOnly));
  for (const char* name : {"missing.mov", "nonsense.mov", "list.mov", "empty.mov", "."}) {
    const auto reader = MovieReader::open(at(name));
    ASSERT_FALSE(reader) << name;
    EXPECT_TRUE(reader.error().text().contains(at(name))) << name;
    EXPECT_FALSE(reader.error().message.isEmpty());
  }
  ASSERT_TRUE(writeNumberedMovie(at("a.mov"), MovieCodec::ProRes4444, 2));
  const auto large = MovieReader::open(at("a.mov"), {.largestPixels = 64 * 48 - 1});
  ASSERT_FALSE(large);
  EXPECT_TRUE(large.error().text().contains(text("64x48"))) << large.error().text().toStdString();
}

/// A file that ends early, or in which bytes are wrong, shows what can be decoded or fails to open;
/// what it shows are its own frames in their order.
TEST_F(MovieReading, CutAndDamagedFilesNeitherCrashNorHang) {
  std::mt19937 random(99);
  for (const Kind& kind : {kinds[0], kinds[1], kinds[3], kinds[4], kinds[6]}) {
    ASSERT_TRUE(writeNumberedMovie(at(kind.file), kind.codec, 12));
    QFile file(at(kind.file));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray whole = file.readAll();
    for (int i = 0; i < 60; ++i) {
      QByteArray bytes = whole;
      if (i < 30) {
        bytes.truncate(whole.size() * i / 30);
      } else {
        for (int k = 0; k < 20; ++k)
          bytes[static_cast<qsizetype>(random() % static_cast<quint64>(bytes.size()))] =
              static_cast<char>(random());
      }
      QFile broken(at("broken") + text(kind.file));
      ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
      broken.write(bytes);
      broken.close();
      const auto reader = MovieReader::open(broken.fileName(), {.seconds = 10});
      if (!reader) {
        EXPECT_EQ(reader.error().file, broken.fileName());
        continue;
      }
      for (const double time : {0.0, 0.2, 0.44, 0.08, 1e6})
        (void)(*reader)->pictureAt((*reader)->info().tickAt(time, false));
    }
  }
}

/// A file that is cut off in the middle goes on showing its last frame and says that it is damaged.
TEST_F(MovieReading, AFileThatEndsEarlyShowsItsLastWholeFrame) {
  ASSERT_TRUE(writeNumberedMovie(at("a.mkv"), MovieCodec::ProRes4444, 20));
  QFile file(at("a.mkv"));
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  ASSERT_TRUE(file.resize(file.size() / 2));
  file.close();
  const auto reader = open("a.mkv");
  ASSERT_TRUE(reader);
  EXPECT_EQ(numberIn(reader->pictureAt(reader->info().tickAt(0.2, false))->image), 5);
  const int last = numberIn(reader->pictureAt(reader->info().tickAt(0.79, false))->image);
  EXPECT_GT(last, 6);
  EXPECT_LT(last, 12);
  EXPECT_EQ(numberIn(reader->pictureAt(reader->info().tickAt(0.6, false))->image), last);
  EXPECT_TRUE(reader->isDamaged());
}

}  // namespace
