#pragma once

#include <memory>

#include "cli/LoadFailure.h"
#include "document/CompositionDocument.h"

namespace cli {

/// A document opened from its package.
struct DocumentLoader {
  std::unique_ptr<document::CompositionDocument> document;

  /// The package at the path, or around the file there.
  [[nodiscard]] static tl::expected<DocumentLoader, LoadFailure> load(const QString& path);
  /// The components that come with the program; without them nothing can be exported.
  [[nodiscard]] static tl::expected<model::StandardComponents, LoadFailure> standardComponents();
  /// Whether the path means a document: a folder, or a file in a package. Composition files are
  /// none, in a package neither.
  [[nodiscard]] static bool isDocument(const QString& path);

  [[nodiscard]] model::Composition& composition() const { return *document->composition(); }
  [[nodiscard]] const QStringList& warnings() const { return document->warnings(); }
  [[nodiscard]] QString folder() const { return document->fileURL().toLocalFile(); }
  [[nodiscard]] foundation::Result<void> exportTo(const QString& path, bool background) const {
    return exportDocument(*document, path, background);
  }
  /// Exports the graphic with the keys of the playout composition in its package, by which its sets
  /// of values and the player know its inputs.
  [[nodiscard]] static foundation::Result<void> exportWithSetKeys(
      const document::CompositionDocument& document, const QString& path, bool background);
  /// Exports the graphic as a person does. What the error says is not shown as a message as well.
  [[nodiscard]] static foundation::Result<void> exportDocument(
      const document::CompositionDocument& document, const QString& path, bool background);
};

}  // namespace cli
