#pragma once

#include "render/PlayableInput.h"

class QTemporaryDir;

namespace render {

/// A document as it was at one moment, ready to be played on any thread: its export in a private
/// folder, which goes with the last copy of this. Neither changes nor the end of the document reach
/// it.
class RenderSource {
 public:
  /// Fails when the document cannot be exported.
  [[nodiscard]] static foundation::Result<RenderSource> fromDocument(
      const document::CompositionDocument& document, bool background);
  [[nodiscard]] foundation::Result<PlayableInput> open(
      PlayableInput::Stops stops = PlayableInput::Stops::Wait) const;
  /// The document's file; its name where it has none.
  [[nodiscard]] const QString& document() const { return m_document; }
  /// Where relative paths start; empty for a document that was never saved.
  [[nodiscard]] const QString& folder() const { return m_facts.folder; }

 private:
  std::shared_ptr<const QTemporaryDir> m_folder;
  DocumentFacts m_facts;
  QString m_document;
};

}  // namespace render
