#pragma once

#include <QCoreApplication>
#include <QMenu>
#include <QMenuBar>

#include "app/ActionTable.h"
#include "app/TYWindowController.h"
#include "canvas/ToolbarComponents.h"
#include "model/Composition.h"

namespace app {

/// Adds the commands of one window, one menu at a time.
class MenuMaker {
  Q_DECLARE_TR_FUNCTIONS(WindowMenus)

 public:
  MenuMaker(TYWindowController& window, QMenuBar& bar) : m_window(window), m_bar(bar) {}

  void addFile();
  void addEdit();
  void addComponent();
  void addArrange();
  void addView();
  void addPlayback();
  void addPreview();
  void addWindow();
  void addHelp();

 private:
  using Command = ActionTable::Command;
  void begin(const QString& title) { m_menu = m_bar.addMenu(title); }
  void separate() { m_menu->addSeparator(); }
  QAction* add(Command command) { return m_window.actions().add(*m_menu, std::move(command)); }
  /// A command that calls an operation of the composition.
  void addForSelection(const QString& id, const QString& text, const QList<QKeySequence>& keys,
                       void (model::Composition::*operation)());
  void addNew();
  void addRecent();
  void addMaintenance();
  void addComponents(const QList<canvas::ToolbarComponents::Entry>& entries);
  void addPanels();
  void addClipboard();
  void addSelected();
  void addZoom();
  void addOverlays();
  void addAlign(const QString& kind, const QStringList& sides, const QStringList& texts,
                int firstTag, qsizetype needed);
  [[nodiscard]] std::function<bool()> hasComposition() const {
    return [&window = m_window] { return window.composition() != nullptr; };
  }
  [[nodiscard]] std::function<bool()> hasSelection(qsizetype least = 1) const {
    return [&window = m_window, least] {
      return window.composition() && window.composition()->selectedComponents().size() >= least;
    };
  }
  /// Whether the focus is in a field, which keeps its own editing commands.
  [[nodiscard]] static bool editsText();
  [[nodiscard]] static QString selectFirst() { return tr("Select a component."); }

  TYWindowController& m_window;
  QMenuBar& m_bar;
  QMenu* m_menu = nullptr;
};

}  // namespace app
