#include "cli/edit/BatchScript.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "cli/edit/EditCommands.h"
#include "cli/edit/NearNames.h"

namespace cli {

using Done = EditCommand::Done;

namespace {

constexpr qint64 largestScript = 16 * 1024 * 1024;
constexpr int deepestInclude = 16;

}  // namespace

void BatchScript::fix(const QString& name, const QString& value) {
  m_names[name] = QStringList{value};
  m_fixed.append(name);
}

Done BatchScript::runFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    return failed(ExitStatus::InputUnreadable, file.errorString(), path);
  return run(file, path, QFileInfo(path).absolutePath());
}

Done BatchScript::run(QIODevice& device, const QString& name, const QString& folder) {
  const QByteArray bytes = device.read(largestScript + 1);  // devices and pipes may never end
  if (bytes.size() > largestScript)
    return failed(ExitStatus::InputUnreadable, QStringLiteral("is too large for a script"), name);
  return runText(QString::fromUtf8(bytes), name, folder);
}

Done BatchScript::runText(const QString& text, const QString& name, const QString& folder) {
  if (++m_depth > deepestInclude)
    return misused(QStringLiteral("files include one another too deeply"));
  const QStringList lines =
      QString(text).replace(QLatin1String("\r\n"), QLatin1String("\n")).split(u'\n');
  for (qsizetype i = 0; i < lines.size(); ++i) {
    const qsizetype first = i;
    QString line = lines[i];
    while (line.endsWith(u'\\') && i + 1 < lines.size()) line = line.chopped(1) + lines[++i];
    if (auto done = runLine(line, folder); !done) {
      // The place in a file that was included says more than that of the line which did so.
      if (std::exchange(m_isPlaced, true)) return done;
      return failed(done.error().status, done.error().error.text(),
                    QStringLiteral("%1:%2").arg(name).arg(first + 1));
    }
  }
  --m_depth;
  return {};
}

Done BatchScript::runLine(const QString& line, const QString& folder) {
  const auto words = scriptWords(line, m_names);
  if (!words) return misused(words.error().message);
  return words->isEmpty() ? Done() : runWords(*words, folder);
}

Done BatchScript::runWords(QStringList words, const QString& folder) {
  const QString name = words.takeFirst();
  if (const EditCommand* command = EditCommands::named(name))
    return m_session.run(*command, words, folder);
  if (name == QLatin1String("let")) return let(words);
  if (name == QLatin1String("save") && words.isEmpty()) return m_session.save();
  if (name == QLatin1String("include") && words.size() == 1)
    return runFile(QDir(folder).filePath(words[0]));
  if (name == QLatin1String("open") && words.size() == 1)
    return m_session.open(words[0]).map([](OpenDocument*) {});
  QStringList names{QStringLiteral("let"), QStringLiteral("save"), QStringLiteral("include"),
                    QStringLiteral("open")};
  if (names.contains(name))
    return misused(QStringLiteral("'%1' has the wrong number of arguments").arg(name));
  for (const EditCommand& command : EditCommands::all()) names.append(command.name);
  return misused(
      QStringLiteral("a script has no command '%1'; %2").arg(name, nearNames(name, names)));
}

Done BatchScript::let(const QStringList& words) {
  if (words.isEmpty() || !isScriptName(words[0]))
    return misused(QStringLiteral("let takes a name of letters, digits and _, and its words"));
  if (!m_fixed.contains(words[0])) m_names[words[0]] = words.mid(1);
  return {};
}

}  // namespace cli
