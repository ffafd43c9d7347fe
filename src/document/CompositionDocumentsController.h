#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "document/CompositionDocument.h"
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
  };

  CompositionDocumentsController(foundation::UserDefaults& defaults,
                                 model::StandardComponents standardComponents);
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
  [[nodiscard]] foundation::Result<CompositionDocument*> openDocument(const QString& path);
  void closeDocument(CompositionDocument& document);

  /// Those to ask about before the program ends.
  [[nodiscard]] QList<CompositionDocument*> unsavedDocuments() const;
  /// A slideshow of all open documents, in their order; nothing without any.
  void runSlideshow() const;

 private:
  CompositionDocument& add(std::unique_ptr<CompositionDocument> document);
  void show(CompositionDocument& document) const;

  foundation::UserDefaults& m_defaults;
  model::StandardComponents m_standardComponents;
  Hooks m_hooks;
  std::optional<model::VideoResolution> m_newDocumentResolution;
  std::vector<std::unique_ptr<CompositionDocument>> m_documents;
};

}  // namespace document
