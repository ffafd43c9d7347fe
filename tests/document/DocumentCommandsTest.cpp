#include "document/DocumentCommands.h"

#include <gmock/gmock.h>

#include <QImage>

#include "DocumentFixture.h"
#include "document/DocumentClipboard.h"
#include "model/ComponentClipboard.h"

namespace document {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class DocumentCommandsTest : public DocumentFixture {
 protected:
  [[nodiscard]] double time() const { return document.composition()->editorTimepoint(); }
  [[nodiscard]] QString undoName() const { return document.context().history().undoText(); }

  DocumentCommands commands{document};
  DocumentClipboard clipboard{document};
};

}  // namespace

TEST_F(DocumentCommandsTest, MovesThroughFramesWithinTheComposition) {
  commands.jumpToEnd();
  EXPECT_EQ(time(), 5);
  commands.jumpToNextFrame();
  EXPECT_EQ(time(), 5);
  commands.jumpToPreviousFrame();
  EXPECT_NEAR(time(), 4.96, 1e-6);
  commands.jumpToBeginning();
  EXPECT_EQ(time(), 0);
  commands.jumpToPreviousFrame();
  EXPECT_EQ(time(), 0);
  commands.jumpToNextFrame();
  EXPECT_NEAR(time(), 0.04, 1e-6);
  commands.play();
  EXPECT_TRUE(document.composition()->playMode());
  commands.jumpToBeginning();
  EXPECT_TRUE(document.composition()->playMode()) << "it plays on, from the beginning";
  document.prepareToClose();
  EXPECT_FALSE(document.composition()->playMode());
}

TEST_F(DocumentCommandsTest, MovesThroughTheKeyFramesOfTheSelection) {
  model::QuartzComponent* first = addText(QStringLiteral("One"));
  model::QuartzComponent* second = addText(QStringLiteral("Two"));
  const auto animate = [&](model::QuartzComponent* component, const QString& key,
                           const QList<double>& times) {
    model::Attribute* attribute = component->attributeForKey(key);
    attribute->setAnimateable(true);
    for (const double at : times) attribute->addTimepoint(at, 10.0 * at);
  };
  animate(first, QStringLiteral("originX"), {1, 3});
  animate(second, QStringLiteral("originY"), {2});
  const auto next = [&] {
    commands.jumpToNextKeyframe();
    return time();
  };
  const auto previous = [&] {
    commands.jumpToPreviousKeyframe();
    return time();
  };
  document.composition()->setEditorTimepoint(0);
  EXPECT_EQ(next(), 2) << "only the second is selected";
  EXPECT_EQ(next(), 2) << "nothing after";
  document.composition()->selectAllComponents();
  EXPECT_EQ(next(), 3);
  EXPECT_EQ(previous(), 2);
  EXPECT_EQ(previous(), 1);
  EXPECT_EQ(previous(), 0);
}

TEST_F(DocumentCommandsTest, SteppingStandsStillAndFieldsFollow) {
  model::QuartzComponent* component = addText(QStringLiteral("One"));
  component->attributeForKey(QStringLiteral("opacity"))->addTimepoint(1, 0.5);
  int announced = 0;
  const auto field =
      component->observe(QStringLiteral("opacity"), [&](const store::Change&) { ++announced; });
  commands.jumpToNextFrame();
  EXPECT_EQ(announced, 1);
  document.composition()->addStopFrame(2);
  commands.play();
  commands.jumpToNextStopFrame();
  EXPECT_EQ(time(), 2);
  EXPECT_TRUE(document.composition()->playMode());
  EXPECT_EQ(announced, 1) << "not while it plays";
  commands.jumpToPreviousFrame();
  EXPECT_FALSE(document.composition()->playMode());
  EXPECT_NEAR(time(), 1.96, 1e-6);
  commands.jumpToPreviousStopFrame();
  EXPECT_NEAR(time(), 1.96, 1e-6) << "there is none";
}

TEST_F(DocumentCommandsTest, StopFramesAndPosterFrameAreUndoneByName) {
  document.composition()->setEditorTimepoint(1);
  commands.addStopFrame();
  commands.addStopFrame();
  EXPECT_THAT(document.composition()->stopFrameTimepoints(), ElementsAre(1));
  commands.toggleStopframe();
  EXPECT_TRUE(document.composition()->stopFrameTimepoints().isEmpty());
  EXPECT_EQ(undoName(), QStringLiteral("Remove Stop Frame"));
  document.context().undo();
  EXPECT_THAT(document.composition()->stopFrameTimepoints(), ElementsAre(1));
  commands.togglePosterframe();
  commands.togglePosterframe();
  EXPECT_EQ(document.composition()->posterFrameTimepoint(), 1);
  EXPECT_EQ(undoName(), QStringLiteral("Set Poster Frame"));
  document.context().undo();
  EXPECT_LT(document.composition()->posterFrameTimepoint(), 0);
}

