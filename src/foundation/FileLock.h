#pragma once

#include <QDateTime>
#include <memory>

#include "foundation/Result.h"

namespace foundation {

/// Who holds a lock, as the lock file says. Fields that it does not say are empty.
struct LockHolder {
  QString user;
  QString host;
  QString machine;  ///< identity of the machine's installation, which outlives its name
  QString program;
  qint64 processId = 0;
  QDateTime since;

  [[nodiscard]] static LockHolder thisProcess();
  /// Whether the holder runs on this machine.
  [[nodiscard]] bool isHere() const;
};

/// A file that one process at a time holds and that says who does. The system lets go of it when
/// the process ends, however it ends, so a file that was left behind stops nobody on the same
/// machine. What other machines hold on a shared disk cannot be known: that counts as held.
class FileLock {
 public:
  enum class State {
    Held,        ///< by this object
    Taken,       ///< by somebody else
    Unavailable  ///< the file cannot be made here
  };
  struct Attempt {
    State state = State::Unavailable;
    std::unique_ptr<FileLock> lock;  ///< when held
    LockHolder holder;               ///< when taken
    Error error;                     ///< when unavailable
  };
  enum class Others { Respect, Displace };

  /// Takes the lock with that file. Displacing takes it from whoever is said to have it.
  [[nodiscard]] static Attempt take(const QString& path, Others others = Others::Respect);
  /// Whether somebody holds it, this process included; never changes anything.
  [[nodiscard]] static bool isTaken(const QString& path);

  /// Lets go and removes the file, unless somebody has displaced this lock.
  ~FileLock();
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

  [[nodiscard]] const QString& path() const { return m_path; }
  /// False after somebody displaced this lock, or removed or renamed its file.
  [[nodiscard]] bool isStillHeld() const;
  /// The file was renamed together with a folder around it.
  void setPath(const QString& path) { m_path = path; }

 private:
  FileLock(QString path, int descriptor) : m_path(std::move(path)), m_descriptor(descriptor) {}

  QString m_path;
  int m_descriptor;
};

}  // namespace foundation
