#pragma once

class QMenuBar;

namespace app {

class TYWindowController;

/// Fills the menu bar of a document window: File, Edit, Component, Arrange, View, Playback, Window,
/// Help.
void addWindowMenus(TYWindowController& window, QMenuBar& bar);
/// Gives the shortcut of new documents to the default format, and to no other.
void registerNewDocumentMenu(TYWindowController& window);

}  // namespace app
