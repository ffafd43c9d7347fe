#include <gmock/gmock.h>

#include <QDir>
#include <QTemporaryDir>

#include "support/TessaryProgram.h"

namespace {

using testing::HasSubstr;

/// An installation in which the editor is a script that tells what it was called with, a word a
/// line.
class EditorStart : public testing::Test {
 protected:
  EditorStart() {
    QDir(folder.path()).mkpath(QStringLiteral("prefix/bin"));
    QDir(folder.path()).mkpath(QStringLiteral("wörk dir/docs"));
    QDir(folder.path()).mkpath(QStringLiteral("wörk dir/plain package"));
    QFile::copy(QStringLiteral(TESSARY_PROGRAM), program);
    write(work(QStringLiteral("plain package/data.xml")), {});
    write(work(QStringLiteral("info")), {});
  }
  static void write(const QString& path, const QByteArray& text) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    file.write(text);
  }
  void installEditor(const QString& at) {
    const QString path = folder.filePath(at);
    QDir().mkpath(QFileInfo(path).path());
    write(path, "#!/bin/sh\necho \"${QT_QPA_PLATFORM:-desktop}\"\nprintf '%s\\n' \"$@\"\n");
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  }
  [[nodiscard]] QString work(const QString& name) const {
    return folder.filePath(QStringLiteral("wörk dir/") + name);
  }
  [[nodiscard]] support::Outcome start(const QStringList& arguments) const {
    return support::run(program, arguments, work({}));
  }
  /// What the editor is told, without the platform.
  [[nodiscard]] QStringList handedOver(const QStringList& arguments) const {
    return QString::fromUtf8(start(arguments).out).split(u'\n', Qt::SkipEmptyParts).mid(1);
  }

  QTemporaryDir folder;
  QString program = folder.filePath(QStringLiteral("prefix/bin/tessary"));
};

TEST_F(EditorStart, FilesAreHandedToTheEditorWithTheirWholePaths) {
  installEditor(QStringLiteral("prefix/bin/tessary-editor"));
  const QString dashes = QStringLiteral("--");
  EXPECT_EQ(handedOver({QStringLiteral("ä b.composition"), QStringLiteral("../c.qtz")}),
            QStringList({dashes, work(QStringLiteral("ä b.composition")),
                         folder.filePath(QStringLiteral("wörk dir/../c.qtz"))}));
  EXPECT_EQ(handedOver({QStringLiteral("plain package")}),
            QStringList({dashes, work(QStringLiteral("plain package"))}));
  // Named like a command, or like an option.
  EXPECT_EQ(handedOver({QStringLiteral("./info")}),
            QStringList({dashes, work(QStringLiteral("./info"))}));
  EXPECT_EQ(handedOver({dashes, QStringLiteral("info"), QStringLiteral("--help")}),
            QStringList({dashes, work(QStringLiteral("info")), work(QStringLiteral("--help"))}));
  EXPECT_EQ(
      handedOver({QStringLiteral("./info"), QStringLiteral("--exit-when-shown")}),
      QStringList({QStringLiteral("--exit-when-shown"), dashes, work(QStringLiteral("./info"))}));
  EXPECT_TRUE(start({QStringLiteral("./info")}).out.startsWith("desktop\n"))
      << "the command line's own platform must not reach the editor";
}

TEST_F(EditorStart, MistypedCommandsAreNoFiles) {
  installEditor(QStringLiteral("prefix/bin/tessary-editor"));
  for (const auto& [word, part] : {std::pair("rendr", "did you mean render?"),
                                   {"docs", "neither a command nor a file 'docs'"}}) {
    const support::Outcome outcome = start({QString::fromLatin1(word)});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.error.toStdString(), HasSubstr(part));
  }
  EXPECT_EQ(start({}).status, 2);
}

TEST_F(EditorStart, TheEditorMayBeElsewhereOrMissing) {
  const support::Outcome missing = start({QStringLiteral("./info")});
  EXPECT_EQ(missing.status, 5);
  EXPECT_THAT(missing.error.toStdString(), HasSubstr("tessary-editor"));
  installEditor(QStringLiteral("prefix/libexec/tessary/tessary-editor"));
  EXPECT_EQ(handedOver({QStringLiteral("./info")}).size(), 2);
}

}  // namespace
