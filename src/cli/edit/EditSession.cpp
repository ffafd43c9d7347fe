#include "cli/edit/EditSession.h"

#include <QDir>
#include <QFileInfo>

#include "cli/Console.h"
#include "cli/DocumentLoader.h"
#include "cli/HeldMessages.h"

namespace cli {

using document::CompositionDocument;
using document::PackageLayout;
using document::SaveOperation;
using Opened = tl::expected<OpenDocument*, LoadFailure>;

namespace {

/// What is wrong with a call as such comes with how it is meant.
tl::unexpected<LoadFailure> miscalled(const QString& message, const CommandOptions& options) {
  return failed(ExitStatus::Usage, message, {},
                QStringLiteral("usage: tessary ") + options.usage());
}

/// The same for all names of one folder, and for one that is not there yet.
QString placeOf(const QString& path) {
  const QFileInfo info(path);
  const QString present = info.canonicalFilePath();
  return present.isEmpty() ? QDir::cleanPath(info.absoluteFilePath()) : present;
}

QString wrongCount(const EditCommand& command, const QStringList& words) {
  if (words.size() < command.fewestWords) return QStringLiteral("something is missing");
  if (command.mostWords >= 0 && words.size() > command.mostWords)
    return QStringLiteral("'%1' is one argument too many").arg(words[command.mostWords]);
  return {};
}

}  // namespace

EditSession::Done EditSession::run(const EditCommand& command, const QStringList& arguments,
                                   const QString& folder) {
  const auto options = command.syntax();
  if (const auto read = options->read(arguments); !read)
    return miscalled(read.error().error.message, *options);
  EditCall call{*options, options->positionals(), folder, *this};
  if (command.document != EditCommand::Document::Made) {
    const bool isNamed = !call.words.isEmpty() && isDocumentName(call.words[0]);
    if (!isNamed && !m_current) return miscalled(QStringLiteral("a document is needed"), *options);
    const Opened opened = isNamed ? open(call.words.takeFirst()) : Opened(m_current);
    if (!opened) return tl::unexpected(opened.error());
    call.document = *opened;
  }
  if (const QString wrong = wrongCount(command, call.words); !wrong.isEmpty())
    return miscalled(wrong, *options);
  if (command.document != EditCommand::Document::Changed) return command.run(call);
  if (auto held = hold(*call.document); !held) return held;
  auto done = command.run(call);
  call.document->isChanged = true;
  return done;
}

EditSession::Done EditSession::hold(OpenDocument& open) {
  if (open.lock) return {};
  auto attempt = document::DocumentLock::take(open.path);
  if (attempt.state == document::DocumentLock::State::Taken)
    return failed(ExitStatus::OutputFailed, attempt.sentence, open.path);
  open.lock = std::move(attempt.lock);
  // Whoever held it before may have saved since it was read.
  if (!open.document->storeChangedOnDisk()) return {};
  const auto read = open.document->revertToContentsOfURL(open.document->fileURL());
  if (!read) return tl::unexpected(LoadFailure{ExitStatus::InputUnreadable, read.error()});
  if (!open.document->composition())
    return failed(ExitStatus::InputUnreadable, QStringLiteral("holds no composition"), open.path);
  return {};
}

bool EditSession::isDocumentName(const QString& word) const {
  return !m_allowsDefaultDocument || PackageLayout::isPackageName(word);
}

OpenDocument* EditSession::openAt(const QString& path) const {
  const QString wanted = placeOf(path);
  for (const auto& open : m_documents)
    if (placeOf(open->path) == wanted) return open.get();
  return nullptr;
}

Opened EditSession::open(const QString& path) {
  const QString folder = PackageLayout(path).folder();
  if (OpenDocument* present = openAt(folder)) return m_current = present;
  auto loaded = DocumentLoader::load(path);
  if (!loaded) return tl::unexpected(loaded.error());
  for (const QString& warning : loaded->warnings())
    addFinding(path + QStringLiteral(": ") + warning);
  if (OpenDocument* present = openAt(loaded->folder())) return m_current = present;
  auto opened = std::make_unique<OpenDocument>();
  opened->path = loaded->folder();
  opened->document = std::move(loaded->document);
  m_documents.push_back(std::move(opened));
  return m_current = m_documents.back().get();
}

EditSession::Done EditSession::create(const QString& path, const model::VideoResolution& resolution,
                                      Existing existing) {
  const PackageLayout package(path);
  if (openAt(package.folder())) return misused(QStringLiteral("%1 is open already").arg(path));
  if (QFileInfo::exists(path) && existing == Existing::Keep)
    return failed(ExitStatus::OutputFailed,
                  QStringLiteral("is there already; --replace makes a new one in its place"), path);
  const auto components = DocumentLoader::standardComponents();
  if (!components) return tl::unexpected(components.error());
  auto opened = std::make_unique<OpenDocument>();
  opened->document = std::make_unique<CompositionDocument>(*components);
  opened->document->emptyDocumentWithResolution(resolution);
  opened->path = package.folder();
  opened->isChanged = true;
  if (auto held = hold(*opened); !held) return held;
  m_documents.push_back(std::move(opened));
  m_current = m_documents.back().get();
  return {};
}

EditSession::Done EditSession::save(OpenDocument& open) {
  if (auto saved = saveValues(open); !saved) return saved;
  const bool isNew = open.document->fileURL().isEmpty();
  HeldMessages messages;
  const auto saved =
      open.document->saveToURL(QUrl::fromLocalFile(QFileInfo(open.path).absoluteFilePath()),
                               isNew ? SaveOperation::SaveAs : SaveOperation::Save);
  if (!saved) {
    messages.dropWhatIsIn(saved.error().text());
    return tl::unexpected(LoadFailure{ExitStatus::OutputFailed, saved.error()});
  }
  for (const QString& warning : open.document->saveWarnings()) messages.dropWhatIsIn(warning);
  addSaveWarnings(open);
  open.isChanged = false;
  return {};
}

void EditSession::addSaveWarnings(const OpenDocument& open) {
  for (const QString& warning : open.document->saveWarnings())
    addFinding(open.path + QStringLiteral(": ") + warning);
}

EditSession::Done EditSession::saveValues(OpenDocument& open) {
  if (!open.values) return {};
  const playout::ValueSets before = open.document->valueSets();
  const playout::ValueSets sets = *open.values;
  open.values.reset();
  if (const auto written = open.document->setValueSets(sets, open.pictureKeys); !written)
    return tl::unexpected(LoadFailure{ExitStatus::OutputFailed, written.error()});
  const playout::ValueSet* shownBefore = before.thumbnailSet();
  const playout::ValueSet* shown = open.document->valueSets().thumbnailSet();
  const bool isSame =
      shown && shownBefore ? shown->values == shownBefore->values : !shown && !shownBefore;
  if (isSame || open.isChanged) return {};
  HeldMessages messages;
  const auto renewed = open.document->renewThumbnail();
  if (!renewed) return tl::unexpected(LoadFailure{ExitStatus::OutputFailed, renewed.error()});
  addSaveWarnings(open);
  return {};
}

EditSession::Done EditSession::save() {
  for (const auto& open : m_documents) {
    if (!open->isChanged && !open->values) continue;
    if (auto saved = open->isChanged ? save(*open) : saveValues(*open); !saved) return saved;
  }
  return {};
}

void EditSession::printFindings() {
  for (const QString& finding : std::as_const(m_findings))
    Console::error(QStringLiteral("note: ") + finding);
}

}  // namespace cli
