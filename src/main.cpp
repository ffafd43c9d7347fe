#include <QGuiApplication>

#include "cli/CommandLine.h"
#include "cli/Console.h"

namespace {

/// The toolkit's warnings look like our own messages; one that concerns no command is left out.
void showMessage(QtMsgType type, const QMessageLogContext&, const QString& message) {
  if (type == QtDebugMsg || type == QtInfoMsg) return;
  if (message.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR"))) return;
  cli::Console::error(message);
}

}  // namespace

int main(int argc, char** argv) {
  // The commands need no display; a person's choice of platform is left alone.
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  qInstallMessageHandler(showMessage);
  const QGuiApplication application(argc, argv);
  return static_cast<int>(cli::CommandLine::run(QCoreApplication::arguments().mid(1)));
}
