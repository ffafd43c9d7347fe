// Plays each document of a folder as the preview player does, at 1920 × 1080 and 50 frames a
// second, into a view: frames, drops, time a frame, processor time, memory in use at the end. A
// graphic that waits is triggered, one that has ended begins anew.
//
// Then, for each: how long until an edit that is followed shows (from the export to the picture,
// worst of ten), and what is done while the graphic waits for a trigger that does not come or has
// ended: frames made and processor time in three seconds.
//
//     bench_preview [SECONDS [FOLDER [LOOK]]]
//
// LOOK is how it is looked at: own (with its background), chessboard, key, fill, or the path of a
// movie that plays behind the graphic.
//
// Or the memory in use, minute by minute, of one document that is played again and again:
//
//     bench_preview --loop MINUTES [DOCUMENT]

#include <sys/resource.h>
#include <unistd.h>

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

/// Resident at the moment.
double megabytes() {
  QFile file(QStringLiteral("/proc/self/statm"));
  if (!file.open(QIODevice::ReadOnly)) return 0;
  const double pages = file.readAll().split(' ').value(1).toDouble();
  return pages * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1024 * 1024);
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

void wait(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, [&loop] { loop.quit(); });
  loop.exec();
}

/// A view that is fed by a pump, and an operator who triggers what waits and plays again what
/// ended.
class Player : public QObject {
 public:
  explicit Player(preview::PreviewProgram program, const PictureOptions& options = {}) {
    m_view.resize(fullHd);
    m_view.setOptions(options);
    connect(&m_backdrop, &preview::BackdropLoader::pictureReady, &m_view,
            &preview::PreviewView::setBackdrop);
    if (options.backdrop == PictureOptions::Backdrop::Movie)
      m_backdrop.load(preview::BackdropSource::Kind::Movie, options.movie);
    m_view.setPictureSize(program.size);
    m_view.show();
    const auto take = [this] {
      if (auto picture = m_pump->takePicture()) {
        m_view.setPicture(std::move(picture));
        ++m_pictures;
      }
    };
    const auto queue = [this](const auto& act) {
      QMetaObject::invokeMethod(this, act, Qt::QueuedConnection);
    };
    m_pump = std::make_unique<FramePump>(
        std::move(program), FramePump::Hooks{.pictureReady = [queue, take] { queue(take); },
                                             .stateChanged =
                                                 [this, queue](const FramePump::State& state) {
                                                   queue([this, state] { act(state); });
                                                 }});
  }
  [[nodiscard]] FrameMeter::Reading reading() const { return m_pump->reading(); }
  [[nodiscard]] FramePump& pump() { return *m_pump; }
  void restart() {
    m_state = {};
    m_run = m_pump->restart();
  }
  [[nodiscard]] int pictures() const { return m_pictures; }
  [[nodiscard]] bool isWaiting() const { return m_state.isWaiting; }
  /// Triggers and plays again by itself.
  void setOperated(bool isOperated) {
    m_isOperated = isOperated;
    act(m_state);
  }

 private:
  void act(const FramePump::State& state) {
    if (state.run < m_run) return;
    const bool ended = std::exchange(m_state, state).isActive && !state.isActive;
    if (!m_isOperated) return;
    m_pump->setInput(QStringLiteral("trigger"), state.isWaiting);
    if (ended || !state.isActive) restart();
  }

  preview::PreviewView m_view;
  preview::BackdropLoader m_backdrop;
  std::unique_ptr<FramePump> m_pump;
  FramePump::State m_state;
  int m_run = 1;
  int m_pictures = 0;
  bool m_isOperated = true;
};

std::unique_ptr<document::CompositionDocument> opened(const QString& path) {
  auto document = std::make_unique<document::CompositionDocument>();
  if (const auto read = document->readFromURL(QUrl::fromLocalFile(path)); read) return document;
  std::printf("%s: cannot be read\n", qPrintable(path));
  return nullptr;
}

std::optional<preview::PreviewProgram> programOf(const document::CompositionDocument& document,
                                                 const PictureOptions& options = {}) {
  using Background = preview::PreviewProgram::Background;
  auto program = preview::PreviewProgram::fromDocument(
      document, options.showsOwnBackground() ? Background::Include : Background::Exclude);
  if (!program) {
    std::printf("%s\n", qPrintable(program.error().error.text()));
    return {};
  }
  program->size = fullHd;
  program->framesPerSecond = framesPerSecond;
  return std::move(*program);
}

