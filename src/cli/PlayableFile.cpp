#include "cli/PlayableFile.h"

#include <QTemporaryDir>

#include "cli/DocumentLoader.h"

namespace cli {

namespace {

using Loaded = tl::expected<render::PlayableInput, LoadFailure>;

Loaded fromComposition(const QString& path) {
  return render::PlayableInput::fromFile(path).map_error([](const foundation::Error& error) {
    return LoadFailure{ExitStatus::InputUnreadable, error};
  });
}

/// What goes on air is the export, so that is what is played.
Loaded fromDocument(const QString& path, bool background, PlayableFile::Keys keys) {
  auto document = DocumentLoader::load(path);
  if (!document) return tl::unexpected(document.error());
  const QTemporaryDir folder;
  const QString exported = folder.filePath(QStringLiteral("Composition.qtz"));
  const auto write = keys == PlayableFile::Keys::Sets ? DocumentLoader::exportWithSetKeys
                                                      : DocumentLoader::exportDocument;
  if (const auto done = write(*document->document, exported, background); !done)
    return tl::unexpected(LoadFailure{ExitStatus::OutputFailed, done.error()});
  Loaded input = fromComposition(exported);
  if (input) input->describe(render::DocumentFacts::of(*document->document, background));
  return input;
}

}  // namespace

Loaded PlayableFile::load(const QString& path, bool background, Keys keys) {
  return DocumentLoader::isDocument(path) ? fromDocument(path, background, keys)
                                          : fromComposition(path);
}

}  // namespace cli
