#pragma once

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

#include "foundation/Result.h"

namespace document {

/// A file that only grows. What was appended outlives the process at once; a thread of its own
/// makes it outlive the system too, once a second at most, so that nobody waits for the disk.
class JournalFile {
 public:
  /// Puts a file with these bytes in the place of what may be there, durably.
  [[nodiscard]] static foundation::Result<std::unique_ptr<JournalFile>> create(
      const QString& path, const QByteArray& begin);
  ~JournalFile();
  JournalFile(const JournalFile&) = delete;
  JournalFile& operator=(const JournalFile&) = delete;

  /// One write. After a failure nothing can be appended any more: the file may end in a torn piece.
  /// Failures of the thread are told here.
  [[nodiscard]] foundation::Result<void> append(const QByteArray& bytes);
  /// Waits until the disk has everything.
  [[nodiscard]] foundation::Result<void> sync();
  [[nodiscard]] qint64 size() const { return m_size; }

 private:
  JournalFile(QString path, int descriptor, qint64 size);
  [[nodiscard]] foundation::Result<void> state() const;
  void syncNowAndThen();
  /// 0 or the number of the error.
  [[nodiscard]] int syncFile();
  [[nodiscard]] bool isInPlace() const;

  const QString m_path;
  const int m_descriptor;
  qint64 m_size;
  std::atomic<int> m_error = 0;  ///< what made the file unusable

  std::mutex m_mutex;
  std::condition_variable m_wake;
  bool m_unsynced = false;
  bool m_ending = false;
  std::thread m_thread;  ///< begun with the first append
};

}  // namespace document
