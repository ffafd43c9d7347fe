#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "document/CompositionDocument.h"
#include "document/DocumentSession.h"
#include "foundation/UserDefaults.h"

namespace document {

/// The documents that are open. Owns them; views are made and shown by whoever sets the hooks.
class CompositionDocumentsController {
 public:
  struct Hooks {
    /// A document is to be shown: one that is new or was read, or that is open already.
    std::function<void(CompositionDocument& document)> showWindows;
    /// Told before the document is gone.
    std::function<void(CompositionDocument& document)> willClose;
    std::function<void(const QList<CompositionDocument*>& documents)> runSlideshow;
    /// Something that the user should know, not tied to what they just did.
    std::function<void(const QString& sentence)> warn;
  };
  /// What to do with a document that someone else is editing.
  enum class WhenTaken {
    Refuse,  ///< the error says who has it
    LookAt,  ///< open it all the same; it can only be saved elsewhere
    TakeOver
  };

  /// Why a document was not opened.
  struct OpenFailure : foundation::Error {
    bool isTaken = false;  ///< someone else is editing it; another WhenTaken would open it
  };

  CompositionDocumentsController(foundation::UserDefaults& defaults,
                                 model::StandardComponents standardComponents,
                                 RecoveryStore recoveryStore = RecoveryStore());
  ~CompositionDocumentsController();
  void setHooks(Hooks hooks) { m_hooks = std::move(hooks); }

  [[nodiscard]] QList<CompositionDocument*> documents() const;

  /// The format of the next new document; none for the default one.
  void setNewDocumentResolution(std::optional<model::VideoResolution> resolution) {
    m_newDocumentResolution = std::move(resolution);
  }
  /// Chosen in a menu by the name of a format; without one, in the default format.
  CompositionDocument& newDocument(const QString& title = {});
  /// In the format that was chosen, or the default one. Where there is no such format the document
  /// has no composition.
  CompositionDocument& openUntitledDocumentAndDisplay();
  /// The package at the path, or around it. One that is open already is only shown.
  [[nodiscard]] tl::expected<CompositionDocument*, OpenFailure> openDocument(
      const QString& path, WhenTaken whenTaken = WhenTaken::Refuse);
  /// Unsaved changes are dropped.
  void closeDocument(CompositionDocument& document);

  /// What programs that ended without saving left behind, the latest first.
  [[nodiscard]] QList<RecoveryEntry> recoverable() const { return m_recoveryStore.recoverable(); }
  /// Opens it, with its unsaved changes. What is missing is added to the warnings.
  [[nodiscard]] foundation::Result<CompositionDocument*> recoverDocument(const RecoveryEntry& entry,
                                                                         QStringList& warnings);
  [[nodiscard]] foundation::Result<void> discard(const RecoveryEntry& entry) {
    return m_recoveryStore.discard(entry);
  }
  /// Writes what is unsaved beside the documents; for a timer.
  void autosave();

  /// Those to ask about before the program ends.
  [[nodiscard]] QList<CompositionDocument*> unsavedDocuments() const;
  /// A slideshow of all open documents, in their order; nothing without any.
  void runSlideshow() const;

 private:
  /// The session goes before its document.
  struct Open {
    std::unique_ptr<CompositionDocument> document;
    std::unique_ptr<DocumentSession> session;
  };
  [[nodiscard]] Open make() const;
  [[nodiscard]] int freeUntitledNumber() const;
  CompositionDocument& add(Open open);
  void show(CompositionDocument& document) const;

  foundation::UserDefaults& m_defaults;
  model::StandardComponents m_standardComponents;
  Hooks m_hooks;
  std::optional<model::VideoResolution> m_newDocumentResolution;
  RecoveryStore m_recoveryStore;
  std::vector<Open> m_documents;
};

}  // namespace document
