#pragma once

#include <QSize>
#include <QVariantHash>

#include "document/CompositionDocument.h"
#include "runtime/CompositionRenderer.h"

namespace preview {

/// A composition file that was loaded to be played, with all that its renderers have to know.
/// Independent of the document that it came from.
struct PreviewProgram {
  using Background = model::Composition::Background;

  std::shared_ptr<const runtime::CompiledComposition> compiled;
  QVariantHash userInfo = {};
  std::vector<std::pair<QString, runtime::Value>> inputs = {};  ///< set before the first frame
  QSize size = {1920, 1080};                                    ///< pixels
  double framesPerSecond = 25;  ///< pictures that are played: of an interlaced format maybe fields
  bool isInterlaced = false;
  bool isOpaque = false;          ///< the file draws a background of its own
  bool hasOwnBackground = false;  ///< the document does

  struct Failure {
    enum class Stage { Export, Load };
    Stage stage = Stage::Export;
    foundation::Error error;
  };
  /// Exports the document, with or without its background, to a temporary file, which is gone again
  /// on return, and loads that.
  [[nodiscard]] static tl::expected<PreviewProgram, Failure> fromDocument(
      const document::CompositionDocument& document, Background background = Background::Include);
};

}  // namespace preview
