// Real processes that are killed at any moment, and what they leave behind.
#include <gtest/gtest.h>
#include <unistd.h>

#include <QFile>
#include <chrono>
#include <random>
#include <thread>

#include "ChildProcess.h"
#include "Library.h"
#include "document/DocumentLock.h"

namespace document {

namespace {

constexpr int mostSteps = 4000;

enum Habit { Compacts = 1, Saves = 2, Checkpoints = 4, NeverSaved = 8, Syncs = 16 };

QString argument(const char* name) {
  return qEnvironmentVariable(name);
}

void tell(const QByteArray& line) {
  if (write(STDOUT_FILENO, line.constData(), static_cast<size_t>(line.size())) < 0) _exit(1);
}

void save(Library& library, RecoveryJournal& journal, const DocumentName& document) {
  journal.beginSave(library.bytes(), document.path);
  library.saveTo(document.path);
  library.context.markSaved();
  journal.endSave(document);
}

/// What the process to be killed does.
TEST(KilledProcess, DISABLED_Edits) {
  const DocumentName document{argument("TEST_DOCUMENT"), QStringLiteral("Killed")};
  const int habits = argument("TEST_HABITS").toInt();
  const bool unsaved = (habits & NeverSaved) != 0;
  Library library;
  library.withContents();
  RecoveryJournal journal(library.context, RecoveryStore(argument("TEST_STATE")),
                          unsaved ? DocumentName{{}, document.displayName} : document,
                          unsaved ? QByteArray() : library.bytes(), library.host());
  if ((habits & Compacts) != 0) journal.setSizeLimit(100'000);
  RandomEdits edits(argument("TEST_SEED").toUInt());
  tell("\nbegin\n");
  for (int i = 1; i < mostSteps; ++i) {
    edits.step(library.context);
    tell("step " + QByteArray::number(i) + "\n");
    if ((habits & Saves) != 0 && i % 13 == 0) save(library, journal, document);
    if ((habits & Checkpoints) != 0 && i % 7 == 0) (void)journal.checkpoint();
    if ((habits & Syncs) != 0 && i % 5 == 0) (void)journal.sync();
  }
  tell("done\n");
  std::this_thread::sleep_for(std::chrono::minutes(1));
}

int lastStepIn(const QByteArray& output) {
  const qsizetype end = output.lastIndexOf('\n');
  const qsizetype begin = output.lastIndexOf("step ", end);
  return begin < 0 ? 0 : output.mid(begin + 5, end - begin - 5).split('\n').first().toInt();
}

/// What is there after a new start: recovered, or as it was saved last.
QByteArray foundState(const RecoveryStore& store, const QString& documentPath, bool& ok) {
  Library again;
  const QList<RecoveryEntry> entries = store.recoverable();
  ok = entries.size() <= 1;
  if (entries.isEmpty()) {
    QFile file(storePathOf(documentPath));
    if (file.open(QIODevice::ReadOnly))
      ok = ok && Library::read(file.readAll(), {}, again.context).has_value();
    else
      again.withContents();  // nothing was changed yet
    return again.bytes();
  }
  const auto recovered =
      store.recover(entries.first(), &Library::read, Library::factories(), again.context);
  ok = ok && recovered && recovered->warnings.isEmpty();
  if (recovered) recovered->place->remove();
  return again.bytes();
}

TEST(KilledProcess, LosesTheStepInProgressAtMost) {
  std::mt19937 random(20261121);
  int latest = 0;
  for (int round = 0; round < 60; ++round) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("Größe \u6f22.composition"));
    const RecoveryStore store(folder.filePath(QStringLiteral("state")));
    const quint32 seed = random();
    const int habits = round % 32;
    Library start;
    start.withContents();
    if ((habits & NeverSaved) == 0) start.saveTo(path);
    ChildProcess child(QStringLiteral("KilledProcess.DISABLED_Edits"),
                       {{QStringLiteral("TEST_DOCUMENT"), path},
                        {QStringLiteral("TEST_STATE"), store.stateFolder()},
                        {QStringLiteral("TEST_SEED"), QString::number(seed)},
                        {QStringLiteral("TEST_HABITS"), QString::number(habits)}});
    ASSERT_TRUE(child.waitFor("\nbegin\n"));
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 80'000));
    child.kill();
    const int step = lastStepIn(child.output());
    latest = std::max(latest, step);

    RandomEdits edits(seed);
    for (int i = 0; i < step; ++i) edits.step(start.context);
    const QByteArray before = start.bytes();
    edits.step(start.context);
    bool ok = false;
    const QByteArray found = foundState(store, path, ok);
    EXPECT_TRUE(ok) << "round " << round;
    EXPECT_TRUE(found == before || found == start.bytes())
        << "round " << round << ", step " << step << ", habits " << habits;
    EXPECT_TRUE(store.recoverable().isEmpty());
  }
  EXPECT_GT(latest, 10) << "too slow to see anything";
}

TEST(KilledProcess, DISABLED_HoldsADocument) {
  const DocumentLock::Attempt attempt = DocumentLock::take(argument("TEST_DOCUMENT"));
  tell(attempt.state == DocumentLock::State::Held ? "\nheld\n" : "\nrefused\n");
  std::this_thread::sleep_for(std::chrono::minutes(1));
}

TEST(KilledProcess, HoldsItsDocumentUntilItsEnd) {
  using State = DocumentLock::State;
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("Größe %2 \u6f22.composition"));
  ChildProcess child(QStringLiteral("KilledProcess.DISABLED_HoldsADocument"),
                     {{QStringLiteral("TEST_DOCUMENT"), path}});
  ASSERT_TRUE(child.waitFor("\nheld\n"));
  const DocumentLock::Attempt refused = DocumentLock::take(path);
  EXPECT_EQ(refused.state, State::Taken);
  EXPECT_EQ(refused.holder.processId, child.processId());
  EXPECT_TRUE(
      refused.sentence.startsWith(QStringLiteral("\"Größe %2 \u6f22\" is being edited by ")))
      << refused.sentence.toStdString();
  EXPECT_TRUE(refused.sentence.contains(
      QStringLiteral(" on this machine (process %1) since ").arg(child.processId())));
  child.kill();
  const DocumentLock::Attempt held = DocumentLock::take(path);
  EXPECT_EQ(held.state, State::Held) << "what a dead process left stops nobody";
  EXPECT_EQ(held.sentence, QString());
}

