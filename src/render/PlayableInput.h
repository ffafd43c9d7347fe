#pragma once

#include "document/CompositionDocument.h"
#include "render/CompositionSummary.h"
#include "render/FrameRate.h"

namespace render {

/// A composition file opened for playing: one as it is, or the export of a document.
struct PlayableInput {
  std::unique_ptr<runtime::CompositionRenderer> renderer;
  CompositionSummary summary;
  FrameRate rate;                ///< the format's, or 25 a second
  bool isInterlaced = false;     ///< the format has two fields a frame
  bool drawsBackground = false;  ///< the file draws its own background
  QStringList findings;          ///< from loading

  [[nodiscard]] static foundation::Result<PlayableInput> fromFile(const QString& path);
  /// Takes over what the document knows and its export, which this is, does not say of itself.
  void describe(const document::CompositionDocument& document, bool background);
};

}  // namespace render
