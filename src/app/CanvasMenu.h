#pragma once

class QMenu;

namespace model {
class Composition;
}

namespace app {

class TYWindowController;

/// Fills the menu that opens on the canvas with commands of the window: those for the selected
/// components, or without a selection those for the canvas.
void fillCanvasMenu(QMenu& menu, TYWindowController& window, const model::Composition& composition);

}  // namespace app
