#include "document/FolderTracker.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <utility>

namespace document {

FolderTracker::FolderTracker(const QString& path)
    : m_descriptor(::open(QFile::encodeName(path).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC)) {}

FolderTracker::~FolderTracker() {
  if (m_descriptor >= 0) ::close(m_descriptor);
}

FolderTracker::FolderTracker(FolderTracker&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1)) {}

FolderTracker& FolderTracker::operator=(FolderTracker&& other) noexcept {
  std::swap(m_descriptor, other.m_descriptor);
  return *this;
}

QString FolderTracker::path() const {
  if (m_descriptor < 0) return {};
  const QString path = QFile::symLinkTarget(QStringLiteral("/proc/self/fd/%1").arg(m_descriptor));
  if (path.contains(QLatin1String("/Trash/")) || path.contains(QLatin1String("/.Trash"))) return {};
  // What was removed has a name that leads nowhere, or to something else.
  struct stat held {};
  struct stat named {};
  const bool isThere = ::fstat(m_descriptor, &held) == 0 &&
                       ::stat(QFile::encodeName(path).constData(), &named) == 0 &&
                       held.st_ino == named.st_ino && held.st_dev == named.st_dev;
  return isThere ? path : QString();
}

}  // namespace document
