#include <gmock/gmock.h>

#include <QStandardPaths>
#include <QTemporaryDir>

#include "cli/CommandTable.h"
#include "support/TessaryProgram.h"

namespace {

using testing::HasSubstr;

class ShellCompletion : public testing::Test {
 protected:
  /// The file of a shell's completion.
  [[nodiscard]] QString scriptFor(const QString& shell) const {
    const QString path = folder.filePath(shell);
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(support::tessary({QStringLiteral("completion"), shell}).out);
    return path;
  }
  /// What bash offers for the last word.
  [[nodiscard]] QStringList offered(const QString& words) const {
    const QString call = QStringLiteral(
                             "source '%1'; COMP_WORDS=(%2); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); "
                             "_tessary 2>/dev/null; printf '%s\\n' \"${COMPREPLY[@]}\"")
                             .arg(scriptFor(QStringLiteral("bash")), words);
    const support::Outcome outcome =
        support::run(QStringLiteral("bash"), {QStringLiteral("-c"), call}, folder.path());
    EXPECT_EQ(outcome.error, QString());
    return QString::fromUtf8(outcome.out).split(u'\n', Qt::SkipEmptyParts);
  }

  QTemporaryDir folder;
};

TEST_F(ShellCompletion, BashOffersCommandsOptionsValuesAndFiles) {
  QDir(folder.path()).mkpath(QStringLiteral("ä b.composition"));
  EXPECT_THAT(offered(QStringLiteral("tessary ren")),
              testing::ElementsAre(QStringLiteral("render")));
  EXPECT_THAT(offered(QStringLiteral("tessary render --al")),
              testing::ElementsAre(QStringLiteral("--alpha")));
  EXPECT_THAT(offered(QStringLiteral("tessary render --codec h")),
              testing::ElementsAre(QStringLiteral("h264")));
  EXPECT_THAT(offered(QStringLiteral("tessary check ''")),
              testing::Contains(QStringLiteral("ä b.composition")));
  for (const QString& name : cli::CommandTable::names())
    EXPECT_THAT(offered(QStringLiteral("tessary ''")), testing::Contains(name));
}

TEST_F(ShellCompletion, ShellsThatAreHereReadTheirScripts) {
  for (const char* shell : {"bash", "zsh", "fish"}) {
    if (QStandardPaths::findExecutable(QString::fromLatin1(shell)).isEmpty()) continue;
    const support::Outcome read = support::run(
        QString::fromLatin1(shell), {QStringLiteral("-n"), scriptFor(QString::fromLatin1(shell))});
    EXPECT_EQ(read.status, 0) << shell << read.error.toStdString();
  }
  EXPECT_EQ(support::tessary({QStringLiteral("completion"), QStringLiteral("tcsh")}).status, 2);
}

TEST(ManualPage, HasEveryCommandAndIsTroffWithoutMistakes) {
  const QByteArray page = support::tessary({QStringLiteral("manual")}).out;
  for (const QString& name : cli::CommandTable::names())
    EXPECT_THAT(page.toStdString(), HasSubstr(".SS " + name.toStdString() + "\n"));
  for (const QByteArray& line : page.split('\n'))
    EXPECT_FALSE(line.startsWith('\'')) << line.toStdString();
  if (QStandardPaths::findExecutable(QStringLiteral("groff")).isEmpty()) return;
  const support::Outcome set =
      support::run(QStringLiteral("groff"),
                   {QStringLiteral("-k"), QStringLiteral("-man"), QStringLiteral("-Tutf8"),
                    QStringLiteral("-ww"), QStringLiteral("-z")},
                   {}, {}, QString::fromUtf8(page));
  EXPECT_EQ(set.error, QString());
}

}  // namespace
