#include "document/recovery/RecoveryPlace.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUuid>
#include <algorithm>

#include "foundation/DurableFile.h"

namespace document {

using foundation::failure;
using foundation::FileLock;
using foundation::Result;

namespace {

const QString journalName = QStringLiteral("journal");
const QString besideName = QStringLiteral("beside");
const QString lockName = QStringLiteral("lock");
const QString entryName = QStringLiteral("entry.json");
const QString checkpointBegin = QStringLiteral("data-");
const QString checkpointEnd = QStringLiteral(".xml");

/// What this class put there, and what a crash may have left of its making.
QFileInfoList ownFilesIn(const QString& folder) {
  QFileInfoList own;
  for (const QFileInfo& info : QDir(folder).entryInfoList(QDir::Files | QDir::Hidden)) {
    const QString name = info.fileName();
    if (name == lockName || name.startsWith(journalName) || name.startsWith(entryName) ||
        name.startsWith(checkpointBegin) || name.startsWith(besideName))
      own.append(info);
  }
  return own;
}

void removeFolder(const QString& folder) {
  for (const QFileInfo& info : ownFilesIn(folder)) QFile::remove(info.filePath());
  QDir().rmdir(folder);  // unless somebody put something else there
}

}  // namespace

QString storePathOf(const QString& documentPath) {
  return documentPath + QStringLiteral("/data.xml");
}

QString RecoveryPlace::folderBeside(const QString& documentPath) {
  const QFileInfo info(QDir::cleanPath(documentPath));
  return QStringLiteral("%1/.%2.recovery").arg(info.absolutePath(), info.fileName());
}

QString RecoveryPlace::journalPathIn(const QString& folder) {
  return folder + QLatin1Char('/') + journalName;
}

QString RecoveryPlace::checkpointPathIn(const QString& folder, int number) {
  return folder + QLatin1Char('/') + checkpointBegin + QString::number(number) + checkpointEnd;
}

QList<int> RecoveryPlace::checkpointsIn(const QString& folder) {
  QList<int> numbers;
  for (const QFileInfo& info : ownFilesIn(folder)) {
    const QString name = info.fileName();
    if (!name.startsWith(checkpointBegin) || !name.endsWith(checkpointEnd)) continue;
    const int number = name.mid(checkpointBegin.size()).chopped(checkpointEnd.size()).toInt();
    if (number > 0) numbers.append(number);
  }
  std::sort(numbers.begin(), numbers.end());
  return numbers;
}

bool RecoveryPlace::isTaken(const QString& folder) {
  return FileLock::isTaken(folder + QLatin1Char('/') + lockName);
}

Result<std::unique_ptr<RecoveryPlace>> RecoveryPlace::make(const QString& stateFolder,
                                                           const DocumentName& document) {
  const QString entryFolder =
      stateFolder + QLatin1Char('/') + QUuid::createUuid().toString(QUuid::WithoutBraces);
  QDir().mkpath(stateFolder);
  const bool hasEntryFolder =
      QDir().mkdir(entryFolder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  Result<std::unique_ptr<RecoveryPlace>> place = failure({});
  if (!document.path.isEmpty())
    place = makeIn(folderBeside(document.path), hasEntryFolder ? entryFolder : QString());
  if (!place) {
    if (!hasEntryFolder) return failure(QStringLiteral("the folder cannot be made"), entryFolder);
    place = makeIn(entryFolder, entryFolder);
  }
  if (!place) {
    removeFolder(entryFolder);
    return place;
  }
  if (!hasEntryFolder) return place;
  const RecoveryEntryFile entry{document, (*place)->folder(), QDateTime::currentDateTimeUtc()};
  const Result<void> told = entry.writeTo(entryFolder);
  // Data beside the document are found with the document; others could not be found at all.
  if (!told && (*place)->folder() == entryFolder) {
    (*place)->remove();
    return tl::unexpected(told.error());
  }
  return place;
}

Result<std::unique_ptr<RecoveryPlace>> RecoveryPlace::makeIn(const QString& folder,
                                                             const QString& entryFolder) {
  QDir().mkdir(folder);
  FileLock::Attempt attempt = FileLock::take(folder + QLatin1Char('/') + lockName);
  if (attempt.state == FileLock::State::Unavailable) {
    QDir().rmdir(folder);
    return tl::unexpected(attempt.error);
  }
  if (attempt.state == FileLock::State::Taken)
    return failure(QStringLiteral("another process has it"), folder);
  if (QFile::exists(journalPathIn(folder)))
    return failure(QStringLiteral("there are recovery data already"), folder);
  for (const int number : checkpointsIn(folder)) QFile::remove(checkpointPathIn(folder, number));
  QFile::remove(folder + QLatin1Char('/') + besideName);
  // The journal is no use in a folder that a loss of power takes away.
  (void)foundation::syncFolder(QFileInfo(folder).path());
  return std::unique_ptr<RecoveryPlace>(
      new RecoveryPlace(folder, entryFolder, std::move(attempt.lock)));
}

Result<std::unique_ptr<RecoveryPlace>> RecoveryPlace::takeOver(const QString& folder,
                                                               const QString& entryFolder) {
  FileLock::Attempt attempt = FileLock::take(folder + QLatin1Char('/') + lockName);
  if (attempt.state == FileLock::State::Unavailable) return tl::unexpected(attempt.error);
  if (attempt.state == FileLock::State::Taken)
    return failure(QStringLiteral("the document is open in process %1 of %2 on %3")
                       .arg(attempt.holder.processId)
                       .arg(attempt.holder.user, attempt.holder.host),
                   folder);
  return std::unique_ptr<RecoveryPlace>(
      new RecoveryPlace(folder, entryFolder, std::move(attempt.lock)));
}

QString RecoveryPlace::checkpointPath(int number) const {
  return checkpointPathIn(m_folder, number);
}

QString RecoveryPlace::besidePath() const {
  return m_folder + QLatin1Char('/') + besideName;
}

int RecoveryPlace::lastCheckpoint() const {
  const QList<int> numbers = checkpointsIn(m_folder);
  return numbers.isEmpty() ? 0 : numbers.last();
}

void RecoveryPlace::removeOtherCheckpoints(int number) const {
  const QString kept = checkpointPath(number);
  for (const QFileInfo& info : ownFilesIn(m_folder))
    if (info.fileName().startsWith(checkpointBegin) && info.filePath() != kept)
      QFile::remove(info.filePath());
}

void RecoveryPlace::remove() {
  // Without its journal a folder holds nothing to recover, wherever this is interrupted.
  QFile::remove(journalPath());
  for (const int number : checkpointsIn(m_folder)) QFile::remove(checkpointPath(number));
  removeFolder(m_folder);
  removeEntry();
}

void RecoveryPlace::removeEntry() {
  if (!m_entryFolder.isEmpty() && m_entryFolder != m_folder) removeFolder(m_entryFolder);
}

Result<void> RecoveryEntryFile::writeTo(const QString& entryFolder) const {
  return foundation::replaceFile(
      entryFolder + QLatin1Char('/') + entryName,
      QJsonDocument(QJsonObject{{QStringLiteral("document"), document.path},
                                {QStringLiteral("name"), document.displayName},
                                {QStringLiteral("data"), dataFolder},
                                {QStringLiteral("since"), since.toString(Qt::ISODate)}})
          .toJson());
}

std::optional<RecoveryEntryFile> RecoveryEntryFile::readFrom(const QString& entryFolder) {
  constexpr qint64 maximumSize = 1 << 20;
  QFile file(entryFolder + QLatin1Char('/') + entryName);
  if (!file.open(QIODevice::ReadOnly)) return {};
  const QJsonObject json = QJsonDocument::fromJson(file.read(maximumSize)).object();
  const auto text = [&](QLatin1String key) { return json.value(key).toString(); };
  const QString data = text(QLatin1String("data"));
  if (data.isEmpty()) return {};
  return RecoveryEntryFile{{text(QLatin1String("document")), text(QLatin1String("name"))},
                           data,
                           QDateTime::fromString(text(QLatin1String("since")), Qt::ISODate)};
}

}  // namespace document
