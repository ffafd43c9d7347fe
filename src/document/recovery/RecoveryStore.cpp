#include "document/recovery/RecoveryStore.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

#include "document/recovery/RecoveryBase.h"

namespace document {

using foundation::failure;
using foundation::Result;

namespace {

struct Found {
  RecoveryEntry entry;
  bool isWorthless = false;
};

Found lookInto(const QString& dataFolder, const QString& entryFolder, const DocumentName& document,
               const QDateTime& since) {
  Found found{{document, dataFolder, entryFolder, since, 0, true}, false};
  if (!QFileInfo::exists(dataFolder)) {
    // The folder around it is there: somebody has removed the data. Else the disk is elsewhere.
    found.isWorthless = QFileInfo::exists(QFileInfo(dataFolder).path());
    found.entry.isAvailable = false;
    return found;
  }
  const RecoveryBase base(dataFolder, document, RecoveryBase::Depth::Count);
  const QFileInfo journal(RecoveryPlace::journalPathIn(dataFolder));
  found.entry.document = base.document();
  found.entry.changes = base.changes();
  if (journal.exists()) found.entry.lastChange = journal.lastModified();
  found.isWorthless = !base.isWorthRecovering();
  return found;
}

/// Clears away what holds nothing, unless a process got hold of it meanwhile.
void clearAway(const RecoveryEntry& entry) {
  if (!entry.isAvailable) {
    if (entry.entryFolder.isEmpty()) return;
    QFile::remove(entry.entryFolder + QStringLiteral("/entry.json"));
    QDir().rmdir(entry.entryFolder);
    return;
  }
  if (const auto place = RecoveryPlace::takeOver(entry.dataFolder, entry.entryFolder))
    (*place)->remove();
}

QString samePath(const QString& path) {
  const QString canonical = QFileInfo(path).canonicalFilePath();
  return canonical.isEmpty() ? QDir::cleanPath(QFileInfo(path).absoluteFilePath()) : canonical;
}

void sortLatestFirst(QList<RecoveryEntry>& entries) {
  std::stable_sort(
      entries.begin(), entries.end(),
      [](const RecoveryEntry& a, const RecoveryEntry& b) { return a.lastChange > b.lastChange; });
}

}  // namespace

QString RecoveryStore::defaultStateFolder() {
  QString state = qEnvironmentVariable("XDG_STATE_HOME");
  if (!QDir::isAbsolutePath(state)) state = QDir::homePath() + QStringLiteral("/.local/state");
  return QDir::cleanPath(state) + QStringLiteral("/tessary/recovery");
}

QList<RecoveryEntry> RecoveryStore::recoverable() const {
  QList<RecoveryEntry> entries;
  for (const QFileInfo& folder :
       QDir(m_stateFolder).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks)) {
    const auto said = RecoveryEntryFile::readFrom(folder.filePath());
    if (!said || RecoveryPlace::isTaken(said->dataFolder)) continue;
    const Found found = lookInto(said->dataFolder, folder.filePath(), said->document, said->since);
    if (found.isWorthless)
      clearAway(found.entry);
    else
      entries.append(found.entry);
  }
  sortLatestFirst(entries);
  return entries;
}

QList<RecoveryEntry> RecoveryStore::recoverableFor(const QString& documentPath) const {
  const QString wanted = samePath(documentPath);
  const QString beside = RecoveryPlace::folderBeside(documentPath);
  QList<RecoveryEntry> entries;
  bool besideIsListed = false;
  for (const RecoveryEntry& entry : recoverable()) {
    if (entry.document.path.isEmpty() || samePath(entry.document.path) != wanted) continue;
    entries.append(entry);
    besideIsListed |= samePath(entry.dataFolder) == samePath(beside);
  }
  if (besideIsListed || !QFileInfo::exists(beside) || RecoveryPlace::isTaken(beside))
    return entries;
  const DocumentName document{documentPath, {}};
  if (const Found found = lookInto(beside, {}, document, {}); !found.isWorthless)
    entries.append(found.entry);
  sortLatestFirst(entries);
  return entries;
}

Result<RecoveredDocument> RecoveryStore::recover(const RecoveryEntry& entry,
                                                 const StoreReading& readStore,
                                                 const store::EntityFactories& factories,
                                                 store::ObjectContext& context) const {
  Q_ASSERT_X(context.objects().empty(), "RecoveryStore", "the context is not empty");
  if (!entry.isAvailable || !QFileInfo::exists(entry.dataFolder))
    return failure(tr("The disk with the recovery data is not here."), entry.dataFolder);
  auto place = RecoveryPlace::takeOver(entry.dataFolder, entry.entryFolder);
  if (!place) return tl::unexpected(place.error());
  const RecoveryBase base(entry.dataFolder, entry.document, RecoveryBase::Depth::Replay);
  QStringList warnings = base.warnings();
  if (!base.storeBytes().isEmpty()) {
    const Result<void> read = readStore(base.storeBytes(), base.storePath(), context);
    if (!read && (base.isExact() || !context.objects().empty()))
      return tl::unexpected(read.error());
    if (!read) warnings.append(read.error().text());
  }
  const int lost = base.replay().applyTo(context, factories);
  if (lost > 0) warnings.append(tr("Changes that could not be applied: %1.").arg(lost));
  if (context.objects().empty())
    return failure(tr("Nothing of the document could be put together."), entry.dataFolder,
                   warnings.join(QLatin1Char(' ')));
  QFile held((*place)->besidePath());
  if (held.exists() && !held.open(QIODevice::ReadOnly))
    warnings.append(tr("%1 cannot be read: %2").arg(held.fileName(), held.errorString()));
  const QByteArray heldBeside = held.isOpen() ? held.readAll() : QByteArray();
  return RecoveredDocument{base.document(), base.changes(), warnings, heldBeside,
                           std::move(*place)};
}

Result<void> RecoveryStore::discard(const RecoveryEntry& entry) const {
  if (!entry.isAvailable) {
    clearAway(entry);
    return {};
  }
  auto place = RecoveryPlace::takeOver(entry.dataFolder, entry.entryFolder);
  if (!place) return tl::unexpected(place.error());
  (*place)->remove();
  return {};
}

}  // namespace document
