#pragma once

#include <QIODevice>

#include "cli/edit/EditSession.h"
#include "cli/edit/ScriptWords.h"

namespace cli {

/// Runs commands from scripts, one a line.
class BatchScript {
 public:
  explicit BatchScript(EditSession& session) : m_session(session) {
    m_session.allowDefaultDocument();
  }

  /// Gives a name from outside: scripts cannot change it.
  void fix(const QString& name, const QString& value);
  /// Runs the script in the file. The error of a line has the file's name and the line's number.
  [[nodiscard]] EditCommand::Done runFile(const QString& path);
  /// Runs a script that came from elsewhere; `name` is what errors call it, and relative names of
  /// files begin at the folder.
  [[nodiscard]] EditCommand::Done run(QIODevice& device, const QString& name,
                                      const QString& folder);

 private:
  [[nodiscard]] EditCommand::Done runText(const QString& text, const QString& name,
                                          const QString& folder);
  [[nodiscard]] EditCommand::Done runLine(const QString& line, const QString& folder);
  [[nodiscard]] EditCommand::Done runWords(QStringList words, const QString& folder);
  [[nodiscard]] EditCommand::Done let(const QStringList& words);

  EditSession& m_session;
  ScriptNames m_names;
  QStringList m_fixed;
  int m_depth = 0;          ///< of files within files
  bool m_isPlaced = false;  ///< the error says its line already
};

}  // namespace cli
