#include "document/DocumentSession.h"

#include <gmock/gmock.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "DocumentFixture.h"
#include "document/ApplicationDefaults.h"
#include "document/CompositionDocumentsController.h"
#include "support/LogGuard.h"

namespace document {

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class DocumentSessionTest : public DocumentFixture {
 protected:
  DocumentSessionTest() { registerApplicationDefaults(defaults); }
  [[nodiscard]] RecoveryStore store() const { return RecoveryStore(path(QStringLiteral("state"))); }
  [[nodiscard]] std::unique_ptr<CompositionDocumentsController> program() {
    return std::make_unique<CompositionDocumentsController>(
        defaults, model::StandardComponents::located(), store());
  }
  /// Works in another process that is killed then, the controller with its documents being open.
  template <typename Work>
  void inKilledProcess(Work work) {
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      const auto controller = program();
      work(*controller);
      ::kill(::getpid(), SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << "it ended by itself";
  }
  [[nodiscard]] QStringList hiddenFiles() const {
    return QDir(folder.path())
        .entryList({QStringLiteral(".*")}, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
  }

  foundation::UserDefaults defaults{folder.filePath(QStringLiteral("defaults.conf"))};
};

}  // namespace

TEST_F(DocumentSessionTest, KilledProgramsLeaveTheirChangesBehind) {
  saveAs(QStringLiteral("a.composition"));
  inKilledProcess([&](CompositionDocumentsController& controller) {
    auto opened = controller.openDocument(path(QStringLiteral("a.composition")));
    (*opened)->composition()->setDuration(7);
    (*opened)->composition()->addStopFrame(2);
    CompositionDocument& untitled = controller.newDocument(QStringLiteral("HD 720p50"));
    untitled.composition()->setDuration(3);
  });
  const auto controller = program();
  const auto entries = controller->recoverable();
  ASSERT_THAT(entries, SizeIs(2));
  QStringList warnings;
  for (const RecoveryEntry& entry : entries) {
    const auto recovered = controller->recoverDocument(entry, warnings);
    ASSERT_TRUE(recovered) << recovered.error().text().toStdString();
    CompositionDocument& document = **recovered;
    ASSERT_TRUE(document.composition());
    EXPECT_TRUE(document.isDocumentEdited());
    if (document.fileURL().isEmpty()) {
      EXPECT_EQ(document.composition()->duration(), 3);
      EXPECT_EQ(document.composition()->width(), 1280);
    } else {
      EXPECT_EQ(document.composition()->duration(), 7);
      EXPECT_THAT(document.composition()->stopFrameTimepoints(), testing::ElementsAre(2));
      EXPECT_TRUE(document.saveToURL(document.fileURL(), SaveOperation::Save));
    }
  }
  EXPECT_THAT(warnings, IsEmpty());
  for (CompositionDocument* open : controller->documents()) controller->closeDocument(*open);
  EXPECT_THAT(controller->recoverable(), IsEmpty());
  EXPECT_THAT(hiddenFiles(), IsEmpty());
}

TEST_F(DocumentSessionTest, ChangesFindADocumentThatWasRenamed) {
  saveAs(QStringLiteral("a.composition"));
  saveAs(QStringLiteral("other.composition"));
  addText(QStringLiteral("Harbour"));
  ASSERT_TRUE(document.saveToURL(document.fileURL(), SaveOperation::Save));
  inKilledProcess([&](CompositionDocumentsController& controller) {
    auto opened = controller.openDocument(path(QStringLiteral("a.composition")));
    (*opened)->composition()->setDuration(7);
    QDir(folder.path()).rename(QStringLiteral("a.composition"), QStringLiteral("b.composition"));
  });
  const auto recoverIn = [&](CompositionDocumentsController& controller, QStringList& warnings) {
    return controller.recoverDocument(controller.recoverable().value(0), warnings);
  };
  inKilledProcess([&](CompositionDocumentsController& controller) {
    QStringList warnings;
    if (const auto again = recoverIn(controller, warnings))
      (*again)->composition()->addStopFrame(2);
  });
  const auto controller = program();
  QStringList warnings;
  const auto last = recoverIn(*controller, warnings);
  ASSERT_TRUE(last) << last.error().text().toStdString();
  EXPECT_THAT(warnings, IsEmpty());
  EXPECT_EQ((*last)->displayName(), QStringLiteral("b"));
  EXPECT_EQ((*last)->composition()->duration(), 7);
  EXPECT_THAT((*last)->composition()->stopFrameTimepoints(), testing::ElementsAre(2));
  EXPECT_FALSE(program()->openDocument(path(QStringLiteral("b.composition")))) << "it is held";
  EXPECT_TRUE((*last)->saveToURL((*last)->fileURL(), SaveOperation::Save));
  EXPECT_THAT(program()->recoverable(), IsEmpty());
}

TEST_F(DocumentSessionTest, ALinkDoesNotOpenADocumentASecondTime) {
  ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("shared")));
  saveAs(QStringLiteral("shared/a.composition"));
  const QString link = path(QStringLiteral("link.composition"));
  ASSERT_TRUE(QFile::link(path(QStringLiteral("shared/a.composition")), link));
  const auto controller = program();
  const auto opened = controller->openDocument(path(QStringLiteral("shared/a.composition")));
  ASSERT_TRUE(opened);
  EXPECT_FALSE(program()->openDocument(link));
  const auto again = controller->openDocument(link);
  ASSERT_TRUE(again);
  EXPECT_EQ(*again, *opened);
}

