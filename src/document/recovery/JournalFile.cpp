#include "document/recovery/JournalFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <cerrno>
#include <chrono>

#include "foundation/DurableFile.h"

namespace document {

using foundation::failure;
using foundation::Result;

namespace {

constexpr auto interval = std::chrono::seconds(1);

}  // namespace

JournalFile::JournalFile(QString path, int descriptor, qint64 size)
    : m_path(std::move(path)), m_descriptor(descriptor), m_size(size) {}

Result<std::unique_ptr<JournalFile>> JournalFile::create(const QString& path,
                                                         const QByteArray& begin) {
  if (const Result<void> made = foundation::replaceFile(path, begin); !made)
    return tl::unexpected(made.error());
  const int descriptor =
      open(QFile::encodeName(path).constData(), O_WRONLY | O_APPEND | O_CLOEXEC | O_NOFOLLOW);
  if (descriptor < 0) return failure(foundation::systemErrorText(errno), path);
  return std::unique_ptr<JournalFile>(new JournalFile(path, descriptor, begin.size()));
}

JournalFile::~JournalFile() {
  {
    const std::lock_guard guard(m_mutex);
    m_ending = true;
  }
  m_wake.notify_all();
  if (m_thread.joinable()) m_thread.join();
  close(m_descriptor);
}

Result<void> JournalFile::state() const {
  if (const int number = m_error)
    return failure(QStringLiteral("cannot be written: %1").arg(foundation::systemErrorText(number)),
                   m_path);
  return {};
}

Result<void> JournalFile::append(const QByteArray& bytes) {
  if (m_error != 0) return state();
  const ssize_t count = write(m_descriptor, bytes.constData(), static_cast<size_t>(bytes.size()));
  if (count != bytes.size()) {
    m_error = count < 0 ? errno : ENOSPC;
    if (count > 0 && ftruncate(m_descriptor, m_size) != 0) m_error = errno;
    return state();
  }
  m_size += count;
  if (!m_thread.joinable()) m_thread = std::thread([this] { syncNowAndThen(); });
  {
    const std::lock_guard guard(m_mutex);
    if (std::exchange(m_unsynced, true)) return {};
  }
  m_wake.notify_all();
  return {};
}

Result<void> JournalFile::sync() {
  if (const int number = syncFile()) m_error = number;
  return state();
}

void JournalFile::syncNowAndThen() {
  std::unique_lock lock(m_mutex);
  while (true) {
    m_wake.wait(lock, [this] { return m_unsynced || m_ending; });
    if (!m_unsynced) return;
    m_unsynced = false;
    lock.unlock();
    if (const int number = syncFile()) m_error = number;
    lock.lock();
    m_wake.wait_for(lock, interval, [this] { return m_ending; });
  }
}

int JournalFile::syncFile() {
  if (fdatasync(m_descriptor) != 0) return errno;
  return isInPlace() ? 0 : ENOENT;
}

bool JournalFile::isInPlace() const {
  struct stat byName {};
  struct stat opened {};
  return stat(QFile::encodeName(m_path).constData(), &byName) == 0 &&
         fstat(m_descriptor, &opened) == 0 && byName.st_ino == opened.st_ino &&
         byName.st_dev == opened.st_dev;
}

}  // namespace document
