#include <QFile>
#include <QGuiApplication>

#include "cli/CommandLine.h"
#include "cli/Console.h"
#include "cli/EditorStart.h"

namespace {

/// The toolkit's warnings look like our own messages; one that concerns no command is left out.
void showMessage(QtMsgType type, const QMessageLogContext&, const QString& message) {
  if (type == QtDebugMsg || type == QtInfoMsg) return;
  if (message.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR"))) return;
  cli::Console::error(message);
}

}  // namespace

int main(int argc, char** argv) {
  qInstallMessageHandler(showMessage);
  // Before anything of this program is set up that the editor would inherit.
  QStringList words;
  for (int i = 1; i < argc; ++i) words.append(QFile::decodeName(argv[i]));
  if (const auto arguments = cli::EditorStart::arguments(words))
    return static_cast<int>(cli::EditorStart::run(*arguments));
  // The commands need no display; a person's choice of platform is left alone.
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  return static_cast<int>(cli::CommandLine::run(QCoreApplication::arguments().mid(1)));
}