void measurePlaying(const document::CompositionDocument& document, int seconds,
                    const PictureOptions& options) {
  auto program = programOf(document, options);
  if (!program) return;
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
  std::printf("%-18s %7lld %7lld %8lld %7lld %9.1f %9.1f %9.0f %% %8.0f MB\n",
              qPrintable(document.displayName()), last.made - first.made, last.drawn - first.drawn,
              last.dropped - first.dropped, last.unseen - first.unseen, mean, longest,
              (processorSeconds() - processor) / seconds * 100, megabytes());
  std::fflush(stdout);
}

/// Milliseconds from the start of the export to the first picture of what was exported.
double timeToFollow(const document::CompositionDocument& document, Player& player) {
  QElapsedTimer timer;
  timer.start();
  auto program = programOf(document);
  if (!program) return 0;
  const int before = player.pictures();
  player.pump().exchangeProgram(std::move(*program));
  while (player.pictures() == before && timer.elapsed() < 5000) wait(1);
  return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

void measureFollowing(document::CompositionDocument& document) {
  auto program = programOf(document);
  if (!program) return;
  Player player(std::move(*program));
  wait(1000);
  double worst = 0;
  model::Composition& composition = *document.composition();
  composition.setBackgroundMode(model::BackgroundMode::SolidColor);
  for (int edit = 0; edit < 10; ++edit) {
    composition.setBackgroundColor(foundation::Color(edit / 10.0, 0.5, 0.5));
    worst = std::max(worst, timeToFollow(document, player));
  }
  player.setOperated(false);
  player.restart();
  QElapsedTimer patience;
  patience.start();
  while (!player.isWaiting() && patience.elapsed() < 15'000) wait(50);
  wait(500);
  const qint64 made = player.reading().made;
  const double processor = processorSeconds();
  wait(3000);
  std::printf("%-18s %12.0f ms %12s %10lld %12.2f %%\n", qPrintable(document.displayName()), worst,
              player.isWaiting() ? "waits" : "goes on", player.reading().made - made,
              (processorSeconds() - processor) / 3 * 100);
  std::fflush(stdout);
}

void loop(const document::CompositionDocument& document, int minutes) {
  auto program = programOf(document);
  if (!program) return;
  Player player(std::move(*program));
  std::printf("%8s %10s %10s %10s\n", "minute", "made", "dropped", "memory");
  for (int minute = 0; minute <= minutes; ++minute) {
    wait(minute == 0 ? 5000 : 60'000);
    const FrameMeter::Reading reading = player.reading();
    std::printf("%8d %10lld %10lld %7.1f MB\n", minute, reading.made, reading.dropped, megabytes());
    std::fflush(stdout);
  }
}

int measureAll(int seconds, const QDir& folder, const PictureOptions& options) {
  const QFileInfoList files = folder.entryInfoList({QStringLiteral("*.composition")}, QDir::Dirs);
  std::printf("%d s each, %.0f frames due\n", seconds, seconds * framesPerSecond);
  std::printf("%-18s %7s %7s %8s %7s %9s %9s %11s %11s\n", "graphic", "made", "drawn", "dropped",
              "unseen", "mean ms", "longest", "processor", "memory");
  for (const QFileInfo& file : files)
    if (const auto document = opened(file.filePath())) measurePlaying(*document, seconds, options);
  std::printf("\n%-18s %15s %12s %10s %14s\n", "graphic", "edit shows", "then it", "frames",
              "processor");
  for (const QFileInfo& file : files)
    if (const auto document = opened(file.filePath())) measureFollowing(*document);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  widgets::TYStyleKit::install(app);
  const QStringList arguments = QCoreApplication::arguments();
  const QString examples = QStringLiteral(TESSARY_EXAMPLES "/harbour");
  if (arguments.value(1) == QLatin1String("--loop")) {
    const QString path =
        arguments.value(3, QDir(examples).filePath(QStringLiteral("lower-third.composition")));
    const auto document = opened(path);
    if (document) loop(*document, std::max(arguments.value(2).toInt(), 1));
    return document ? 0 : 1;
  }
  return measureAll(argc > 1 ? std::max(arguments[1].toInt(), 1) : 60,
                    QDir(arguments.value(2, examples)),
                    optionsNamed(arguments.value(3, QStringLiteral("own"))));
}
