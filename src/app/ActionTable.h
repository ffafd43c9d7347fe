#pragma once

#include <QAction>
#include <QHash>
#include <functional>
#include <vector>

class QMenu;

namespace app {

/// The commands of a window as actions, by identifiers. Each knows when it can act and what is
/// missing when it cannot.
class ActionTable : public QObject {
  Q_OBJECT

 public:
  struct Command {
    QString identifier;
    QString text;
    QList<QKeySequence> shortcuts = {};
    std::function<void()> run;
    std::function<bool()> canRun = {};     ///< none: always
    QString needs = {};                    ///< told while it cannot run
    std::function<bool()> isChecked = {};  ///< for commands that switch something
    QString glyph = {};
  };

  using QObject::QObject;

  /// Adds the command to the menu. The action belongs to the table.
  QAction* add(QMenu& menu, Command command);
  /// None for an unknown identifier.
  [[nodiscard]] QAction* action(const QString& identifier) const {
    return m_byIdentifier.value(identifier);
  }
  /// Looks at each command again.
  void update();

 private:
  struct Entry {
    QAction* action;
    Command command;
  };
  std::vector<Entry> m_entries;
  QHash<QString, QAction*> m_byIdentifier;
};

}  // namespace app
