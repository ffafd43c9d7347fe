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
  [[nodiscard]] foundation::Result<PlayableInput> open() const;

 private:
  std::shared_ptr<const QTemporaryDir> m_folder;
  DocumentFacts m_facts;
};

}  // namespace render
