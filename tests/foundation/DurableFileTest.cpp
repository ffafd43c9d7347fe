#include "foundation/DurableFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "support/FileSizeLimit.h"

namespace foundation {

namespace {

QByteArray contentsOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
}

class DurableFileTest : public testing::Test {
 protected:
  [[nodiscard]] QString path(const QString& name) const { return folder.filePath(name); }
  [[nodiscard]] QStringList names() const {
    return QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
  }
  QTemporaryDir folder;
};

TEST_F(DurableFileTest, ReplacesContentsAndKeepsPermissions) {
  const QString name = QStringLiteral("Bauchbinde äöü \u6f22.xml");
  ASSERT_TRUE(replaceFile(path(name), QByteArray("one")));
  ASSERT_EQ(chmod(QFile::encodeName(path(name)).constData(), 0640), 0);
  ASSERT_TRUE(replaceFile(path(name), QByteArray("two")));
  EXPECT_EQ(contentsOf(path(name)), "two");
  struct stat info {};
  ASSERT_EQ(stat(QFile::encodeName(path(name)).constData(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0640U);
  ASSERT_TRUE(replaceFile(path(name), {}));
  EXPECT_EQ(contentsOf(path(name)), "");
  EXPECT_EQ(names(), QStringList{name}) << "nothing else is left in the folder";
}

TEST_F(DurableFileTest, FollowsSymbolicLinks) {
  ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("real")));
  ASSERT_TRUE(replaceFile(path(QStringLiteral("real/file")), QByteArray("old")));
  ASSERT_TRUE(QFile::link(QStringLiteral("real/file"), path(QStringLiteral("one"))));
  ASSERT_TRUE(QFile::link(QStringLiteral("one"), path(QStringLiteral("two"))));
  ASSERT_TRUE(QFile::link(QStringLiteral("real/new"), path(QStringLiteral("dangling"))));
  ASSERT_TRUE(QFile::link(QStringLiteral("loop"), path(QStringLiteral("loop"))));
  EXPECT_TRUE(replaceFile(path(QStringLiteral("two")), QByteArray("through two links")));
  EXPECT_EQ(contentsOf(path(QStringLiteral("real/file"))), "through two links");
  EXPECT_TRUE(QFileInfo(path(QStringLiteral("two"))).isSymLink());
  EXPECT_TRUE(replaceFile(path(QStringLiteral("dangling")), QByteArray("made")));
  EXPECT_EQ(contentsOf(path(QStringLiteral("real/new"))), "made");
  EXPECT_FALSE(replaceFile(path(QStringLiteral("loop")), QByteArray("x")));
}

TEST_F(DurableFileTest, FailuresNameTheFileAndTheReasonAndLeaveTheOldContents) {
  const QString file = path(QStringLiteral("file"));
  const QString large = path(QStringLiteral("large"));
  ASSERT_TRUE(replaceFile(file, QByteArray("precious")));
  ASSERT_TRUE(replaceFile(large, QByteArray(3 << 20, 'x')));
  {
    const support::FileSizeLimit limit(1 << 20);
    const auto replaced = replaceFile(file, QByteArray(2 << 20, 'x'));
    ASSERT_FALSE(replaced);
    EXPECT_EQ(replaced.error().text(),
              file + QStringLiteral(": cannot be written: File too large"));
    EXPECT_FALSE(copyFileDurably(large, file));
  }
  EXPECT_EQ(contentsOf(file), "precious");
  EXPECT_EQ(names().size(), 2) << "what was begun is removed";

  const auto noFolder = replaceFile(path(QStringLiteral("none/file")), {});
  ASSERT_FALSE(noFolder);
  EXPECT_TRUE(noFolder.error().text().contains(QStringLiteral("No such file or directory")));
  const auto isFolder = replaceFile(folder.path(), {});
  ASSERT_FALSE(isFolder);
  EXPECT_EQ(isFolder.error().message, QStringLiteral("Is a directory"));
  EXPECT_FALSE(syncFolder(path(QStringLiteral("none"))));
  EXPECT_FALSE(copyFileDurably(path(QStringLiteral("none")), file));
  EXPECT_FALSE(copyFileDurably(folder.path(), file));
  EXPECT_EQ(contentsOf(file), "precious");
}

TEST_F(DurableFileTest, CopiesWholeFiles) {
  QByteArray bytes;
  for (int i = 0; i < 700'000; ++i) bytes.append(QByteArray::number(i));
  ASSERT_TRUE(replaceFile(path(QStringLiteral("from")), bytes));
  ASSERT_TRUE(replaceFile(path(QStringLiteral("to")), QByteArray("old")));
  ASSERT_TRUE(copyFileDurably(path(QStringLiteral("from")), path(QStringLiteral("to"))));
  EXPECT_EQ(contentsOf(path(QStringLiteral("to"))), bytes);
  ASSERT_TRUE(copyFileDurably(path(QStringLiteral("to")), path(QStringLiteral("new"))));
  EXPECT_EQ(contentsOf(path(QStringLiteral("new"))), bytes);
}

}  // namespace

}  // namespace foundation
