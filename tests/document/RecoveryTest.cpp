#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <csignal>
#include <thread>

#include "Library.h"
#include "foundation/DurableFile.h"
#include "support/FileSizeLimit.h"

namespace document {

namespace {

using testing::ElementsAre;

/// Permissions count for somebody who is not the administrator.
class OrdinaryUser {
 public:
  static constexpr uid_t nobody = 65534;
  OrdinaryUser() {
    if (m_wasRoot && seteuid(nobody) != 0) qFatal("cannot change the user");
  }
  ~OrdinaryUser() {
    if (m_wasRoot && seteuid(0) != 0) qFatal("cannot change the user back");
  }

 private:
  const bool m_wasRoot = geteuid() == 0;
};

QByteArray contentsOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void setContents(const QString& path, const QByteArray& bytes) {
  QFile::remove(path);  // some file systems wait for the disk when contents are replaced in place
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

using Files = QMap<QString, QByteArray>;

Files filesIn(const QString& folder) {
  Files files;
  for (const QFileInfo& info : QDir(folder).entryInfoList(QDir::Files | QDir::Hidden))
    files.insert(info.fileName(), contentsOf(info.filePath()));
  return files;
}

class RecoveryTest : public testing::Test {
 protected:
  [[nodiscard]] QStringList hiddenNames() const {
    return QDir(folder.path())
        .entryList({QStringLiteral(".*")}, QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
  }
  [[nodiscard]] QStringList stateNames() const {
    return QDir(store.stateFolder())
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
  }
  [[nodiscard]] QString beside() const { return RecoveryPlace::folderBeside(document.path); }
  [[nodiscard]] QString journalPath() const { return RecoveryPlace::journalPathIn(beside()); }

  std::unique_ptr<RecoveryJournal> openSaved(Library& library) {
    library.withContents().saveTo(document.path);
    return std::make_unique<RecoveryJournal>(library.context, store, document, library.bytes(),
                                             library.host(&warnings));
  }
  std::unique_ptr<RecoveryJournal> openUnsaved(Library& library) {
    library.withContents();
    return std::make_unique<RecoveryJournal>(library.context, store,
                                             DocumentName{{}, QStringLiteral("Untitled 3")},
                                             QByteArray(), library.host(&warnings));
  }
  foundation::Result<RecoveredDocument> recover(const RecoveryEntry& entry, Library& into) const {
    return store.recover(entry, &Library::read, Library::factories(), into.context);
  }
  /// There is one thing to recover, and it is exactly that. What is there stays.
  void expectRecoverable(const QByteArray& bytes, qint64 changes,
                         const QStringList& expectedWarnings = {}) {
    const QList<RecoveryEntry> entries = store.recoverable();
    ASSERT_EQ(entries.size(), 1);
    EXPECT_EQ(entries.first().changes, changes);
    Library again;
    const auto recovered = recover(entries.first(), again);
    ASSERT_TRUE(recovered) << recovered.error().text().toStdString();
    EXPECT_EQ(recovered->changes, changes);
    EXPECT_EQ(recovered->warnings, expectedWarnings);
    EXPECT_TRUE(again.context.hasChanges());
    EXPECT_FALSE(again.context.canUndo());
    EXPECT_TRUE(again.bytes() == bytes);
  }

  QTemporaryDir folder;
  RecoveryStore store{folder.filePath(QStringLiteral("state/tessary/recovery"))};
  DocumentName document{folder.filePath(QStringLiteral("Bauchbinde äöü \u6f22.composition")),
                        QStringLiteral("Bauchbinde äöü \u6f22")};
  QStringList warnings;
};

TEST_F(RecoveryTest, NothingIsThereBeforeTheFirstChangeAndAfterClosing) {
  Library library;
  const auto journal = openSaved(library);
  library.book()->setSeen(3);
  EXPECT_EQ(journal->changes(), 0) << "what is not saved is no change";
  EXPECT_THAT(hiddenNames(), ElementsAre());
  library.book()->setX(3);
  EXPECT_EQ(journal->folder(), beside());
  EXPECT_EQ(hiddenNames().size(), 1);
  EXPECT_TRUE(store.recoverable().isEmpty()) << "this process is alive";
  EXPECT_TRUE(store.recoverableFor(document.path).isEmpty());
  journal->close();
  EXPECT_THAT(hiddenNames(), ElementsAre());
  EXPECT_THAT(stateNames(), ElementsAre());
}

TEST_F(RecoveryTest, AStepThatIsTakenBackLeavesNothing) {
  Library library;
  const auto journal = openUnsaved(library);
  library.context.markSaved();
  {
    store::UndoStep step(library.context, QStringLiteral("Import"));
    library.book()->setX(4);
    step.cancel();
  }
  EXPECT_THAT(stateNames(), ElementsAre());
  // The first change that stays brings everything along.
  library.book()->setX(5);
  EXPECT_EQ(stateNames().size(), 1);
}

TEST_F(RecoveryTest, SavedDocumentsComeBackWithAllTheirChanges) {
  Library library;
  auto journal = openSaved(library);
  library.book()->setX(3);
  library.addBook(library.shelf(), QString(QChar(0xdc00)) + QChar(1))->setY(2);
  library.context.undo();
  library.context.undo();
  library.context.redo();
  library.context.remove(*library.addBook(nullptr, QStringLiteral("Short-lived")));
  library.shelf()->setLabels({QString(), QStringLiteral("\U0001f3ac")});
  const qint64 changes = journal->changes();
  EXPECT_EQ(changes, 9);
  EXPECT_LT(journal->size(), 2500) << "the large text did not change";
  journal.reset();
  EXPECT_EQ(store.recoverable().first().document.path, document.path);
  EXPECT_EQ(store.recoverable().first().document.displayName, document.displayName);
  EXPECT_LT(store.recoverable().first().lastChange.secsTo(QDateTime::currentDateTime()), 60);
  expectRecoverable(library.bytes(), changes);
  ASSERT_TRUE(store.discard(store.recoverable().first()));
  EXPECT_THAT(hiddenNames(), ElementsAre());
  EXPECT_THAT(stateNames(), ElementsAre());
}

TEST_F(RecoveryTest, UnsavedDocumentsComeBackFromTheStateFolder) {
  Library library;
  auto journal = openUnsaved(library);
  library.book()->setX(3);
  EXPECT_TRUE(journal->folder().startsWith(store.stateFolder()));
  struct stat info {};
  ASSERT_EQ(stat(QFile::encodeName(journal->folder()).constData(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0700U);
  journal.reset();
  EXPECT_EQ(store.recoverable().first().document.displayName, QStringLiteral("Untitled 3"));
  expectRecoverable(library.bytes(), 1);
}

TEST_F(RecoveryTest, RecoveredDocumentsGoOnInTheirPlace) {
  Library library;
  auto journal = openSaved(library);
  library.book()->setX(3);
  journal.reset();
  for (int round = 1; round < 4; ++round) {
    Library again;
    auto recovered = recover(store.recoverable().value(0), again);
    ASSERT_TRUE(recovered);
    journal = std::make_unique<RecoveryJournal>(again.context, store, std::move(*recovered),
                                                again.host(&warnings));
    EXPECT_TRUE(store.recoverable().isEmpty());
    EXPECT_EQ(journal->folder(), beside());
    if (round == 2) again.context.remove(*again.book());
    if (round == 3) again.addBook(again.shelf(), QStringLiteral("New"));
    journal.reset();
    expectRecoverable(again.bytes(), round);
  }
  // Given up: the document is as it was saved, and nothing is left.
  Library again;
  auto recovered = recover(store.recoverable().value(0), again);
  ASSERT_TRUE(recovered);
  RecoveryJournal(again.context, store, std::move(*recovered), again.host(&warnings)).close();
  EXPECT_THAT(hiddenNames(), ElementsAre());
  EXPECT_THAT(stateNames(), ElementsAre());
  EXPECT_EQ(warnings, QStringList());
}

TEST_F(RecoveryTest, SavingBeginsAnewWhereverItIsInterrupted) {
  Library library;
  auto journal = openSaved(library);
  library.book()->setX(3);
  journal->beginSave(library.bytes(), document.path);
  library.context.markSaved();
  journal.reset();
  expectRecoverable(library.bytes(), 1);  // the document was not replaced yet
  library.saveTo(document.path);
  EXPECT_TRUE(store.recoverable().isEmpty()) << "it was, and lacks nothing";
  EXPECT_THAT(hiddenNames(), ElementsAre());

  journal = std::make_unique<RecoveryJournal>(library.context, store, document, library.bytes(),
                                              library.host(&warnings));
  library.book()->setX(4);
  journal->beginSave(library.bytes(), document.path);  // fails, is tried again
  library.book()->setX(5);
  journal->beginSave(library.bytes(), document.path);
  library.saveTo(document.path);
  const QByteArray saved = contentsOf(storePathOf(document.path));
  library.book()->setX(6);
  EXPECT_EQ(journal->changes(), 3);
  journal.reset();
  expectRecoverable(library.bytes(), 1);  // more than was saved

  auto recovered = recover(store.recoverable().value(0), *std::make_unique<Library>());
  ASSERT_TRUE(recovered);
  recovered->place->remove();
  journal = std::make_unique<RecoveryJournal>(library.context, store, document, library.bytes(),
                                              library.host(&warnings));
  library.book()->setX(7);
  const DocumentName other{folder.filePath(QStringLiteral("Other.composition")),
                           QStringLiteral("Other")};
  journal->beginSave(library.bytes(), other.path);
  library.saveTo(other.path);
  journal->endSave(other);
  EXPECT_THAT(hiddenNames(), ElementsAre());
  library.book()->setX(8);
  EXPECT_EQ(journal->folder(), RecoveryPlace::folderBeside(other.path));
  journal.reset();
  expectRecoverable(library.bytes(), 1);
}

TEST_F(RecoveryTest, TheFirstSaveOfADocumentMayBeInterrupted) {
  Library library;
  auto journal = openUnsaved(library);
  library.book()->setX(3);
  journal->beginSave(library.bytes(), document.path);
  library.saveTo(document.path);
  journal.reset();
  EXPECT_TRUE(store.recoverable().isEmpty());
}

TEST_F(RecoveryTest, DataFollowTheDocument) {
  Library library;
  auto journal = openUnsaved(library);
  library.book()->setX(3);
  ASSERT_TRUE(journal->documentMoved(document));
  EXPECT_EQ(journal->folder(), beside());
  EXPECT_EQ(stateNames().size(), 1);
  library.book()->setX(4);
  journal.reset();
  expectRecoverable(library.bytes(), 2);
}

TEST_F(RecoveryTest, EveryPrefixOfAJournalGivesAState) {
  QList<QByteArray> states;
  QList<qint64> sizes;
  Library library;
  auto journal = openSaved(library);
  RandomEdits edits(7);
  states.append(library.bytes());
  sizes.append(0);
  for (int i = 0; i < 12; ++i) {
    edits.step(library.context);
    if (journal->size() == sizes.last()) continue;
    sizes.append(journal->size());
    states.append(library.bytes());
  }
  journal.reset();
  const QByteArray whole = contentsOf(journalPath());
  ASSERT_EQ(whole.size(), sizes.last());
  const RecoveryEntry entry{document, beside(), {}, {}, 0, true};
  int step = 0;
  qsizetype pace = 1;
  const qsizetype headerSize = journalBegin(JournalReader(whole).header()).size();
  for (qsizetype size = 0; size < headerSize; ++size) {
    setContents(journalPath(), whole.first(size));
    EXPECT_FALSE(recover(entry, *std::make_unique<Library>())) << size;
  }
  for (qsizetype size = headerSize; size <= whole.size(); size += pace) {
    while (step + 1 < sizes.size() && sizes[step + 1] <= size) ++step;
    const qint64 distance = std::min(size - sizes[step], sizes.value(step + 1, size) - size);
    pace = std::clamp<qint64>(distance / 2, 1, 500);
    setContents(journalPath(), whole.first(size));
    {
      Library again;
      const auto recovered = recover(entry, again);
      ASSERT_TRUE(recovered) << size;
      ASSERT_TRUE(again.bytes() == states[step]) << size << ", step " << step;
      ASSERT_EQ(recovered->warnings, QStringList()) << size;
    }
    // After a loss of power the end may have its length and not its bytes.
    setContents(journalPath(), whole.first(size) + QByteArray(100, '\0'));
    Library padded;
    ASSERT_TRUE(recover(entry, padded)) << size;
    ASSERT_TRUE(padded.bytes() == states[step] || padded.bytes() == states.value(step + 1))
        << size << ", step " << step;
  }
}

TEST_F(RecoveryTest, DamagedJournalsEndWhereTheDamageIs) {
  QList<QByteArray> states;
  Library library;
  auto journal = openSaved(library);
  states.append(library.bytes());
  for (int i = 0; i < 5; ++i) {
    library.book()->setX(i + 10);
    states.append(library.bytes());
  }
  journal.reset();
  const QByteArray whole = contentsOf(journalPath());
  const RecoveryEntry entry{document, beside(), {}, {}, 0, true};
  for (qsizetype at = 0; at < whole.size(); ++at) {
    QByteArray damaged = whole;
    damaged[at] = static_cast<char>(damaged[at] ^ 0x41);
    setContents(journalPath(), damaged);
    ASSERT_EQ(store.recoverable().size(), 1) << "damaged data are not thrown away, " << at;
    Library again;
    const auto recovered = recover(entry, again);
    if (!recovered) {
      EXPECT_TRUE(recovered.error().detail.contains(QStringLiteral("damaged"))) << at;
      continue;
    }
    const auto step = states.indexOf(again.bytes());
    ASSERT_GE(step, 0) << at;
    EXPECT_EQ(recovered->changes, step) << at;
    EXPECT_LT(step, 5) << at;
    EXPECT_TRUE(step == 4 || recovered->warnings.size() == 1) << at;
  }
}

TEST_F(RecoveryTest, CheckpointsAreSafeAtEveryMoment) {
  Library library;
  auto journal = openSaved(library);
  library.book()->setX(3);
  ASSERT_TRUE(journal->checkpoint());
  ASSERT_TRUE(journal->checkpoint()) << "nothing new, nothing done";
  library.book()->setText("new");
  const Files before = filesIn(beside());
  ASSERT_TRUE(journal->checkpoint());
  const Files after = filesIn(beside());
  journal.reset();
  EXPECT_EQ(before.keys().filter(QStringLiteral("data")),
            QStringList(QStringLiteral("data-1.xml")));
  EXPECT_EQ(after.keys().filter(QStringLiteral("data")), QStringList(QStringLiteral("data-2.xml")));
  const QString journalName = QStringLiteral("journal");
  Files halfWritten = before;
  halfWritten.insert(QStringLiteral("data-2.xml.Xk2jd9"),
                     after.value(QStringLiteral("data-2.xml")));
  Files written = before;
  written.insert(after);
  written[journalName] = before[journalName];
  Files halfBegun = written;
  halfBegun.insert(QStringLiteral("journal.aBcDeF"), after[journalName].chopped(5));
  Files begun = written;
  begun[journalName] = after[journalName];
  for (const Files& moment : {before, halfWritten, written, halfBegun, begun, after}) {
    ASSERT_TRUE(QDir(beside()).removeRecursively());
    ASSERT_TRUE(QDir().mkdir(beside()));
    for (const auto& [name, bytes] : moment.asKeyValueRange())
      setContents(beside() + QLatin1Char('/') + name, bytes);
    expectRecoverable(library.bytes(), 2);
  }
  ASSERT_TRUE(store.discard(store.recoverable().value(0)));
  EXPECT_THAT(hiddenNames(), ElementsAre());
}

TEST_F(RecoveryTest, JournalsAreCompactedAndVanishWithTheLastChange) {
  Library library;
  auto journal = openSaved(library);
  journal->setSizeLimit(50'000);
  qint64 largest = 0;
  for (int i = 0; i < 400; ++i) {
    library.book()->setText(QByteArray(3000, static_cast<char>(i)));
    largest = std::max(largest, journal->size());
  }
  EXPECT_LT(largest, 110'000) << "the limit, or as large as the store";
  EXPECT_EQ(journal->changes(), 400);
  ASSERT_TRUE(journal->sync());
  while (library.context.canUndo()) library.context.undo();
  EXPECT_EQ(journal->changes(), 800);
  ASSERT_TRUE(journal->checkpoint());
  EXPECT_EQ(journal->changes(), 0);
  EXPECT_THAT(hiddenNames(), ElementsAre());
  library.book()->setX(9);
  journal.reset();
  expectRecoverable(library.bytes(), 1);
}

TEST_F(RecoveryTest, AFullDiskIsToldOnceAndTriedAgain) {
  Library library;
  auto journal = openSaved(library);
  library.book()->setX(2);
  {
    const support::FileSizeLimit limit(50'000);
    library.book()->setX(3);
    library.shelf()->setLabels({QString(40'000, QLatin1Char('x'))});
    EXPECT_FALSE(journal->isWorking());
    EXPECT_FALSE(journal->checkpoint());
    for (int i = 0; i < 20; ++i) library.shelf()->setNumber(i);
    ASSERT_EQ(warnings.size(), 1);
    EXPECT_TRUE(warnings.first().startsWith(journalPath()));
    EXPECT_TRUE(
        warnings.first().endsWith(QStringLiteral("cannot be written: No space left on device")) ||
        warnings.first().endsWith(QStringLiteral("cannot be written: File too large")))
        << warnings.first().toStdString();
  }
  for (int i = 100; !journal->isWorking() && i < 2000; ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    library.shelf()->setNumber(i);
  }
  EXPECT_TRUE(journal->isWorking());
  library.book()->setY(11);
  const qint64 changes = journal->changes();
  journal.reset();
  expectRecoverable(library.bytes(), changes);
}

TEST_F(RecoveryTest, AFullDiskKeepsWhatWasWrittenBefore) {
  Library library;
  auto journal = openSaved(library);
  library.book()->setX(3);
  const QByteArray before = library.bytes();
  {
    const support::FileSizeLimit limit(50'000);
    library.book()->setText(QByteArray(200'000, 'y'));
    library.book()->setX(4);
    journal.reset();
  }
  expectRecoverable(before, 1);
}

TEST_F(RecoveryTest, FoldersThatCannotBeWrittenUseTheStateFolder) {
  Library library;
  library.withContents().saveTo(document.path);
  ASSERT_TRUE(QDir().mkpath(store.stateFolder()));
  ASSERT_EQ(chmod(QFile::encodeName(folder.path()).constData(), 0555), 0);
  if (geteuid() == 0) {
    ASSERT_EQ(chown(QFile::encodeName(store.stateFolder()).constData(), OrdinaryUser::nobody, 0),
              0);
  }
  {
    const OrdinaryUser user;
    auto journal = std::make_unique<RecoveryJournal>(library.context, store, document,
                                                     library.bytes(), library.host(&warnings));
    library.book()->setX(3);
    EXPECT_TRUE(journal->folder().startsWith(store.stateFolder()));
    journal.reset();
    EXPECT_EQ(store.recoverableFor(document.path).size(), 1);
    expectRecoverable(library.bytes(), 1);
    // Nowhere to write: one warning, and the editor goes on.
    const RecoveryStore nowhere(QStringLiteral("/proc/tessary"));
    RecoveryJournal without(library.context, nowhere, document, library.bytes(),
                            library.host(&warnings));
    library.book()->setX(4);
    library.book()->setX(5);
    EXPECT_FALSE(without.isWorking());
    EXPECT_EQ(warnings.size(), 1);
  }
  ASSERT_EQ(chmod(QFile::encodeName(folder.path()).constData(), 0755), 0);
}

TEST_F(RecoveryTest, FoldersThatAreRemovedMeanwhileAreMadeAgain) {
  Library library;
  auto journal = openSaved(library);
  library.book()->setX(3);
  ASSERT_TRUE(QDir(beside()).removeRecursively());
  EXPECT_FALSE(journal->sync());
  library.book()->setX(4);
  library.book()->setX(5);
  EXPECT_TRUE(journal->isWorking());
  journal.reset();
  expectRecoverable(library.bytes(), 3);
}

TEST_F(RecoveryTest, DocumentsThatOthersChangedAreToldApart) {
  Library library;
  auto journal = openSaved(library);
  library.book()->setX(3);
  Book* added = library.addBook(library.shelf(), QStringLiteral("Added"));
  journal.reset();

  Library others;
  ASSERT_TRUE(Library::read(contentsOf(storePathOf(document.path)), {}, others.context));
  others.shelf()->setNumber(42);
  others.context.remove(*others.book());
  others.saveTo(document.path);
  Library mixed;
  const auto recovered = recover(store.recoverable().value(0), mixed);
  ASSERT_TRUE(recovered);
  ASSERT_EQ(recovered->warnings.size(), 2);
  EXPECT_TRUE(recovered->warnings.first().contains(QStringLiteral("changed by somebody else")));
  EXPECT_TRUE(recovered->warnings.last().endsWith(QStringLiteral("applied: 1.")));
  EXPECT_EQ(mixed.shelf()->valueForKey(QStringLiteral("number")).toInt(), 42);
  EXPECT_TRUE(mixed.context.objectWithId(added->objectId()));
}

TEST_F(RecoveryTest, DocumentsThatAreGoneGiveWhatWasAddedOrTheCheckpoint) {
  Library library;
  auto journal = openSaved(library);
  library.book()->setX(3);
  journal.reset();
  ASSERT_TRUE(QDir(document.path).removeRecursively());
  Library nothing;
  const auto refused = recover(store.recoverable().value(0), nothing);
  ASSERT_FALSE(refused);
  EXPECT_TRUE(refused.error().detail.contains(QStringLiteral("The document itself is gone")));
  EXPECT_EQ(store.recoverable().size(), 1) << "nothing is thrown away";
  ASSERT_TRUE(store.discard(store.recoverable().value(0)));

  journal = openSaved(*std::make_unique<Library>());
  Library second;
  journal = openSaved(second);
  second.book()->setX(3);
  ASSERT_TRUE(journal->checkpoint());
  second.book()->setX(4);
  journal.reset();
  ASSERT_TRUE(QDir(document.path).removeRecursively());
  expectRecoverable(second.bytes(), 2);
}

TEST_F(RecoveryTest, DataOfAnEarlierProcessAreNotOverwritten) {
  Library first;
  auto journal = openSaved(first);
  first.book()->setX(3);
  journal.reset();
  Library second;
  ASSERT_TRUE(Library::read(contentsOf(storePathOf(document.path)), {}, second.context));
  journal = std::make_unique<RecoveryJournal>(second.context, store, document, second.bytes(),
                                              second.host(&warnings));
  second.book()->setX(77);
  EXPECT_NE(journal->folder(), beside());
  expectRecoverable(first.bytes(), 1);
  journal.reset();
  EXPECT_EQ(store.recoverable().size(), 2);
  EXPECT_EQ(store.recoverableFor(document.path).size(), 2);
}

TEST_F(RecoveryTest, DisksThatAreAwayAndEntriesOfOtherMachines) {
  Library library;
  auto journal = openSaved(library);
  library.book()->setX(3);
  journal.reset();
  // The disk comes to another machine, which knows nothing of it.
  const RecoveryStore elsewhere(folder.filePath(QStringLiteral("other state")));
  EXPECT_TRUE(elsewhere.recoverable().isEmpty());
  const QList<RecoveryEntry> found = elsewhere.recoverableFor(document.path);
  ASSERT_EQ(found.size(), 1);
  EXPECT_EQ(found.first().changes, 1);
  EXPECT_EQ(found.first().document.displayName, document.displayName);
  // The disk is taken away: what lies on it is still listed, and cannot be had.
  QTemporaryDir stick;
  DocumentName onStick{stick.filePath(QStringLiteral("Show/Title.composition")),
                       QStringLiteral("Title")};
  Library other;
  other.withContents().saveTo(onStick.path);
  journal = std::make_unique<RecoveryJournal>(other.context, store, onStick, other.bytes(),
                                              other.host(&warnings));
  other.book()->setX(3);
  journal.reset();
  ASSERT_TRUE(stick.remove());
  const QList<RecoveryEntry> entries = store.recoverable();
  ASSERT_EQ(entries.size(), 2);
  const RecoveryEntry& away = entries[entries[0].isAvailable ? 1 : 0];
  EXPECT_FALSE(away.isAvailable);
  EXPECT_EQ(away.document.path, onStick.path);
  Library nothing;
  EXPECT_FALSE(recover(away, nothing));
  ASSERT_TRUE(store.discard(away));
  EXPECT_EQ(store.recoverable().size(), 1);
}

}  // namespace

}  // namespace document
