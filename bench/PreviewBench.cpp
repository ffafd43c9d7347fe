// Plays each document of a folder as the preview player does, at 1920 × 1080 and 50 frames a
// second, into a view: frames, drops, time a frame, processor time. A graphic that waits is
// triggered, one that has ended begins anew.
//
//     bench_preview [SECONDS [FOLDER [LOOK]]]
//
// LOOK is how it is looked at: own (with its background), chessboard, key, fill, or the path of a
// movie that plays behind the graphic.

#include <sys/resource.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTimer>
#include <cstdio>

#include "document/CompositionDocument.h"
#include "preview/BackdropLoader.h"
#include "preview/FramePump.h"
#include "preview/PreviewView.h"
#include "widgets/TYStyleKit.h"

namespace {

using preview::FrameMeter;
using preview::FramePump;
using preview::PictureOptions;

constexpr QSize fullHd(1920, 1080);
constexpr double framesPerSecond = 50;

double processorSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto seconds = [](const timeval& t) {
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) / 1e6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

long peakMegabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss / 1024;
}

PictureOptions optionsNamed(const QString& look) {
  using Backdrop = PictureOptions::Backdrop;
  using Channel = PictureOptions::Channel;
  if (look == QLatin1String("own")) return {};
  if (look == QLatin1String("chessboard")) return {.backdrop = Backdrop::Chessboard};
  if (look == QLatin1String("key")) return {.channel = Channel::Key};
  if (look == QLatin1String("fill")) return {.channel = Channel::Fill};
  return {.backdrop = Backdrop::Movie, .movie = look};
}

/// A view that is fed by a pump, and an operator who triggers what waits and plays again what
/// ended.
class Player : public QObject {
 public:
  Player(preview::PreviewProgram program, const PictureOptions& options) {
    m_view.resize(fullHd);
    m_view.setPictureSize(program.size);
    m_view.setOptions(options);
    connect(&m_backdrop, &preview::BackdropLoader::pictureReady, &m_view,
            &preview::PreviewView::setBackdrop);
    if (options.backdrop == PictureOptions::Backdrop::Movie)
      m_backdrop.load(preview::BackdropSource::Kind::Movie, options.movie);
    m_view.show();
    m_pump = std::make_unique<FramePump>(
        std::move(program), FramePump::Hooks{.pictureReady =
                                                 [this] {
                                                   QMetaObject::invokeMethod(
                                                       this,
                                                       [this] {
                                                         if (auto picture = m_pump->takePicture())
                                                           m_view.setPicture(std::move(picture));
                                                       },
                                                       Qt::QueuedConnection);
                                                 },
                                             .stateChanged =
                                                 [this](const FramePump::State& state) {
                                                   QMetaObject::invokeMethod(
                                                       this, [this, state] { act(state); },
                                                       Qt::QueuedConnection);
                                                 }});
  }
  [[nodiscard]] FrameMeter::Reading reading() const { return m_pump->reading(); }

 private:
  void act(const FramePump::State& state) {
    m_pump->setInput(QStringLiteral("trigger"), state.isWaiting);
    if (m_wasActive && !state.isActive) m_pump->restart();
    m_wasActive = state.isActive;
  }

  preview::PreviewView m_view;
  preview::BackdropLoader m_backdrop;
  std::unique_ptr<FramePump> m_pump;
  bool m_wasActive = false;
};

void wait(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, [&loop] { loop.quit(); });
  loop.exec();
}

void measure(const QString& path, int seconds, const PictureOptions& options) {
  document::CompositionDocument document;
  if (const auto read = document.readFromURL(QUrl::fromLocalFile(path)); !read) {
    std::printf("%s\n", qPrintable(read.error().text()));
    return;
  }
  using Background = preview::PreviewProgram::Background;
  auto program = preview::PreviewProgram::fromDocument(
      document, options.showsOwnBackground() ? Background::Include : Background::Exclude);
  if (!program) {
    std::printf("%s\n", qPrintable(program.error().error.text()));
    return;
  }
  program->size = fullHd;
  program->framesPerSecond = framesPerSecond;
  Player player(std::move(*program), options);
  wait(1000);
  const FrameMeter::Reading first = player.reading();
  const double processor = processorSeconds();
  double longest = 0;
  double mean = 0;
  for (int second = 0; second < seconds; ++second) {
    wait(1000);
    const FrameMeter::Reading reading = player.reading();
    longest = std::max(longest, reading.longest);
    mean += reading.milliseconds / seconds;
  }
  const FrameMeter::Reading last = player.reading();
  std::printf("%-18s %7lld %7lld %8lld %7lld %9.1f %9.1f %9.0f %% %8ld MB\n",
              qPrintable(document.displayName()), last.made - first.made, last.drawn - first.drawn,
              last.dropped - first.dropped, last.unseen - first.unseen, mean, longest,
              (processorSeconds() - processor) / seconds * 100, peakMegabytes());
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  widgets::TYStyleKit::install(app);
  const int seconds = argc > 1 ? std::atoi(argv[1]) : 10;
  const QDir folder(argc > 2 ? QString::fromLocal8Bit(argv[2])
                             : QStringLiteral(TESSARY_EXAMPLES "/harbour"));
  const PictureOptions options =
      optionsNamed(argc > 3 ? QString::fromLocal8Bit(argv[3]) : QStringLiteral("own"));
  std::printf("%d s each, %.0f frames due\n", seconds, seconds * framesPerSecond);
  std::printf("%-18s %7s %7s %8s %7s %9s %9s %11s %11s\n", "graphic", "made", "drawn", "dropped",
              "unseen", "mean ms", "longest", "processor", "memory");
  for (const QFileInfo& file : folder.entryInfoList({QStringLiteral("*.composition")}, QDir::Dirs))
    measure(file.filePath(), seconds, options);
  return 0;
}
