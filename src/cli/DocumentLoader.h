#pragma once

#include "cli/LoadFailure.h"
#include "model/Composition.h"
#include "model/CompositionSource.h"

namespace cli {

/// A graphic opened from its source.
struct DocumentLoader : model::SourcedComposition {
  [[nodiscard]] static tl::expected<DocumentLoader, LoadFailure> load(const QString& path);
  /// The file is a graphic's source, not a composition, by its name.
  [[nodiscard]] static bool isDocument(const QString& path) {
    return path.endsWith(QLatin1String(".json"), Qt::CaseInsensitive);
  }
  /// Exports the graphic. What the error says is not shown as a message as well.
  [[nodiscard]] foundation::Result<void> exportTo(const QString& path, bool background) const;
};

}  // namespace cli