TEST_F(DocumentSessionTest, WhatIsRecoveredAndKilledAgainIsNotLost) {
  inKilledProcess([&](CompositionDocumentsController& controller) {
    controller.newDocument().composition()->setDuration(3);
  });
  inKilledProcess([&](CompositionDocumentsController& controller) {
    QStringList warnings;
    const auto again = controller.recoverDocument(controller.recoverable().first(), warnings);
    (*again)->composition()->addStopFrame(1);
    static_cast<void>(
        (*again)->saveToURL(url(QStringLiteral("late.composition")), SaveOperation::SaveAs));
    (*again)->composition()->setDuration(8);
    controller.autosave();
    (*again)->composition()->addStopFrame(2);
  });
  const auto controller = program();
  ASSERT_THAT(controller->recoverable(), SizeIs(1));
  QStringList warnings;
  const auto last = controller->recoverDocument(controller->recoverable().first(), warnings);
  ASSERT_TRUE(last);
  EXPECT_EQ((*last)->displayName(), QStringLiteral("late"));
  EXPECT_EQ((*last)->composition()->duration(), 8);
  EXPECT_THAT((*last)->composition()->stopFrameTimepoints(), testing::ElementsAre(1, 2));
}

TEST_F(DocumentSessionTest, ADocumentIsEditedByOneProgram) {
  saveAs(QStringLiteral("a.composition"));
  const QString package = path(QStringLiteral("a.composition"));
  const auto first = program();
  const auto second = program();
  ASSERT_TRUE(first->openDocument(package));
  const auto refused = second->openDocument(package);
  ASSERT_FALSE(refused);
  EXPECT_TRUE(refused.error().isTaken);
  EXPECT_THAT(refused.error().text().toStdString(), HasSubstr("is being edited by"));
  EXPECT_FALSE(second->openDocument(path(QStringLiteral("none.composition"))).error().isTaken);

  using WhenTaken = CompositionDocumentsController::WhenTaken;
  const auto onlyLooking = second->openDocument(package, WhenTaken::LookAt);
  ASSERT_TRUE(onlyLooking);
  (*onlyLooking)->composition()->setDuration(9);
  support::LogGuard::expectMessage(QStringLiteral("Could not write document"));
  const auto saved = (*onlyLooking)->saveToURL((*onlyLooking)->fileURL(), SaveOperation::Save);
  ASSERT_FALSE(saved);
  EXPECT_THAT(saved.error().text().toStdString(), HasSubstr("is being edited by"));
  EXPECT_TRUE(
      (*onlyLooking)->saveToURL(url(QStringLiteral("b.composition")), SaveOperation::SaveAs));
  EXPECT_FALSE(program()->openDocument(path(QStringLiteral("b.composition"))))
      << "now it is theirs";

  first->closeDocument(*first->documents().first());
  EXPECT_TRUE(program()->openDocument(package));
}

TEST_F(DocumentSessionTest, AfterSavingAndClosingNothingIsLeft) {
  const auto controller = program();
  CompositionDocument& document = controller->newDocument();
  document.composition()->setDuration(3);
  ASSERT_TRUE(document.saveToURL(url(QStringLiteral("a.composition")), SaveOperation::SaveAs));
  EXPECT_EQ(hiddenFiles(), QStringList{QStringLiteral(".a.composition.lock")});
  document.composition()->setDuration(4);
  EXPECT_TRUE(hiddenFiles().contains(QStringLiteral(".a.composition.recovery")));
  ASSERT_TRUE(document.revertToContentsOfURL(document.fileURL()));
  EXPECT_FALSE(hiddenFiles().contains(QStringLiteral(".a.composition.recovery")));
  document.composition()->setDuration(4);
  controller->closeDocument(document);
  EXPECT_THAT(hiddenFiles(), IsEmpty());
  EXPECT_THAT(program()->recoverable(), IsEmpty());
}

}  // namespace document
