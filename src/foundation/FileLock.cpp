#include "foundation/FileLock.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSysInfo>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <thread>
#include <utility>

#include "foundation/DurableFile.h"

namespace foundation {

namespace {

constexpr int attempts = 20;
constexpr auto pause = std::chrono::milliseconds(5);
constexpr qsizetype maximumSize = 4096;

/// A file descriptor that is closed at the end of its scope unless it is released.
class Descriptor {
 public:
  explicit Descriptor(int number) : m_number(number) {}
  ~Descriptor() {
    if (m_number >= 0) close(m_number);
  }
  Descriptor(Descriptor&& other) noexcept : m_number(other.release()) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  [[nodiscard]] int number() const { return m_number; }
  [[nodiscard]] bool isOpen() const { return m_number >= 0; }
  [[nodiscard]] int release() { return std::exchange(m_number, -1); }

 private:
  int m_number;
};

QString userName() {
  passwd entry{};
  passwd* found = nullptr;
  std::array<char, 4096> buffer{};
  if (getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found)
    return QString::fromLocal8Bit(found->pw_name);
  return QString::number(geteuid());
}

QByteArray signature(const LockHolder& holder) {
  return QJsonDocument(QJsonObject{{QStringLiteral("user"), holder.user},
                                   {QStringLiteral("host"), holder.host},
                                   {QStringLiteral("machine"), holder.machine},
                                   {QStringLiteral("program"), holder.program},
                                   {QStringLiteral("process"), holder.processId},
                                   {QStringLiteral("since"), holder.since.toString(Qt::ISODate)}})
      .toJson();
}

LockHolder readHolder(int descriptor) {
  QByteArray bytes(maximumSize, Qt::Uninitialized);
  bytes.truncate(std::max<ssize_t>(pread(descriptor, bytes.data(), maximumSize, 0), 0));
  const QJsonObject json = QJsonDocument::fromJson(bytes).object();
  const auto text = [&](QLatin1String key) { return json.value(key).toString(); };
  return {text(QLatin1String("user")),
          text(QLatin1String("host")),
          text(QLatin1String("machine")),
          text(QLatin1String("program")),
          json.value(QLatin1String("process")).toInteger(),
          QDateTime::fromString(text(QLatin1String("since")), Qt::ISODate)};
}

bool isRunning(qint64 processId) {
  return processId > 0 && (kill(static_cast<pid_t>(processId), 0) == 0 || errno == EPERM);
}

/// Whether the name still leads to the open file: it may have been removed or replaced meanwhile.
bool leadsTo(const QByteArray& name, int descriptor) {
  struct stat byName {};
  struct stat opened {};
  return stat(name.constData(), &byName) == 0 && fstat(descriptor, &opened) == 0 &&
         byName.st_ino == opened.st_ino && byName.st_dev == opened.st_dev;
}

/// Locks the open file if nobody has it. `holder` is who has it otherwise.
bool lockOpened(int descriptor, LockHolder& holder) {
  const bool locked = flock(descriptor, LOCK_EX | LOCK_NB) == 0;
  const bool unsupported = !locked && errno != EWOULDBLOCK;
  holder = readHolder(descriptor);
  if (locked) return holder.processId == 0 || holder.isHere();
  if (!unsupported) return false;
  // A disk without locks: what the file says is all there is to know.
  if (holder.processId == 0) return true;
  return holder.isHere() && !isRunning(holder.processId);
}

Error unavailable(const QString& path, int number) {
  return {systemErrorText(number), path, {}};
}

}  // namespace

LockHolder LockHolder::thisProcess() {
  return {userName(),
          QSysInfo::machineHostName(),
          QString::fromLatin1(QSysInfo::machineUniqueId()),
          QCoreApplication::applicationName(),
          QCoreApplication::applicationPid(),
          QDateTime::currentDateTimeUtc()};
}

bool LockHolder::isHere() const {
  const QString here = QString::fromLatin1(QSysInfo::machineUniqueId());
  if (!machine.isEmpty() && !here.isEmpty()) return machine == here;
  return host.isEmpty() || host == QSysInfo::machineHostName();
}

namespace {

/// Opens the file, making it if possible; another user's can at least be looked at.
Descriptor opened(const QByteArray& name, bool& writable) {
  Descriptor file(open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666));
  writable = file.isOpen();
  if (writable) return file;
  const int whyNot = errno;
  Descriptor seen(open(name.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
  errno = whyNot;
  return seen;
}

/// Says in the file who has it; the number of the error, 0 when there was none.
int sign(int descriptor) {
  const QByteArray bytes = signature(LockHolder::thisProcess());
  if (ftruncate(descriptor, 0) != 0) return errno;
  const ssize_t count = pwrite(descriptor, bytes.constData(), static_cast<size_t>(bytes.size()), 0);
  if (count < 0) return errno;
  return count == bytes.size() ? 0 : ENOSPC;
}

}  // namespace

FileLock::Attempt FileLock::take(const QString& path, Others others) {
  const QByteArray name = QFile::encodeName(path);
  const auto failed = [&](int number) {
    return Attempt{State::Unavailable, nullptr, {}, unavailable(path, number)};
  };
  if (others == Others::Displace && unlink(name.constData()) != 0 && errno != ENOENT)
    return failed(errno);
  LockHolder holder;
  for (int i = 0; i < attempts; ++i) {
    bool writable = false;
    Descriptor file = opened(name, writable);
    const int whyNot = errno;
    if (!file.isOpen()) return failed(whyNot);
    if (!lockOpened(file.number(), holder)) {
      if (!holder.isHere() || isRunning(holder.processId)) break;
      std::this_thread::sleep_for(pause);  // somebody is taking it, or only looks whether it is
      continue;
    }
    if (!leadsTo(name, file.number())) continue;
    if (!writable) {  // left behind by another user
      if (unlink(name.constData()) != 0) return failed(whyNot);
      continue;
    }
    if (const int number = sign(file.number()); number != 0) {
      unlink(name.constData());
      return failed(number);
    }
    return {State::Held, std::unique_ptr<FileLock>(new FileLock(path, file.release())), {}, {}};
  }
  return {State::Taken, nullptr, holder, {}};
}

bool FileLock::isTaken(const QString& path) {
  const Descriptor file(
      open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
  if (!file.isOpen()) return false;
  LockHolder holder;
  return !lockOpened(file.number(), holder);
}

bool FileLock::isStillHeld() const {
  return leadsTo(QFile::encodeName(m_path), m_descriptor);
}

FileLock::~FileLock() {
  if (isStillHeld()) unlink(QFile::encodeName(m_path).constData());
  close(m_descriptor);
}

}  // namespace foundation
