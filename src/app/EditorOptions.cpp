#include "app/EditorOptions.h"

namespace app {

EditorOptions EditorOptions::read(const QStringList& arguments) {
  EditorOptions options;
  bool onlyPaths = false;
  for (const QString& word : arguments) {
    if (onlyPaths || !word.startsWith(u'-'))
      options.paths.append(word);
    else if (word == QLatin1String("--"))
      onlyPaths = true;
    else if (word == QLatin1String("--help") || word == QLatin1String("-h"))
      options.wantsHelp = true;
    else if (word == QLatin1String("--version"))
      options.wantsVersion = true;
    else if (word == QLatin1String("--exit-when-shown"))
      options.exitsWhenShown = true;
    else if (options.error.isEmpty())
      options.error =
          QStringLiteral("there is no option '%1'; see tessary-editor --help").arg(word);
  }
  return options;
}

QString EditorOptions::help() {
  return QStringLiteral(
      "Usage: tessary-editor [OPTIONS] [--] [FILE…]\n"
      "\n"
      "The editor for broadcast graphics. FILE is a document (NAME.composition), or a composition\n"
      "(.qtz) or picture, which becomes a component of a new document. An editor that is running\n"
      "already opens them.\n"
      "\n"
      "Options:\n"
      "  --help             this text\n"
      "  --version          the program's version\n"
      "  --exit-when-shown  for measuring starts: prints \"shown\" when the window is painted, and "
      "ends\n"
      "\n"
      "Graphics are checked, rendered and edited without a display by tessary; see tessary "
      "--help.");
}

}  // namespace app
