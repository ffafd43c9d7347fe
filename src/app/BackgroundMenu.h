#pragma once

#include <QObject>

class QMenu;

namespace app {

class TYWindowController;

/// What lies behind the graphic while it is edited: nothing, a colour, an image or a movie. Adds
/// the commands to the menu.
void addBackgroundCommands(TYWindowController& window, QMenu& menu);

}  // namespace app
