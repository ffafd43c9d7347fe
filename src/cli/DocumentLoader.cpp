#include "cli/DocumentLoader.h"

#include <QFileInfo>

#include "cli/HeldMessages.h"

namespace cli {

using document::CompositionDocument;
using document::PackageLayout;

namespace {

/// Why a document that was read cannot be used.
QString withoutComposition(const CompositionDocument& document) {
  qsizetype count = 0;
  for (const auto& [id, object] : document.context().objects())
    if (dynamic_cast<const model::Composition*>(object.get())) ++count;
  return count == 0 ? QStringLiteral("holds no composition")
                    : QStringLiteral("holds %1 compositions instead of one").arg(count);
}

model::Composition::Background backgroundOf(bool isWanted) {
  using Background = model::Composition::Background;
  return isWanted ? Background::Include : Background::Exclude;
}

}  // namespace

tl::expected<model::StandardComponents, LoadFailure> DocumentLoader::standardComponents() {
  const model::StandardComponents components = model::StandardComponents::located();
  if (components.pathOf(QStringLiteral("Renderer"))) return components;
  return failed(ExitStatus::MissingResources, QStringLiteral("holds no standard components"),
                components.folder());
}

bool DocumentLoader::isDocument(const QString& path) {
  const QFileInfo file(path);
  if (file.isDir()) return true;
  if (file.suffix().compare(QLatin1String("qtz"), Qt::CaseInsensitive) == 0) return false;
  return PackageLayout::isPackageName(path) || PackageLayout::around(path).has_value();
}

tl::expected<DocumentLoader, LoadFailure> DocumentLoader::load(const QString& path) {
  auto components = standardComponents();
  if (!components) return tl::unexpected(components.error());
  DocumentLoader loaded{std::make_unique<CompositionDocument>(*components)};
  HeldMessages messages;
  if (const auto read = loaded.document->readFromURL(QUrl::fromLocalFile(path)); !read) {
    messages.dropWhatIsIn(read.error().text());
    return tl::unexpected(LoadFailure{ExitStatus::InputUnreadable, read.error()});
  }
  if (!loaded.document->composition())
    return failed(ExitStatus::InputUnreadable, withoutComposition(*loaded.document),
                  PackageLayout(loaded.folder()).store());
  return loaded;
}

foundation::Result<void> DocumentLoader::exportWithSetKeys(const CompositionDocument& document,
                                                           const QString& path, bool background) {
  HeldMessages messages;
  auto done = document.composition()->exportToPath(path, backgroundOf(background));
  if (!done) messages.dropWhatIsIn(done.error().text());
  return done;
}

foundation::Result<void> DocumentLoader::exportDocument(const CompositionDocument& document,
                                                        const QString& path, bool background) {
  HeldMessages messages;
  auto done = document.exportQuartzComposition(path, backgroundOf(background));
  if (!done) messages.dropWhatIsIn(done.error().text());
  return done;
}

}  // namespace cli
