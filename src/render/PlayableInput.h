#pragma once

#include "document/CompositionDocument.h"
#include "render/CompositionSummary.h"
#include "render/FrameRate.h"

namespace render {

/// What a document knows and its export does not say of itself.
struct DocumentFacts {
  QString folder;                ///< where relative paths start; empty for one never saved
  FrameRate rate;                ///< the format's
  bool isInterlaced = false;     ///< the format has two fields a frame
  bool drawsBackground = false;  ///< the export has a background and draws it
  QStringList findings;          ///< from reading the document

  /// Of a document that holds a composition, exported with its background or without.
  [[nodiscard]] static DocumentFacts of(const document::CompositionDocument& document,
                                        bool background);
};

/// A composition file opened for playing: one as it is, or the export of a document.
struct PlayableInput {
  std::unique_ptr<runtime::CompositionRenderer> renderer;
  CompositionSummary summary;
  DocumentFacts facts;  ///< of a file that is no document's export: 25 a second, and nothing else

  /// What becomes of stop frames that wait for the trigger.
  enum class Stops {
    Wait,
    Pass  ///< nothing waits: times are those of the editor's time line
  };
  [[nodiscard]] static foundation::Result<PlayableInput> fromFile(const QString& path,
                                                                  Stops stops = Stops::Wait);
  void describe(DocumentFacts documentFacts);
};

}  // namespace render
