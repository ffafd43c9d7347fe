#include "document/DocumentLock.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>

#include "document/PackageLayout.h"

namespace document {

using foundation::FileLock;
using foundation::LockHolder;

namespace {

QString nameOf(const QString& documentPath) {
  return QFileInfo(QDir::cleanPath(documentPath)).completeBaseName();
}

}  // namespace

QString DocumentLock::pathFor(const QString& documentPath) {
  // One document has one lock, by whatever name it was opened.
  const QFileInfo info(PackageLayout::resolved(documentPath));
  return QStringLiteral("%1/.%2.lock").arg(info.absolutePath(), info.fileName());
}

DocumentLock::Attempt DocumentLock::take(const QString& documentPath, Others others) {
  FileLock::Attempt attempt = FileLock::take(pathFor(documentPath), others);
  switch (attempt.state) {
    case State::Held:
      return {State::Held,
              std::unique_ptr<DocumentLock>(new DocumentLock(std::move(attempt.lock))),
              {},
              {}};
    case State::Taken:
      return {State::Taken, nullptr, attempt.holder, sentenceFor(attempt.holder, documentPath)};
    case State::Unavailable:
      break;
  }
  return {State::Unavailable,
          nullptr,
          {},
          tr("\"%1\" cannot be locked against changes by others: %2")
              .arg(nameOf(documentPath), attempt.error.message)};
}

DocumentLock::Attempt DocumentLock::moveTo(const QString& documentPath, Others others) {
  if (pathFor(documentPath) == m_lock->path() && m_lock->isStillHeld())
    return {State::Held, nullptr, {}, {}};
  Attempt attempt = take(documentPath, others);
  if (attempt.state == State::Held) m_lock = std::move(attempt.lock->m_lock);
  attempt.lock.reset();
  return attempt;
}

QString DocumentLock::sentenceFor(const LockHolder& holder, const QString& documentPath) {
  const QString name = nameOf(documentPath);
  if (holder.processId == 0) return tr("\"%1\" is being edited by somebody else.").arg(name);
  const QString since = QLocale().toString(holder.since.toLocalTime(), QLocale::ShortFormat);
  const QString process = QString::number(holder.processId);
  if (holder.isHere())
    return tr("\"%1\" is being edited by %2 on this machine (process %3) since %4.")
        .arg(name, holder.user, process, since);
  return tr("\"%1\" is being edited by %2 on %3 (process %4) since %5.")
      .arg(name, holder.user, holder.host, process, since);
}

}  // namespace document
