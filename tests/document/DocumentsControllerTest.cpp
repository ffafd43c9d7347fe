#include "document/CompositionDocumentsController.h"

#include <gmock/gmock.h>

#include "DocumentFixture.h"
#include "document/ApplicationDefaults.h"
#include "document/NewDocumentMenu.h"
#include "foundation/archive/KeyedArchive.h"

namespace document {

namespace {

using testing::ElementsAre;

class DocumentsControllerTest : public DocumentFixture {
 protected:
  DocumentsControllerTest() {
    registerApplicationDefaults(defaults);
    controller.setHooks({.showWindows = [this](auto& shown) { windows.append(&shown); },
                         .willClose = {},
                         .runSlideshow = [this](const auto& list) { slideshow = list; },
                         .warn = {}});
  }

  foundation::UserDefaults defaults{folder.filePath(QStringLiteral("defaults.conf"))};
  CompositionDocumentsController controller{
      defaults, model::StandardComponents::located(),
      RecoveryStore(folder.filePath(QStringLiteral("state")))};
  QList<CompositionDocument*> windows;
  QList<CompositionDocument*> slideshow;
};

}  // namespace

TEST_F(DocumentsControllerTest, NewDocumentsTakeTheChosenFormatOnce) {
  EXPECT_EQ(controller.newDocument().composition()->broadcastMode(),
            QStringLiteral("1080i25 RGBA"));
  EXPECT_EQ(controller.newDocument(QStringLiteral("HD 720p50")).composition()->width(), 1280);
  EXPECT_EQ(controller.openUntitledDocumentAndDisplay().composition()->width(), 1920);
  EXPECT_EQ(windows, controller.documents());
  controller.runSlideshow();
  EXPECT_EQ(slideshow, controller.documents());

  defaults.setValue(QStringLiteral("no such format"), QStringLiteral("defaultDocumentMode"));
  EXPECT_FALSE(controller.newDocument().composition()) << "a plain document";
  EXPECT_EQ(NewDocumentMenu().indexOf(QStringLiteral("no such format")), -1);
}

TEST_F(DocumentsControllerTest, ADocumentIsOpenOnce) {
  saveAs(QStringLiteral("a.composition"));
  const auto opened = controller.openDocument(path(QStringLiteral("a.composition/data.xml")));
  ASSERT_TRUE(opened);
  EXPECT_EQ(*controller.openDocument(path(QStringLiteral("a.composition"))), *opened);
  EXPECT_EQ(controller.documents().size(), 1);
  EXPECT_THAT(windows, ElementsAre(*opened, *opened));
  EXPECT_FALSE(controller.openDocument(path(QStringLiteral("b.composition"))));

  EXPECT_TRUE(controller.unsavedDocuments().isEmpty());
  (*opened)->composition()->setDuration(7);
  EXPECT_THAT(controller.unsavedDocuments(), ElementsAre(*opened));
  controller.closeDocument(**opened);
  EXPECT_TRUE(controller.documents().isEmpty());
}

TEST_F(DocumentsControllerTest, DefaultsAreThereWhereTheUserSetNothing) {
  const auto text = [&](const char16_t* key) {
    return defaults.value(QString::fromUtf16(key)).toString();
  };
  EXPECT_EQ(text(u"componentsLibraryPath"), text(u"imagesLibraryPath"));
  EXPECT_EQ(text(u"compositionsLibraryPath"), text(u"imagesLibraryPath"));
  EXPECT_NE(text(u"movieLibraryPath"), text(u"imagesLibraryPath"));
  EXPECT_EQ(defaults.value(QStringLiteral("defaultFontSize")).toInt(), 30);
  const auto color = foundation::KeyedArchive::read(
      defaults.value(QStringLiteral("defaultCompositionBackgroundColorData")).toByteArray());
  ASSERT_TRUE(color);
  EXPECT_EQ(*color->as<foundation::Color>(), foundation::Color::white());
}

TEST(NewDocumentMenu, SeparatesGroupsAndLeavesOutOtherPixelFormats) {
  using model::VideoMode;
  const auto mode = [](const char16_t* name, const char16_t* group,
                       quint32 pixels = VideoMode::rgba, qint64 scan = 0) {
    VideoMode made;
    made.name = QString::fromUtf16(name);
    made.group = QString::fromUtf16(group);
    made.pixelFormat = pixels;
    made.scan = scan;
    return made;
  };
  const NewDocumentMenu menu(model::VideoModes({
      mode(u"skipped", u"A", 0x79757632),
      mode(u"a1", u"A"),
      mode(u"a2", u"A", VideoMode::rgba, 1),
      mode(u"b segmented", u"B", VideoMode::rgba, 2),
      mode(u"c1", u"C"),
  }));
  QStringList titles;
  for (const auto& item : menu.items()) titles.append(item.title);
  EXPECT_EQ(titles, QStringList({QStringLiteral("a1"), QStringLiteral("a2"), QString(),
                                 QStringLiteral("c1")}));
  EXPECT_EQ(menu.indexOf(QStringLiteral("c1")), 3);
  EXPECT_EQ(menu.indexOf({}), -1);
}

}  // namespace document
