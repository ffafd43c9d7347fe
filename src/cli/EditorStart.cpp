#include "cli/EditorStart.h"

#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <cerrno>
#include <cstring>
#include <vector>

#include "cli/CommandTable.h"
#include "cli/Console.h"

namespace cli {

namespace {

const QString editorName = QStringLiteral("tessary-editor");
const QString endOfOptions = QStringLiteral("--");

/// An ordinary folder is none: it may be called like a mistyped command.
bool isDocument(const QString& word) {
  const QFileInfo file(word);
  const QString ending = file.suffix().toLower();
  return file.isFile() || ending == QLatin1String("composition") ||
         ending == QLatin1String("qtz") || QFileInfo::exists(word + QStringLiteral("/data.xml"));
}

/// Where an installation or a build has it, then wherever the shell would find it.
QString editorPath() {
  const QString here = QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/self/exe"))).path();
  const QStringList places{here, here + QStringLiteral("/../bin"),
                           here + QStringLiteral("/../libexec/tessary")};
  const QString found = QStandardPaths::findExecutable(editorName, places);
  return found.isEmpty() ? QStandardPaths::findExecutable(editorName) : found;
}

}  // namespace

std::optional<QStringList> EditorStart::arguments(const QStringList& arguments) {
  if (arguments.isEmpty()) return {};
  const QString& first = arguments.first();
  const bool isMarked = first == endOfOptions;
  if (!isMarked && (first.startsWith(u'-') || CommandTable::named(first) ||
                    first == QLatin1String("help") || !isDocument(first)))
    return {};
  QStringList options;
  QStringList paths;
  bool mayBeOption = !isMarked;
  for (const QString& word : arguments.mid(isMarked ? 1 : 0)) {
    if (mayBeOption && word == endOfOptions)
      mayBeOption = false;
    else if (mayBeOption && word.startsWith(u'-'))
      options.append(word);
    else
      paths.append(QDir::current().absoluteFilePath(word));
  }
  return options + QStringList{endOfOptions} + paths;
}

ExitStatus EditorStart::run(const QStringList& arguments) {
  const QString path = editorPath();
  if (path.isEmpty()) {
    Console::error(
        QStringLiteral("files are opened by tessary-editor, which is neither beside "
                       "this program nor among the programs of PATH"));
    return ExitStatus::MissingResources;
  }
  QByteArrayList words{QFile::encodeName(path)};
  for (const QString& argument : arguments) words.append(QFile::encodeName(argument));
  std::vector<char*> pointers;
  for (QByteArray& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  ::execv(pointers.front(), pointers.data());
  Console::error(QStringLiteral("%1: the editor cannot be started: %2")
                     .arg(path, QString::fromLocal8Bit(std::strerror(errno))));
  return ExitStatus::MissingResources;
}

}  // namespace cli
