#include "app/ActionTable.h"

#include <QMenu>

#include "widgets/TYStyleKit.h"

namespace app {

QAction* ActionTable::add(QMenu& menu, Command command) {
  auto* action = new QAction(command.text, this);
  action->setObjectName(command.identifier);
  action->setShortcuts(command.shortcuts);
  action->setCheckable(static_cast<bool>(command.isChecked));
  if (!command.glyph.isEmpty()) {
    action->setIcon(widgets::TYStyleKit::image(command.glyph, widgets::Token::Text));
    action->setIconVisibleInMenu(false);
  }
  connect(action, &QAction::triggered, this, [this, run = command.run] {
    run();
    update();
  });
  menu.addAction(action);
  m_byIdentifier.insert(command.identifier, action);
  m_entries.push_back({action, std::move(command)});
  return action;
}

void ActionTable::update() {
  for (const Entry& entry : m_entries) {
    const Command& command = entry.command;
    const bool can = !command.canRun || command.canRun();
    entry.action->setEnabled(can);
    const QString shortcut = entry.action->shortcut().toString(QKeySequence::NativeText);
    const QString name = entry.action->text().remove(u'&').remove(QStringLiteral("…"));
    entry.action->setToolTip(!can && !command.needs.isEmpty() ? command.needs
                             : shortcut.isEmpty()             ? name
                                                  : QStringLiteral("%1 (%2)").arg(name, shortcut));
    entry.action->setStatusTip(can ? QString() : command.needs);
    if (command.isChecked) entry.action->setChecked(command.isChecked());
  }
}

}  // namespace app
