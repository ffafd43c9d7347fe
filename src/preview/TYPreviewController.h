#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include "preview/FramePump.h"
#include "preview/HeldKey.h"
#include "preview/PreviewedDocument.h"
#include "preview/StatusRow.h"

namespace preview {

class PictureChecks;
class FieldsOpening;
class FieldsPanel;
class FullScreen;
class PreviewView;

/// The preview player: plays the exported file of a document as the playout will, above all other
/// windows. There is one for the application, made when it is first asked for and gone when its
/// window closes. What was loaded goes on playing when its document is closed.
class TYPreviewController : public QWidget {
  Q_OBJECT

 public:
  /// Shows the window and plays the document.
  static void togglePreviewForCompositionDocument(document::CompositionDocument& document);
  /// Nothing without a player.
  static void togglePreviewFullscreen();
  /// On the screen of that name; nothing where there is none, or without a player.
  static void showFullscreenOnScreen(const QString& name);
  static void runSlideshowForCompositions(const QList<document::CompositionDocument*>& documents);
  /// To be told before a document is gone.
  static void documentWillClose(const document::CompositionDocument& document);
  /// The player that is open; none otherwise.
  [[nodiscard]] static TYPreviewController* shared();
  static void closeShared();

  ~TYPreviewController() override;

  void displayCompositionDocument(document::CompositionDocument& document);
  /// One after the other, from the first again after the last; each until it says that it ended.
  void displayCompositions(const QList<document::CompositionDocument*>& documents);
  void showNextComposition();

  /// Whether what is loaded waits for its trigger.
  [[nodiscard]] bool isWaitingForTrigger() const { return m_state.isWaiting; }
  /// Presses the trigger; false, and nothing happens, while nothing waits for it.
  bool setTrigger();
  void releaseTrigger();
  /// Presses it and lets it go after a tenth of a second.
  void sendTrigger();
  void reloadComposition();

  [[nodiscard]] PreviewView& view() const { return *m_view; }
  [[nodiscard]] StatusRow& statusRow() const { return *m_status; }
  [[nodiscard]] PictureChecks& checks() const { return *m_checks; }
  [[nodiscard]] FieldsPanel& fieldsPanel() const { return *m_fields; }
  /// None while nothing is loaded.
  [[nodiscard]] FramePump* pump() const { return m_pump.get(); }
  /// None when there is none, or it was closed.
  [[nodiscard]] const document::CompositionDocument* currentDocument() const {
    return m_document->document();
  }
  /// Whether edits of the document show at once, at the playing time that they find.
  [[nodiscard]] bool follows() const { return m_document->follows(); }
  void setFollows(bool follows);
  [[nodiscard]] bool isShowingFullscreen() const;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  TYPreviewController();
  [[nodiscard]] static TYPreviewController& made();
  void observe();
  void observeFields();
  void comeToFront();
  void unload();
  void load(PreviewProgram program);
  /// Plays the document with or without its background; false when it is not there any more.
  bool provideBackground(PreviewProgram::Background background);
  void showFailure(const PreviewProgram::Failure& failure);
  /// As a hook of the pump that is loaded now: acts on the thread of the window, and no more once
  /// something else was loaded.
  template <typename Act>
  [[nodiscard]] auto forward(Act act);
  void takePicture();
  void takeState(const FramePump::State& state);
  void tellStalled(int run);
  void tellFindings(const QStringList& findings);
  void updateStatusField();
  void updateTitle();
  void updateMeter();
  void fitWindow(const QSize& picture);
  void goToNextSoon();
  void observeFullScreen();
  void previewAgain();
  void toggleFollowing();
  /// Shows what has become of the document at the same playing time; false when it cannot.
  bool catchUp();
  void forget(const document::CompositionDocument& document);
  [[nodiscard]] bool runsSlideshow() const { return !m_slideshowCompositions.isEmpty(); }

  PreviewView* m_view;
  StatusRow* m_status;
  std::unique_ptr<PictureChecks> m_checks;
  PreviewedDocument* m_document;
  PreviewProgram::Background m_background;  ///< that the operator wants to see
  bool m_servesBoth = false;                ///< what is loaded is the same with and without
  FieldsPanel* m_fields;
  FieldsOpening* m_fieldsOpening;
  FullScreen* m_fullScreen;
  QTimer m_meterTimer;
  QTimer m_nextTimer;
  QString m_name;  ///< of the document that was loaded last
  QList<document::CompositionDocument*> m_slideshowCompositions;
  qsizetype m_slideshowIndex = 0;
  FramePump::State m_state;
  int m_load = 0;  ///< grows with every loading
  int m_run = 1;   ///< of the pump, whose states count
  QString m_failure;
  HeldKey m_triggerKey;
  bool m_keyHoldsTrigger = false;
  std::unique_ptr<FramePump> m_pump;
};

}  // namespace preview
