#pragma once

#include <QMainWindow>
#include <memory>

#include "app/ActionTable.h"
#include "app/WindowLayout.h"
#include "canvas/CanvasHost.h"
#include "canvas/TYAlignmentController.h"
#include "document/CompositionDocument.h"
#include "timeline/TimelineHost.h"

namespace canvas {
class CompositionView;
class TYZoomScrollView;
}  // namespace canvas
namespace inspector {
class TYInspectorController;
}
namespace library {
class TYLibraryController;
}
namespace timeline {
class TimelinePanel;
}

namespace app {

class DocumentFindings;
class DocumentSaving;
class FindingsPanel;
class HistoryPanel;
class MainToolbar;
class PanelFocus;
class ProgramServices;
class StatusLine;

/// The window of a document: toolbar, canvas, and around it the library, the timeline, the
/// inspector and the history as docks. Closing it closes the document, after asking about unsaved
/// changes.
class TYWindowController : public QMainWindow,
                           private canvas::CanvasHost,
                           private timeline::TimelineHost {
  Q_OBJECT

 public:
  TYWindowController(document::CompositionDocument& document, ProgramServices& services);
  ~TYWindowController() override;

  [[nodiscard]] document::CompositionDocument& document() const { return m_document; }
  /// None when the document holds none.
  [[nodiscard]] model::Composition* composition() const { return m_document.composition(); }
  [[nodiscard]] ProgramServices& services() const { return m_services; }
  [[nodiscard]] ActionTable& actions() { return m_actions; }
  [[nodiscard]] canvas::CompositionView& view() const { return *m_view; }
  [[nodiscard]] timeline::TimelinePanel& timelinePanel() const { return *m_timeline; }
  /// Whether commands like Copy are about key frames: some are seen selected, and it is not the
  /// canvas that is worked on.
  [[nodiscard]] bool editsKeyFrames() const;
  [[nodiscard]] canvas::TYAlignmentController& alignment() { return m_alignment; }
  [[nodiscard]] DocumentSaving& saving() const { return *m_saving; }
  [[nodiscard]] PanelFocus& panelFocus() const { return *m_panelFocus; }

  [[nodiscard]] QString windowTitleForDocumentDisplayName(const QString& name) const;
  /// Asks about unsaved changes, then calls back: true when the window may go.
  void mayClose(std::function<void(bool)> answered);
  /// Shows what a command has to tell, as a sheet.
  void showReport(const model::CommandReport& report) override;
  void showError(const QString& title, const foundation::Error& error);
  void showWarnings(const QString& title, const QStringList& warnings);

  /// Adds a standard component in the middle of the picture.
  void addStandardComponent(const QString& name);
  /// Brings title, commands and the line at the foot up to date; cheap, at most once an event.
  void setNeedsUpdate();
  /// Keeps place and panels for the next window.
  void saveWindowState();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void showHint(const QString& hint) override;
  void fillContextMenu(QMenu& menu, const model::Composition& composition) override;
  void pointerMoved(const std::optional<QPointF>& pixel) override;
  bool importPSDFile(const QString& path, const QString& qtzFile) override;
  void fillContextMenu(QMenu& menu, const timeline::TimelineTarget& target) override;

  void makePanels();
  QDockWidget* makeDock(const QString& name, const QString& title, QWidget* content,
                        Qt::DockWidgetArea area);
  void makeMenus();
  void makePanelFocus();
  void makeFindings();
  void takeComposition();
  void letGo();
  void update();

  document::CompositionDocument& m_document;
  ProgramServices& m_services;
  ActionTable m_actions;
  canvas::TYAlignmentController m_alignment;
  std::unique_ptr<DocumentSaving> m_saving;
  canvas::CompositionView* m_view;
  canvas::TYZoomScrollView* m_scrollView;
  inspector::TYInspectorController* m_inspector;
  library::TYLibraryController* m_library;
  timeline::TimelinePanel* m_timeline;
  HistoryPanel* m_history;
  MainToolbar* m_toolbar;
  StatusLine* m_status;
  DocumentFindings* m_findings;
  FindingsPanel* m_findingsPanel;
  PanelFocus* m_panelFocus;
  WindowLayout m_layout{*this};
  bool m_updateIsDue = false;
  bool m_mayClose = false;
  std::vector<store::Subscription> m_subscriptions;
  store::Subscription m_replacement;
};

}  // namespace app
