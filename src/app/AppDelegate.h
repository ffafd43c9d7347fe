#pragma once

#include <QHash>
#include <QObject>
#include <QTimer>
#include <memory>

#include "app/ProgramServices.h"
#include "app/RecentDocuments.h"
#include "app/RenderQueue.h"
#include "document/CompositionDocumentsController.h"

namespace app {

class HelpWindow;
class TYPreferencesController;
class TYWindowController;

/// The program: the open documents and their windows. Has to live as long as the application.
class AppDelegate : public QObject, private ProgramServices {
  Q_OBJECT

 public:
  explicit AppDelegate(foundation::UserDefaults& userDefaults,
                       document::RecoveryStore recoveryStore = document::RecoveryStore());
  ~AppDelegate() override;

  /// Opens these, what an earlier run left behind, or an empty document when there is nothing.
  void start(const QStringList& paths);
  /// Opens documents; composition files and pictures become components of a new one. What cannot
  /// be opened is told together. Without paths the program comes to the front.
  void openDocuments(const QStringList& paths);
  [[nodiscard]] document::CompositionDocumentsController& controller() { return m_controller; }
  /// None for a document without a window.
  [[nodiscard]] TYWindowController* windowOf(const document::CompositionDocument& document) const;

 private:
  [[nodiscard]] foundation::UserDefaults& defaults() override { return m_defaults; }
  void newDocument(const QString& format) override { m_controller.newDocument(format); }
  void chooseDocuments() override;
  void openDocument(const QString& path) override { openDocuments({path}); }
  [[nodiscard]] QStringList recentDocuments() const override { return m_recent.paths(); }
  void clearRecentDocuments() override { m_recent.clear(); }
  void documentWasSaved(const document::CompositionDocument& document) override;
  void closeDocument(document::CompositionDocument& document) override;
  [[nodiscard]] QList<document::CompositionDocument*> documents() const override {
    return m_controller.documents();
  }
  void showDocument(document::CompositionDocument& document) override;
  void runSlideshow() override { m_controller.runSlideshow(); }
  [[nodiscard]] RenderQueue& renders() override { return m_renders; }
  void mayClose(document::CompositionDocument& document,
                std::function<void(bool)> answered) override;
  void showPreferences() override;
  void showAbout() override;
  void showHelp() override;
  void quit() override;

  /// Closes all, asking about each that is not saved; the program ends with the last one.
  void endDocuments();
  /// Asks whether what is being rendered may be given up.
  void mayEndRendering(QWidget& window, const std::function<void(bool)>& answered);
  void offerRecovery(const QList<document::RecoveryEntry>& entries);
  /// Why it cannot be opened; nothing when it was, or when the person is asked about it.
  [[nodiscard]] std::optional<foundation::Error> openOrAsk(const QString& path);
  void tellNotOpened(const std::vector<foundation::Error>& problems);
  void addToNewDocument(const QStringList& paths);
  [[nodiscard]] bool isUntouched(const document::CompositionDocument& document) const;
  void askAboutTaken(const QString& path, const QString& sentence);
  void tellOpened(const document::CompositionDocument& document, const QStringList& warnings);
  [[nodiscard]] TYWindowController* anyWindow() const;
  /// Makes an empty document where there is none.
  [[nodiscard]] TYWindowController& windowForMessages();

  foundation::UserDefaults& m_defaults;
  RenderQueue m_renders;  // windows show it
  RecentDocuments m_recent;
  document::CompositionDocumentsController m_controller;
  QHash<const document::CompositionDocument*, TYWindowController*> m_windows;
  std::unique_ptr<TYPreferencesController> m_preferences;
  std::unique_ptr<HelpWindow> m_help;
  QTimer m_autosave;
};

}  // namespace app
