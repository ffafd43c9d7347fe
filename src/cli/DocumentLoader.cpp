#include "cli/DocumentLoader.h"

#include "cli/HeldMessages.h"

namespace cli {

tl::expected<DocumentLoader, LoadFailure> DocumentLoader::load(const QString& path) {
  const model::StandardComponents components = model::StandardComponents::located();
  if (!components.pathOf(QStringLiteral("Renderer")))
    return tl::unexpected(
        LoadFailure{ExitStatus::MissingResources,
                    {QStringLiteral("holds no standard components"), components.folder(), {}}});
  auto sourced = model::CompositionSource(components).compositionFromFile(path);
  if (!sourced) return tl::unexpected(LoadFailure{ExitStatus::InputUnreadable, sourced.error()});
  return DocumentLoader{std::move(*sourced)};
}

foundation::Result<void> DocumentLoader::exportTo(const QString& path, bool background) const {
  using Background = model::Composition::Background;
  HeldMessages messages;
  auto done =
      composition->exportToPath(path, background ? Background::Include : Background::Exclude);
  if (!done) messages.dropWhatIsIn(done.error().text());
  return done;
}

}  // namespace cli
