#include "document/recovery/RecoveryBase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "document/PackageLayout.h"

namespace document {

using Base = JournalHeader::Base;

namespace {

QByteArray contentsOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

RecoveryBase::RecoveryBase(const QString& folder, const DocumentName& document, Depth depth)
    : m_folder(folder), m_document(document) {
  const QString path = RecoveryPlace::journalPathIn(folder);
  if (!QFile::exists(path)) return;
  JournalReader reader(contentsOf(path));
  if (!reader.isValid()) {
    startWithoutHeader();
    return;
  }
  // The name that the journal knows is younger; the path is where the document was found.
  if (m_document.displayName.isEmpty()) m_document.displayName = reader.header().displayName;
  if (!QFileInfo::exists(m_document.path) &&
      (m_document.path.isEmpty() || QFileInfo::exists(reader.header().documentPath)))
    m_document.path = reader.header().documentPath;
  m_changes = reader.header().changesBefore;
  readFrames(reader, depth);
  if (m_storeBytes.isEmpty() && depth == Depth::Replay) findStore(reader.header());
}

void RecoveryBase::readFrames(JournalReader& reader, Depth depth) {
  for (QByteArrayView payload = reader.next(); !payload.isEmpty(); payload = reader.next()) {
    bool isWhole = true;
    if (JournalReader::kindOf(payload) == FrameKind::Step) {
      std::vector<ObjectChange> step;
      if (depth == Depth::Replay) isWhole = JournalReader::readStep(payload, step);
      if (isWhole) ++m_changes;
      if (isWhole) m_replay.add(std::move(step));
    } else if (JournalReader::kindOf(payload) == FrameKind::Save) {
      SaveMark mark;
      isWhole = JournalReader::readSave(payload, mark);
      // The document has this store if the crash came after it was written.
      const QString store = storePathOf(mark.documentPath);
      if (isWhole && !mark.identity.isEmpty() && startAt(store, mark.identity)) {
        m_document.path = mark.documentPath;
        m_replay = {};
        m_changes = 0;
      }
    }
    if (!isWhole || reader.isDamaged()) {
      m_warnings.append(tr("The recovery data are damaged. What was done after change %1 is lost.")
                            .arg(m_changes));
      return;
    }
  }
  if (reader.isDamaged())
    m_warnings.append(
        tr("The recovery data are damaged. What was done after change %1 is lost.").arg(m_changes));
}

bool RecoveryBase::startAt(const QString& path, const QByteArray& identity) {
  const QByteArray bytes = contentsOf(path);
  if (bytes.isEmpty() || identityOf(bytes) != identity) return false;
  m_storeBytes = bytes;
  m_storePath = path;
  return true;
}

void RecoveryBase::findStore(const JournalHeader& header) {
  if (header.base == Base::Nothing) return;
  if (header.base == Base::Checkpoint) {
    const QString path = RecoveryPlace::checkpointPathIn(m_folder, header.checkpoint);
    if (startAt(path, header.baseIdentity)) return;
    m_warnings.append(tr("The intermediate copy of the document is damaged."));
  } else if (startAt(storePathOf(m_document.path), header.baseIdentity) ||
             startWhereItWasRenamedTo(header.baseIdentity)) {
    return;
  }
  startWithPresentDocument();
}

bool RecoveryBase::startWhereItWasRenamedTo(const QByteArray& identity) {
  const QFileInfo before(m_document.path);
  if (m_document.path.isEmpty() || before.exists()) return false;
  for (const QFileInfo& beside : QDir(before.absolutePath()).entryInfoList(QDir::Dirs)) {
    if (!PackageLayout::isPackageName(beside.filePath()) ||
        !startAt(storePathOf(beside.filePath()), identity))
      continue;
    m_document = {beside.filePath(), beside.completeBaseName()};
    return true;
  }
  return false;
}

void RecoveryBase::startWithPresentDocument() {
  m_isExact = false;
  m_storePath = storePathOf(m_document.path);
  if (!m_document.path.isEmpty()) m_storeBytes = contentsOf(m_storePath);
  if (m_storeBytes.isEmpty())
    m_warnings.append(tr(
        "The document itself is gone. Only what was added to it since it was last saved could be "
        "put together."));
  else
    m_warnings.append(
        tr("The document was changed by somebody else in the meantime. The unsaved changes were "
           "applied to what it is now; look at the result before you save it."));
}

void RecoveryBase::startWithoutHeader() {
  m_isExact = false;
  const QList<int> checkpoints = RecoveryPlace::checkpointsIn(m_folder);
  if (checkpoints.isEmpty()) {
    m_warnings.append(tr("The recovery data are damaged."));
    return;
  }
  m_storePath = RecoveryPlace::checkpointPathIn(m_folder, checkpoints.last());
  m_storeBytes = contentsOf(m_storePath);
  m_warnings.append(tr(
      "The recovery data are damaged. The document is as the last intermediate copy has it; what "
      "was done after that is lost."));
}

}  // namespace document
