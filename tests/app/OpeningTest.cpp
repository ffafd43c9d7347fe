#include <gmock/gmock.h>

#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QRegularExpression>

#include "RunningEditor.h"
#include "app/EditorOptions.h"
#include "model/Composition.h"
#include "runtime/CompositionRenderer.h"
#include "widgets/TYAlert.h"

namespace app {

namespace {

using testing::HasSubstr;
using testing::SizeIs;

/// An editor that is started with files.
class OpeningTest : public RunningEditor {
 protected:
  /// All texts of the alert in the window.
  [[nodiscard]] std::string alert() const {
    QStringList texts;
    for (const auto* sheet : window().findChildren<widgets::TYAlert*>())
      for (const auto* label : sheet->findChildren<QLabel*>()) texts.append(label->text());
    return texts.join(u'\n').toStdString();
  }
  void write(const char* name, const QByteArray& bytes) const {
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
};

TEST_F(OpeningTest, WhatCannotBeOpenedIsToldAndAnEmptyDocumentIsThere) {
  ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("broken.composition")));
  write("broken.composition/data.xml", "<nothing");
  write("cut.png", QByteArray("\x89PNG\r\n\x1a\n and no more", 20));
  write("bad.qtz", "bplist00 and no more");
  start({path("missing.composition"), path("broken.composition")});
  EXPECT_EQ(alert(), "2 documents could not be opened");
  const char* const names[] = {"missing.composition", "broken.composition", "cut.png", "bad.qtz"};
  for (const char* name : names) {
    start({path(name)});
    ASSERT_THAT(delegate->controller().documents(), SizeIs(1)) << name;
    EXPECT_FALSE(window().isWindowModified());
    EXPECT_THAT(alert(), HasSubstr(name));
  }
}

TEST_F(OpeningTest, PicturesAndCompositionFilesBecomeComponentsOfOneDocument) {
  ASSERT_TRUE(QImage(32, 16, QImage::Format_RGB32).save(path("ä b.png")));
  const QString component =
      *model::StandardComponents::located().pathOf(QStringLiteral("Rectangle"));
  start({path("ä b.png"), component});
  ASSERT_THAT(delegate->controller().documents(), SizeIs(1));
  ASSERT_THAT(window().composition()->componentArray(), SizeIs(2));
  EXPECT_TRUE(window().isWindowModified());
  // The picture is fitted into the frame that it got, not into that of an empty component.
  const model::QuartzComponent* image = window().composition()->componentArray().first();
  EXPECT_EQ(image->drawingFrame().size(), QSizeF(32, 16));
  EXPECT_EQ(image->renderer()->valueForInputKey(QStringLiteral("inputWidth")).toNumber(), 32);
  EXPECT_EQ(image->renderer()->valueForInputKey(QStringLiteral("inputHeight")).toNumber(), 16);
  EXPECT_EQ(alert(), "");
  // The next one belongs to a document of its own.
  delegate->openDocuments({path("ä b.png")});
  EXPECT_THAT(delegate->controller().documents(), SizeIs(2));
}

TEST_F(OpeningTest, AMinimisedWindowComesBack) {
  start({});
  window().showMinimized();
  delegate->openDocuments({});
  EXPECT_FALSE(window().isMinimized());
}

/// The options that a text names.
QStringList optionsIn(QString text) {
  static const QRegularExpression option(QStringLiteral("(?<![\\w-])--[a-z][a-z-]+"));
  QStringList names;
  auto found = option.globalMatch(text.remove(u'\\'));
  while (found.hasNext()) names.append(found.next().captured());
  names.removeDuplicates();
  names.sort();
  return names;
}

TEST(EditorOptions, AreThoseOfTheHelpAndOfTheManualPage) {
  QFile page(QStringLiteral(TESSARY_SOURCE_DIR "/resources/desktop/tessary-editor.1.in"));
  ASSERT_TRUE(page.open(QIODevice::ReadOnly));
  const QStringList told = optionsIn(EditorOptions::help());
  EXPECT_EQ(optionsIn(QString::fromUtf8(page.readAll())), told);
  EXPECT_EQ(EditorOptions::read(told).error, QString());
  EXPECT_THAT(EditorOptions::read({QStringLiteral("--loud")}).error.toStdString(),
              HasSubstr("--loud"));
  EXPECT_EQ(EditorOptions::read({QStringLiteral("--"), QStringLiteral("--help")}).paths,
            QStringList{QStringLiteral("--help")});
}

}  // namespace

}  // namespace app
