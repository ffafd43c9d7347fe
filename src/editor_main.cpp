#include <unistd.h>

#include <QApplication>
#include <QFile>
#include <QIcon>
#include <QImageReader>
#include <cstdio>
#include <memory>

#include "app/AppDelegate.h"
#include "app/EditorOptions.h"
#include "app/FirstFrame.h"
#include "app/SingleInstance.h"
#include "widgets/TYStyleKit.h"

namespace {

void say(std::FILE* stream, const QString& text) {
  std::fputs(text.toUtf8().append('\n').constData(), stream);
  std::fflush(stream);
}

/// Ends with a message where the toolkit would abort and leave a core file.
void endWithoutDisplay(QtMsgType type, const QMessageLogContext&, const QString& message) {
  if (type == QtDebugMsg || type == QtInfoMsg) return;
  if (type != QtFatalMsg) return say(stderr, QStringLiteral("tessary-editor: ") + message);
  say(stderr,
      QStringLiteral("tessary-editor: no display could be opened; graphics are rendered and "
                     "edited without one by tessary, see tessary --help"));
  ::_exit(1);
}

QStringList words(int argc, char** argv) {
  QStringList all;
  for (int i = 1; i < argc; ++i) all.append(QFile::decodeName(argv[i]));
  return all;
}

/// Help and version need no display.
bool answered(const app::EditorOptions& options) {
  if (options.wantsHelp) say(stdout, app::EditorOptions::help());
  if (options.wantsVersion && !options.wantsHelp)
    say(stdout, QStringLiteral("tessary-editor " TESSARY_VERSION));
  return options.wantsHelp || options.wantsVersion;
}

/// As many pixels as an image of a composition may have.
constexpr int mostMegabytesOfAnImage = 256;

void nameProgram() {
  QApplication::setApplicationName(QStringLiteral("tessary"));
  QApplication::setApplicationDisplayName(QStringLiteral("Tessary"));
  QApplication::setApplicationVersion(QStringLiteral(TESSARY_VERSION));
  QApplication::setDesktopFileName(QStringLiteral("tessary"));
  QIcon icon;
  for (const int size : {16, 24, 32, 48, 64, 128, 256})
    icon.addFile(QStringLiteral(":/icons/tessary-%1.png").arg(size));
  QApplication::setWindowIcon(icon);
}

}  // namespace

int main(int argc, char** argv) {
  if (answered(app::EditorOptions::read(words(argc, argv)))) return 0;
  const QtMessageHandler usual = qInstallMessageHandler(endWithoutDisplay);
  QApplication application(argc, argv);
  qInstallMessageHandler(usual);
  nameProgram();
  QImageReader::setAllocationLimit(mostMegabytesOfAnImage);
  const auto options = app::EditorOptions::read(QApplication::arguments().mid(1));
  if (!options.error.isNull()) {
    say(stderr, QStringLiteral("tessary-editor: ") + options.error);
    return 2;
  }
  app::SingleInstance instance(QStringLiteral("tessary"));
  if (instance.handOverOrListen(options.paths)) return 0;
  widgets::TYStyleKit::install(application);
  app::AppDelegate delegate(foundation::UserDefaults::standard());
  QObject::connect(&instance, &app::SingleInstance::filesRequested, &delegate,
                   &app::AppDelegate::openDocuments);
  std::unique_ptr<app::FirstFrame> firstFrame;
  if (options.exitsWhenShown)
    firstFrame = std::make_unique<app::FirstFrame>([] {
      say(stdout, QStringLiteral("shown"));
      QApplication::exit();
    });
  delegate.start(options.paths);
  return QApplication::exec();
}
