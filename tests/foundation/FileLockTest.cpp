#include "foundation/FileLock.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFile>
#include <QTemporaryDir>
#include <csignal>

namespace foundation {

namespace {

using State = FileLock::State;

/// A second process that takes the lock and keeps it until it is killed.
class LockingProcess {
 public:
  explicit LockingProcess(const QString& path) {
    int ready[2] = {};
    if (pipe(ready) != 0) return;
    m_process = fork();
    if (m_process == 0) {
      const FileLock::Attempt attempt = FileLock::take(path);
      const char state = attempt.state == State::Held ? 'h' : 'n';
      if (write(ready[1], &state, 1) != 1) _exit(1);
      while (true) pause();
    }
    char state = 0;
    m_holds = read(ready[0], &state, 1) == 1 && state == 'h';
    close(ready[0]);
    close(ready[1]);
  }
  ~LockingProcess() { killIt(); }
  LockingProcess(const LockingProcess&) = delete;
  LockingProcess& operator=(const LockingProcess&) = delete;
  void killIt() {
    if (m_process <= 0) return;
    kill(m_process, SIGKILL);
    waitpid(m_process, nullptr, 0);
    m_process = 0;
  }
  [[nodiscard]] bool holds() const { return m_holds; }
  [[nodiscard]] pid_t process() const { return m_process; }

 private:
  pid_t m_process = 0;
  bool m_holds = false;
};

class FileLockTest : public testing::Test {
 protected:
  void writeLock(const QByteArray& bytes) const {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
  QTemporaryDir folder;
  QString path = folder.filePath(QStringLiteral(".Lower third äöü.lock"));
};

TEST_F(FileLockTest, OneHoldsItAndOthersAreToldWho) {
  {
    const FileLock::Attempt first = FileLock::take(path);
    ASSERT_EQ(first.state, State::Held);
    EXPECT_TRUE(first.lock->isStillHeld());
    EXPECT_TRUE(FileLock::isTaken(path));
    const FileLock::Attempt second = FileLock::take(path);
    EXPECT_EQ(second.state, State::Taken) << "within one process too";
    EXPECT_EQ(second.holder.processId, getpid());
    EXPECT_FALSE(second.holder.user.isEmpty());
    EXPECT_FALSE(second.holder.host.isEmpty());
    EXPECT_LT(std::abs(second.holder.since.secsTo(QDateTime::currentDateTimeUtc())), 60);
  }
  EXPECT_FALSE(QFile::exists(path));
  EXPECT_FALSE(FileLock::isTaken(path));
}

TEST_F(FileLockTest, ADeadProcessHoldsNothing) {
  LockingProcess other(path);
  ASSERT_TRUE(other.holds());
  const FileLock::Attempt refused = FileLock::take(path);
  EXPECT_EQ(refused.state, State::Taken);
  EXPECT_EQ(refused.holder.processId, other.process());
  EXPECT_TRUE(FileLock::isTaken(path));
  other.killIt();
  ASSERT_TRUE(QFile::exists(path));
  EXPECT_FALSE(FileLock::isTaken(path));
  EXPECT_EQ(FileLock::take(path).state, State::Held);
}

TEST_F(FileLockTest, OtherMachinesAreTrustedUntilDisplaced) {
  writeLock(R"({"user": "anna", "host": "studio-3", "machine": "0123", "process": 1})");
  EXPECT_TRUE(FileLock::isTaken(path));
  const FileLock::Attempt refused = FileLock::take(path);
  ASSERT_EQ(refused.state, State::Taken);
  EXPECT_EQ(refused.holder.user, QStringLiteral("anna"));
  EXPECT_EQ(refused.holder.host, QStringLiteral("studio-3"));
  EXPECT_EQ(FileLock::take(path, FileLock::Others::Displace).state, State::Held);
}

TEST_F(FileLockTest, WhoWasDisplacedKnowsAndLeavesTheFileAlone) {
  FileLock::Attempt first = FileLock::take(path);
  const FileLock::Attempt second = FileLock::take(path, FileLock::Others::Displace);
  ASSERT_EQ(second.state, State::Held);
  EXPECT_FALSE(first.lock->isStillHeld());
  first.lock.reset();
  EXPECT_TRUE(second.lock->isStillHeld());
}

TEST_F(FileLockTest, TornFilesStopNobody) {
  for (const QByteArray& bytes :
       {QByteArray(), QByteArray("{\"user\": \"an"), QByteArray(9000, 'x')}) {
    writeLock(bytes);
    EXPECT_EQ(FileLock::take(path).state, State::Held) << bytes.size();
  }
}

TEST_F(FileLockTest, FoldersThatCannotBeWrittenGiveTheReason) {
  const FileLock::Attempt noFolder = FileLock::take(folder.filePath(QStringLiteral("no/lock")));
  EXPECT_EQ(noFolder.state, State::Unavailable);
  EXPECT_EQ(noFolder.error.message, QStringLiteral("No such file or directory"));
  EXPECT_EQ(FileLock::take(QStringLiteral("/proc/lock")).state, State::Unavailable);
}

}  // namespace

}  // namespace foundation
