#include "app/HelpWindow.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextBrowser>

namespace app {

namespace {

QString textOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

TEST(HelpWindow, FollowsLinksToPagesAndHeadingsAndGoesBack) {
  const QTemporaryDir folder;
  const auto write = [&](const char* name, const QByteArray& text) {
    QFile file(folder.filePath(QString::fromLatin1(name)));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  };
  write("user-guide.md", "# Guide\n\n[On](other.md#two-words)\n");
  write("other.md",
        "# Other\n\n" + QByteArray("a line\n\n").repeated(200) + "## Two words\n\nend\n");
  HelpWindow window(folder.path());
  window.show();
  Q_EMIT window.text().anchorClicked(QUrl(QStringLiteral("other.md#two-words")));
  EXPECT_EQ(window.page(), QStringLiteral("other.md"));
  EXPECT_EQ(window.text().textCursor().block().text(), QStringLiteral("Two words"));
  window.goBack();
  EXPECT_EQ(window.page(), QStringLiteral("user-guide.md"));
  EXPECT_TRUE(window.text().toPlainText().startsWith(QStringLiteral("Guide")));
  window.goBack();
  EXPECT_EQ(window.page(), QStringLiteral("user-guide.md"));
}

TEST(HelpWindow, EveryLinkOfThePagesLeadsSomewhere) {
  const QString docs = QStringLiteral(TESSARY_SOURCE_FOLDER "/docs/");
  static const QRegularExpression links(QStringLiteral("\\]\\(([^)#:]*)(#[^)]*)?\\)"));
  for (const char* page : {"user-guide.md", "operators.md", "player-developers.md"}) {
    const QString text = textOf(docs + QString::fromLatin1(page));
    ASSERT_FALSE(text.isEmpty()) << page;
    for (auto found = links.globalMatch(text); found.hasNext();) {
      const QRegularExpressionMatch link = found.next();
      const QString file =
          link.captured(1).isEmpty() ? QString::fromLatin1(page) : link.captured(1);
      EXPECT_TRUE(QFileInfo::exists(docs + file)) << page << " -> " << file.toStdString();
      if (link.captured(2).isEmpty()) continue;
      HelpWindow window(docs);
      window.showPage(file, link.captured(2).mid(1));
      EXPECT_NE(window.text().textCursor().block().blockFormat().headingLevel(), 0)
          << page << " -> " << link.captured(0).toStdString();
    }
  }
}

}  // namespace

}  // namespace app
