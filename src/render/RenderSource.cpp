#include "render/RenderSource.h"

#include <QDir>
#include <QTemporaryDir>

namespace render {

namespace {

QString exportedFile(const QTemporaryDir& folder) {
  return folder.filePath(QStringLiteral("Composition.qtz"));
}

}  // namespace

foundation::Result<RenderSource> RenderSource::fromDocument(
    const document::CompositionDocument& document, bool background) {
  using Background = model::Composition::Background;
  if (!document.composition())
    return foundation::failure(QStringLiteral("the document holds no composition"),
                               document.fileURL().toLocalFile());
  auto folder = std::make_shared<const QTemporaryDir>(
      QDir::temp().filePath(QStringLiteral("TessaryRender-XXXXXX")));
  if (!folder->isValid()) return foundation::failure(folder->errorString(), QDir::tempPath());
  const QString path = exportedFile(*folder);
  // With the keys that the document's own sets of values go by.
  const auto done = document.composition()->exportToPath(
      path, background ? Background::Include : Background::Exclude);
  if (!done) return tl::unexpected(done.error());
  RenderSource source;
  source.m_folder = std::move(folder);
  source.m_facts = DocumentFacts::of(document, background);
  source.m_document =
      source.m_facts.folder.isEmpty() ? document.displayName() : source.m_facts.folder;
  return source;
}

foundation::Result<PlayableInput> RenderSource::open(PlayableInput::Stops stops) const {
  auto input = PlayableInput::fromFile(exportedFile(*m_folder), stops);
  if (input) input->describe(m_facts);
  return input;
}

}  // namespace render
