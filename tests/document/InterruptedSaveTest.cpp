#include <QProcess>

#include "DocumentFixture.h"

namespace document {

namespace {

constexpr double before = 5;
constexpr double after = 9;

/// Runs a program that saves and interrupts it at each of its calls that touch the disk.
class InterruptedSaveTest : public DocumentFixture,
                            public testing::WithParamInterface<const char*> {
 protected:
  struct Save {
    const char* operation;
    QString target;  ///< names in the folder
    bool targetIsThere;
  };
  struct Outcome {
    bool killed;
    int status;
  };

  void SetUp() override {
#ifdef TESSARY_SANITIZED
    GTEST_SKIP() << "nothing can be preloaded";
#endif
    QStringList warnings;
    document.emptyDocumentWithResolution(model::VideoResolution(QStringLiteral("SD PAL")));
    document.composition()->addComponenWithQuartzCompositionFile(
        *document.standardComponents().pathOf(QStringLiteral("Rectangle")), {}, warnings);
    saveAs(QStringLiteral("template.composition"));
    write(path(QStringLiteral("template.composition/photo.png")), "picture");
  }
  /// The folder as it is before each save.
  void prepare(const Save& save) {
    m_work = std::make_unique<QTemporaryDir>();
    copy(QStringLiteral("source.composition"));
    if (save.targetIsThere && save.target != QLatin1String("source.composition")) copy(save.target);
  }
  void copy(const QString& name) {
    const QString to = m_work->filePath(name);
    ASSERT_TRUE(QDir().mkpath(to + QStringLiteral("/QuickLook")));
    for (const char* file : {"data.xml", "photo.png", "Composition.qtz"})
      ASSERT_TRUE(QFile::copy(path(QStringLiteral("template.composition/") + QLatin1String(file)),
                              to + u'/' + QLatin1String(file)));
  }
  Outcome run(const Save& save, int at, const char* how) {
    QProcess probe;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(TESSARY_FAULT_SHIM));
    environment.insert(QStringLiteral("FAULT_FOLDER"), m_work->path());
    environment.insert(QStringLiteral("FAULT_AT"), QString::number(at));
    environment.insert(QStringLiteral("FAULT_HOW"), QString::fromLatin1(how));
    environment.insert(QStringLiteral("FAULT_COUNT"), path(QStringLiteral("count")));
    probe.setProcessEnvironment(environment);
    probe.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    probe.start(
        QStringLiteral(TESSARY_SAVE_PROBE),
        {QString::fromLatin1(save.operation),
         m_work->filePath(QStringLiteral("source.composition")), m_work->filePath(save.target)});
    EXPECT_TRUE(probe.waitForFinished(30'000));
    return {probe.exitStatus() == QProcess::CrashExit, probe.exitCode()};
  }
  /// -1 when there is nothing at all; fails the test for a package that does not open whole.
  [[nodiscard]] double durationOf(const QString& name) const {
    const QString package = m_work->filePath(name);
    if (!QFile::exists(package)) return -1;
    CompositionDocument opened;
    const auto read = opened.readFromURL(QUrl::fromLocalFile(package));
    EXPECT_TRUE(read) << read.error().text().toStdString();
    if (!read || !opened.composition()) return -2;
    EXPECT_EQ(opened.composition()->components().size(), 1);
    EXPECT_EQ(contents(package + QStringLiteral("/photo.png")), "picture");
    return opened.composition()->duration();
  }
  void check(const Save& save, const Outcome& outcome) const {
    const double found = durationOf(save.target);
    const double old = save.targetIsThere ? before : -1;
    EXPECT_TRUE(found == old || found == after) << "found " << found;
    const bool saidSaved = !outcome.killed && outcome.status == 0;
    EXPECT_TRUE(!saidSaved || found == after) << "it said that it saved";
    if (save.target == QLatin1String("source.composition")) return;
    EXPECT_EQ(durationOf(QStringLiteral("source.composition")), before);
    const auto entries =
        QDir(m_work->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    // Only what could not be removed may stay behind.
    const bool canRemove = GetParam() != std::string("EIO");
    EXPECT_TRUE(!saidSaved || !canRemove || entries.size() == 2)
        << entries.join(u' ').toStdString();
  }
  void interruptEverywhere(const Save& save) {
    prepare(save);
    ASSERT_EQ(run(save, 0, "").status, 0);
    const int calls = contents(path(QStringLiteral("count"))).toInt();
    ASSERT_GT(calls, 10) << "the calls are seen";
    check(save, {false, 0});
    for (int at = 1; at <= calls; ++at) {
      SCOPED_TRACE(testing::Message() << save.operation << " to " << save.target.toStdString()
                                      << ", call " << at << " of " << calls << ", " << GetParam());
      prepare(save);
      check(save, run(save, at, GetParam()));
      if (HasFailure()) break;
    }
  }

 private:
  std::unique_ptr<QTemporaryDir> m_work;
};

}  // namespace

TEST_P(InterruptedSaveTest, LeavesTheOldOrTheNewDocument) {
  interruptEverywhere({"save", QStringLiteral("source.composition"), true});
  if (GetParam() == std::string("torn")) return;  // all ways write alike
  interruptEverywhere({"save-as", QStringLiteral("new.composition"), false});
  interruptEverywhere({"save-as", QStringLiteral("other.composition"), true});
}

INSTANTIATE_TEST_SUITE_P(Ways, InterruptedSaveTest,
                         testing::Values("EIO", "ENOSPC", "kill", "torn"),
                         [](const auto& info) { return std::string(info.param); });

}  // namespace document