TEST(DocumentLock, MovesWithItsDocumentAndRespectsOtherMachines) {
  using State = DocumentLock::State;
  const QTemporaryDir folder;
  const QString one = folder.filePath(QStringLiteral("One.composition"));
  const QString two = folder.filePath(QStringLiteral("Two.composition/"));
  DocumentLock::Attempt first = DocumentLock::take(one);
  ASSERT_EQ(first.state, State::Held);
  {
    const DocumentLock::Attempt other = DocumentLock::take(two);
    ASSERT_EQ(other.state, State::Held);
    EXPECT_EQ(first.lock->moveTo(two).state, State::Taken);
    EXPECT_TRUE(QFile::exists(DocumentLock::pathFor(one))) << "still held where it was";
  }
  EXPECT_EQ(first.lock->moveTo(two).state, State::Held);
  EXPECT_EQ(first.lock->moveTo(two).state, State::Held);
  EXPECT_TRUE(first.lock->isStillHeld());
  EXPECT_FALSE(QFile::exists(DocumentLock::pathFor(one)));

  QFile foreign(DocumentLock::pathFor(one));
  ASSERT_TRUE(foreign.open(QIODevice::WriteOnly));
  foreign.write(R"({"user": "anna", "host": "studio-3", "machine": "0", "process": 7,
                    "since": "2026-01-02T03:04:05Z"})");
  foreign.close();
  const DocumentLock::Attempt refused = DocumentLock::take(one);
  EXPECT_EQ(refused.state, State::Taken);
  EXPECT_TRUE(refused.sentence.contains(QStringLiteral("by anna on studio-3 (process 7) since")));
  EXPECT_EQ(DocumentLock::take(one, DocumentLock::Others::Displace).state, State::Held);

  const DocumentLock::Attempt nowhere =
      DocumentLock::take(folder.filePath(QStringLiteral("no/One.composition")));
  EXPECT_EQ(nowhere.state, State::Unavailable);
  EXPECT_EQ(nowhere.sentence.toStdString(),
            "\"One\" cannot be locked against changes by others: No such file or directory");
}

}  // namespace

}  // namespace document