TEST_F(DocumentCommandsTest, ComponentsTravelThroughTheClipboardInTheirOrder) {
  EXPECT_FALSE(clipboard.canCopy());
  EXPECT_FALSE(clipboard.copy());
  addText(QStringLiteral("One"))->setTitle(QStringLiteral("One"));
  addText(QStringLiteral("Two"))->setTitle(QStringLiteral("Two"));
  document.composition()->selectAllComponents();
  const auto cut = clipboard.cut();
  ASSERT_TRUE(cut);
  EXPECT_EQ(undoName(), QStringLiteral("Cut"));
  EXPECT_EQ(document.composition()->components().size(), 0);
  EXPECT_TRUE(DocumentClipboard::pasteboardIsValid(*cut));

  QStringList warnings;
  CompositionDocument other;
  other.emptyDocumentWithResolution(document.composition()->videoResolution());
  ASSERT_TRUE(DocumentClipboard(other).paste(*cut, warnings));
  QStringList titles;
  for (const auto* component : other.composition()->componentsSortedByZLevel())
    titles.append(component->title());
  EXPECT_EQ(titles, QStringList({QStringLiteral("One"), QStringLiteral("Two")}));
  EXPECT_EQ(other.composition()->selectedComponents().size(), 2);
  EXPECT_EQ(other.context().history().undoText(), QStringLiteral("Paste"));
  other.context().undo();
  EXPECT_EQ(other.composition()->components().size(), 0);
  EXPECT_TRUE(warnings.isEmpty());
}

TEST_F(DocumentCommandsTest, DuplicatingIsOneStep) {
  QStringList warnings;
  EXPECT_TRUE(commands.duplicateSelection({20, -20}, warnings));
  EXPECT_EQ(undoName(), QString()) << "nothing was selected";
  auto* original = addText(QStringLiteral("One"));
  const QPointF place(original->originX(), original->originY());
  document.composition()->selectAllComponents();
  ASSERT_TRUE(commands.duplicateSelection({20, -20}, warnings));
  EXPECT_EQ(undoName(), QStringLiteral("Duplicate"));
  ASSERT_EQ(document.composition()->selectedComponents().size(), 1);
  const auto* copy = document.composition()->selectedComponents().front();
  EXPECT_NE(copy, original);
  EXPECT_EQ(QPointF(copy->originX(), copy->originY()), place + QPointF(20, -20));
  document.context().undo();
  EXPECT_EQ(document.composition()->components().size(), 1);
  EXPECT_EQ(QPointF(original->originX(), original->originY()), place);
}

TEST_F(DocumentCommandsTest, ImagesAndTextsBecomeComponents) {
  QStringList warnings;
  QMimeData image;
  QImage picture(40, 20, QImage::Format_ARGB32);
  picture.fill(Qt::red);
  image.setImageData(picture);
  image.setText(QStringLiteral("an image comes first"));
  ASSERT_TRUE(clipboard.paste(image, warnings));
  QMimeData text;
  text.setText(QStringLiteral("Harbour"));
  ASSERT_TRUE(clipboard.paste(text, warnings));
  const auto components = document.composition()->componentsSortedByZLevel();
  ASSERT_EQ(components.size(), 2);
  EXPECT_EQ(
      components[0]->attributeForKey(QStringLiteral("Image"))->currentValue().toImage().size(),
      picture.size());
  EXPECT_EQ(components[1]->attributeForKey(QStringLiteral("Text"))->currentValue().toString(),
            QStringLiteral("Harbour"));

  QMimeData nothing;
  nothing.setData(QStringLiteral("text/rtf"), "{\\rtf1 x}");
  EXPECT_FALSE(DocumentClipboard::pasteboardIsValid(nothing));
  QMimeData broken;
  broken.setData(model::ComponentClipboard::type(), "no archive");
  EXPECT_FALSE(clipboard.paste(broken, warnings));
  EXPECT_EQ(document.composition()->components().size(), 2);
}

TEST_F(DocumentCommandsTest, EmbeddingCopiesFilesIntoThePackage) {
  EXPECT_EQ(commands.embedResources().title, QStringLiteral("Save Document"));
  EXPECT_EQ(commands.makePathsRelative().title, QStringLiteral("Save Document"));
  QImage picture(40, 20, QImage::Format_RGB32);
  picture.fill(Qt::red);
  ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("pictures")));
  const QString file = path(QStringLiteral("pictures/photo.png"));
  ASSERT_TRUE(picture.save(file));
  QStringList warnings;
  auto* component = document.composition()->addComponenWithQuartzCompositionFile(
      *document.standardComponents().pathOf(QStringLiteral("ImageComponent")),
      {{QStringLiteral("File_Path"), file}}, warnings);
  saveAs(QStringLiteral("a.composition"));
  const auto pathNow = [&] {
    return component->attributeForKey(QStringLiteral("File_Path"))->currentValue().toString();
  };
  const model::CommandReport relative = commands.makePathsRelative();
  EXPECT_THAT(relative.text.toStdString(), HasSubstr(file.toStdString()));
  EXPECT_EQ(pathNow(), QStringLiteral("../pictures/photo.png"));

  const model::CommandReport report = commands.embedResources();
  EXPECT_THAT(report.text.toStdString(), HasSubstr("photo.png"));
  EXPECT_EQ(pathNow(), QStringLiteral("photo.png"));
  EXPECT_EQ(contents(path(QStringLiteral("a.composition/photo.png"))), contents(file));
  EXPECT_FALSE(document.isDocumentEdited()) << "it was saved at once";
  EXPECT_EQ(commands.embedResources().text,
            QStringLiteral("No resources were embedded in this composition."));
}

}  // namespace document
