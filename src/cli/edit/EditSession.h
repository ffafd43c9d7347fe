#pragma once

#include <memory>
#include <vector>

#include "cli/edit/EditCommand.h"
#include "document/CompositionDocument.h"
#include "document/DocumentLock.h"

namespace cli {

/// A document that commands work on.
struct OpenDocument {
  std::unique_ptr<document::CompositionDocument> document;
  QString path;                                  ///< of its package
  std::unique_ptr<document::DocumentLock> lock;  ///< from the first change on
  bool isChanged = false;
  std::optional<playout::ValueSets> values;  ///< to be written, whether it is changed or not
  QStringList pictureKeys;                   ///< of these

  [[nodiscard]] model::Composition& composition() const { return *document->composition(); }
  [[nodiscard]] const playout::ValueSets& valueSets() const {
    return values ? *values : document->valueSets();
  }
};

/// The documents that commands have opened. They stay open until the session ends; nothing reaches
/// the disk before save().
class EditSession {
 public:
  using Done = EditCommand::Done;

  /// Runs the command. Its first argument is the document; within a batch it may be left out where
  /// the document before is meant.
  [[nodiscard]] Done run(const EditCommand& command, const QStringList& arguments,
                         const QString& folder);
  void allowDefaultDocument() { m_allowsDefaultDocument = true; }

  /// The document at the path becomes the one that is meant where none is named.
  [[nodiscard]] tl::expected<OpenDocument*, LoadFailure> open(const QString& path);
  enum class Existing { Keep, Replace };
  /// An empty document that will be saved at the path. Fails where something lies there that may
  /// not be replaced.
  [[nodiscard]] Done create(const QString& path, const model::VideoResolution& resolution,
                            Existing existing);
  /// Writes one document, or all that were changed.
  [[nodiscard]] Done save(OpenDocument& open);
  [[nodiscard]] Done save();

  /// What its user should know: it is printed by the end, and the status says so.
  void addFinding(const QString& finding) {
    if (!m_findings.contains(finding)) m_findings.append(finding);
  }
  [[nodiscard]] bool hasFindings() const { return !m_findings.isEmpty(); }
  void printFindings();

 private:
  /// Sets of values need neither the lock nor a save of the graphic.
  [[nodiscard]] Done saveValues(OpenDocument& open);
  void addSaveWarnings(const OpenDocument& open);
  /// In a batch, names of packages alone are taken for documents.
  [[nodiscard]] bool isDocumentName(const QString& word) const;
  /// Takes the document from others before it is changed.
  [[nodiscard]] static Done hold(OpenDocument& open);
  [[nodiscard]] OpenDocument* openAt(const QString& path) const;

  std::vector<std::unique_ptr<OpenDocument>> m_documents;
  OpenDocument* m_current = nullptr;
  bool m_allowsDefaultDocument = false;
  QStringList m_findings;
};

}  // namespace cli
