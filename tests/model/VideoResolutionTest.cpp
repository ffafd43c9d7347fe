#include "model/VideoResolution.h"

#include <QTemporaryDir>

#include "foundation/UserDefaults.h"
#include "support/LogGuard.h"

namespace model {

namespace {

/// A table whose names are not the well-known ones, so that every look-up falls back.
const VideoModes& foreignModes() {
  static const VideoModes modes({
      {QStringLiteral("yuv"), {}, FrameRateCode::Rate25, 0x32767579, 0, 1920, 1080},
      {QStringLiteral("interlaced"), {}, FrameRateCode::Rate25, VideoMode::rgba, 1, 1920, 1080},
      {QStringLiteral("progressive"), {}, FrameRateCode::Rate25, VideoMode::rgba, 0, 1920, 1080},
      {QStringLiteral("pal"), {}, FrameRateCode::Rate25, VideoMode::rgba, 1, 720, 576},
      {QStringLiteral("film"), {}, FrameRateCode::Rate23_98, VideoMode::rgba, 1, 720, 480},
      {QStringLiteral("later"), {}, FrameRateCode::Rate25, VideoMode::rgba, 1, 720, 576},
  });
  return modes;
}

QString titleOf(const char* name) {
  return VideoResolution(QString::fromLatin1(name), foreignModes()).title();
}

}  // namespace

TEST(VideoResolution, FallsBackOnWhatTheNameSays) {
  EXPECT_EQ(titleOf("SD PAL"), QStringLiteral("pal"));
  EXPECT_EQ(titleOf("HD 1080p25"), QStringLiteral("progressive"));
  EXPECT_EQ(titleOf("HD 1080i25"), QStringLiteral("interlaced"));
  EXPECT_EQ(titleOf("SD NTSC 23.98"), QStringLiteral("film"));
  EXPECT_EQ(titleOf("HD 1080p50"), QString());
  EXPECT_EQ(titleOf("nonsense"), QString());
  support::LogGuard::expectMessage(QStringLiteral("Unsupported SD widescreen format"));
  EXPECT_EQ(titleOf("SD PAL Widescreen"), QStringLiteral("pal"));
  support::LogGuard::expectMessage(QStringLiteral("Unsupported 4K format"));
  EXPECT_EQ(titleOf("4K p50"), QString());
}

TEST(VideoResolution, TheTableKnowsEveryFormatByItsName) {
  int count = 0;
  QStringList groups;
  VideoModes::standard().enumerateSupportedModes([&](const VideoMode& mode, bool&) {
    ++count;
    if (groups.isEmpty() || groups.last() != mode.group) groups.append(mode.group);
    const VideoResolution format(mode.name);
    EXPECT_EQ(format.title(), mode.name);
    EXPECT_EQ(QSize(format.compositionWidth(), format.compositionHeight()),
              QSize(mode.width, mode.height));
    EXPECT_EQ(format.aspectRatio(), 1.0);
    EXPECT_GT(format.framesPerSecond(), 23);
    EXPECT_EQ(mode.pixelFormat, VideoMode::rgba);
  });
  EXPECT_EQ(count, 28);
  EXPECT_EQ(groups.size(), 4);
  EXPECT_EQ(groups.removeDuplicates(), 0);
  EXPECT_EQ(VideoResolution(QStringLiteral("HD 1080i25")).width(), 1920);
  EXPECT_TRUE(VideoResolution(QStringLiteral("HD 1080i25")).isInterlaced());
  EXPECT_FALSE(VideoResolution(QStringLiteral("HD 1080p50")).isInterlaced());
}

TEST(VideoResolution, TheDefaultComesFromTheUsersSettings) {
  const QTemporaryDir dir;
  foundation::UserDefaults defaults(dir.filePath(QStringLiteral("d.conf")));
  EXPECT_EQ(VideoResolution::defaultVideoResolution(defaults).width(), 0);
  const QString key = QStringLiteral("defaultDocumentMode");
  defaults.registerDefaults({{key, QStringLiteral("1080i25 RGBA")}});
  EXPECT_EQ(VideoResolution::defaultVideoResolution(defaults).height(), 1080);
  defaults.setValue(QStringLiteral("UHD p50"), key);
  EXPECT_EQ(VideoResolution::defaultVideoResolution(defaults).height(), 2160);
  defaults.remove(key);
  EXPECT_EQ(VideoResolution::defaultVideoResolution(defaults).height(), 1080);
}

}  // namespace model
