#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <vector>

// From the start of a process to its first painted window: the editor with an empty document,
// beside the smallest program with an empty window, in turns. The first start of each is not
// counted. Needs a display: xvfb-run -a bench_startup [RUNS]

namespace {

/// Milliseconds, or a negative number when the program did not come up.
double start(const QString& program, const QString& folder) {
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  // Nobody's settings, nothing to recover, and no editor that runs already.
  for (const char* name : {"CONFIG_HOME", "STATE_HOME", "DATA_HOME", "RUNTIME_DIR"})
    environment.insert(QStringLiteral("XDG_") + QString::fromLatin1(name), folder);
  // A Wayland display is named relative to the folder that was just exchanged.
  const QString display = environment.value(QStringLiteral("WAYLAND_DISPLAY"));
  if (!display.isEmpty() && !display.startsWith(u'/'))
    environment.insert(QStringLiteral("WAYLAND_DISPLAY"),
                       qEnvironmentVariable("XDG_RUNTIME_DIR") + u'/' + display);
  process.setProcessEnvironment(environment);
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  QElapsedTimer timer;
  timer.start();
  process.start(program, {QStringLiteral("--exit-when-shown")});
  while (process.waitForReadyRead(30'000))
    if (process.readAllStandardOutput().contains("shown")) {
      const double time = static_cast<double>(timer.nsecsElapsed()) / 1e6;
      process.waitForFinished();
      return time;
    }
  return -1;
}

void report(const char* name, std::vector<double> times) {
  std::sort(times.begin(), times.end());
  std::printf("%-16s median %6.1f ms   fastest %6.1f   slowest %6.1f\n", name,
              times[times.size() / 2], times.front(), times.back());
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const int runs = std::max(1, argc > 1 ? std::atoi(argv[1]) : 15);
  const QTemporaryDir folder;
  std::vector<double> editor;
  std::vector<double> rival;
  for (int i = 0; i <= runs; ++i) {
    const double editorTime = start(QStringLiteral(TESSARY_EDITOR), folder.path());
    const double rivalTime = start(QStringLiteral(TESSARY_EMPTY_WINDOW), folder.path());
    if (editorTime < 0 || rivalTime < 0) {
      std::fputs("a program did not come up; is there a display?\n", stderr);
      return 1;
    }
    if (i == 0) continue;
    editor.push_back(editorTime);
    rival.push_back(rivalTime);
  }
  std::printf("From the start of the process to its first painted window, %d runs in turns\n",
              runs);
  report("tessary-editor", editor);
  report("empty window", rival);
  return 0;
}
