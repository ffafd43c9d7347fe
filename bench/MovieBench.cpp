// How fast background movies play through the patch and how fast each codec encodes, at 1920 ×
// 1080: a moving gradient with film grain, which is harder than most backgrounds.
#include <sys/resource.h>

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <cstdio>
#include <random>

#include "quartz/QuartzComposition.h"
#include "runtime/CompositionRenderer.h"
#include "runtime/movie/MovieEncoder.h"
#include "runtime/movie/MovieReader.h"

namespace {

using namespace runtime::movie;

const QSize size(1920, 1080);

QImage picture(int i) {
  static const std::vector<uchar> grain = [] {
    std::mt19937 random(1);
    std::vector<uchar> g(1 << 20);
    for (uchar& v : g) v = static_cast<uchar>(random() % 4);
    return g;
  }();
  QImage image(size, QImage::Format_RGBA8888);
  for (int y = 0; y < size.height(); ++y) {
    uchar* row = image.scanLine(y);
    for (int x = 0; x < size.width(); ++x) {
      const int g = grain[static_cast<size_t>((y * 1931 + x + i * 7919) & 0xfffff)];
      row[4 * x] = static_cast<uchar>((x + 4 * i) / 9 % 200 + g);
      row[4 * x + 1] = static_cast<uchar>((y + 2 * i) / 6 % 180 + g);
      row[4 * x + 2] = static_cast<uchar>(120 + g);
      row[4 * x + 3] = static_cast<uchar>(x % 512 < 256 ? 255 : 128);
    }
  }
  return image;
}

double perSecond(int frames, const QElapsedTimer& clock) {
  return frames / (static_cast<double>(clock.nsecsElapsed()) / 1e9);
}

long peakMegabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss / 1024;
}

void encode(const QString& path, MovieCodec codec, int frames) {
  auto encoder = MovieEncoder::create(
      path, {.container = *containerOf(path), .codec = codec, .size = size, .rateNumerator = 50});
  if (!encoder) return;
  double seconds = 0;
  for (int i = 0; i < frames; ++i) {
    const QImage rgba = picture(i);
    QElapsedTimer clock;
    clock.start();
    const auto planes = (*encoder)->convert(rgba.constBits(), rgba.bytesPerLine());
    if (!planes || !(*encoder)->add(*planes)) return;
    seconds += static_cast<double>(clock.nsecsElapsed()) / 1e9;
  }
  QElapsedTimer clock;
  clock.start();
  if (!(*encoder)->finish()) return;
  seconds += static_cast<double>(clock.nsecsElapsed()) / 1e9;
  std::printf("%-12s convert and encode %6.1f frames/s, %.1f MB\n", qPrintable(codecName(codec)),
              frames / seconds, static_cast<double>(QFile(path).size()) / 1e6);
}

std::unique_ptr<runtime::CompositionRenderer> player(const QString& path) {
  quartz::QuartzComposition composition;
  auto* movie = composition.rootPatch()->addPatchWithClass(
      QStringLiteral("QCMovieImporter"), {}, {{QStringLiteral("inputMovieLocation"), path}});
  movie->publishOutputPort(QStringLiteral("outputImage"), QStringLiteral("image"));
  return std::make_unique<runtime::CompositionRenderer>(
      *runtime::CompiledComposition::compile(composition));
}

void play(const char* what, const QString& path, int frames, const std::function<int(int)>& order) {
  const auto renderer = player(path);
  (void)renderer->renderAtTime(0, size);
  QElapsedTimer clock;
  clock.start();
  for (int i = 0; i < frames; ++i) {
    (void)renderer->renderAtTime(order(i) / 50.0, size);
    if (renderer->valueForOutputKey(QStringLiteral("image")).toImage().isNull()) return;
  }
  std::printf("%-12s %6.1f frames/s\n", what, perSecond(frames, clock));
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  const int frames = argc > 1 ? QString::fromLatin1(argv[1]).toInt() : 100;
  const QTemporaryDir folder;
  const std::pair<const char*, MovieCodec> movies[] = {{"h264.mp4", MovieCodec::H264},
                                                       {"prores.mov", MovieCodec::ProRes4444},
                                                       {"qtrle.mov", MovieCodec::QuickTimeRle},
                                                       {"vp9.webm", MovieCodec::Vp9}};
  for (const auto& [name, codec] : movies)
    encode(folder.filePath(QLatin1String(name)), codec, frames);
  std::printf("peak memory so far %ld MB\n", peakMegabytes());
  for (const auto& [name, codec] : movies)
    play(name, folder.filePath(QLatin1String(name)), 2 * frames, [](int i) { return i; });
  const QString h264 = folder.filePath(QStringLiteral("h264.mp4"));
  play("every second", h264, frames, [](int i) { return 2 * i; });
  std::mt19937 random(5);
  play("anywhere", h264, 60, [&](int) { return static_cast<int>(random() % 1000); });
  std::printf("peak memory %ld MB\n", peakMegabytes());
  return 0;
}
