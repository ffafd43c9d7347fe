#include "cli/DocumentLoader.h"

#include "model/CompositionSource.h"

namespace cli {

tl::expected<DocumentLoader, LoadFailure> DocumentLoader::load(const QString& path) {
  const model::StandardComponents components = model::StandardComponents::located();
  if (!components.pathOf(QStringLiteral("Renderer")))
    return tl::unexpected(
        LoadFailure{ExitStatus::MissingResources,
                    {QStringLiteral("holds no standard components"), components.folder(), {}}});
  auto sourced = model::CompositionSource(components).compositionFromFile(path);
  if (!sourced) return tl::unexpected(LoadFailure{ExitStatus::InputUnreadable, sourced.error()});
  return DocumentLoader{std::move(sourced->composition), sourced->warnings};
}

}  // namespace cli
