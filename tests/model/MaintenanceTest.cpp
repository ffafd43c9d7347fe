#include "model/maintenance/Maintenance.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>

#include "ComponentFiles.h"
#include "model/CompositionFindings.h"
#include "model/RichFontValue.h"
#include "model/maintenance/RelativePath.h"
#include "model/maintenance/Replacement.h"

namespace model {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

const QString string = QStringLiteral("QCStringPort");

class MaintenanceTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(QDir(files.path({})).mkpath(QStringLiteral("doc.composition")));
    ASSERT_TRUE(QDir(files.path({})).mkpath(QStringLiteral("other")));
    for (const char* name : {"p.png", "other/p.png"}) touch(QString::fromLatin1(name));
  }
  void touch(const QString& name) {
    QFile file(files.path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }
  QuartzComponent* withFile(const QString& title, const QString& file) {
    const QString path = files.writeComponent(QStringLiteral("image.qtz"),
                                              {{QStringLiteral("Image_Path"), string, file, {}}});
    QuartzComponent* component = graphic->addComponenWithQuartzCompositionFile(path, {}, warnings);
    component->setTitle(title);
    return component;
  }
  static QString pathOf(const QuartzComponent& component) {
    return component.attributeForKey(QStringLiteral("Image_Path"))->currentValue().toString();
  }
  void save() {
    graphic->setFileURL(
        QUrl::fromLocalFile(files.path(QStringLiteral("doc.composition/Composition.qtz"))));
  }
  QStringList codes() const {
    QStringList found;
    for (const auto& finding : compositionFindings(*graphic)) found.append(finding.code);
    return found;
  }

  ComponentFiles files;
  Graphic graphic = emptyGraphic();
  QStringList warnings;
  Maintenance maintenance{*graphic, files.standardComponents()};
};

}  // namespace

TEST(RelativePath, LeavesTheFolderOfTheBase) {
  const auto relative = [](const char* path, const char* base) {
    return pathRelativeTo(QString::fromLatin1(path), QString::fromLatin1(base)).toStdString();
  };
  EXPECT_EQ(relative("/Users/a/Pictures/p.png", "/Users/a/Docs/X.package/Composition.qtz"),
            "../../Pictures/p.png");
  EXPECT_EQ(relative("/d/X/p.png", "/d/X/Composition.qtz"), "p.png");
  EXPECT_EQ(relative("/Volumes/Disk2/p.png", "/Volumes/Disk1/C.qtz"), "/Volumes/Disk2/p.png");
  EXPECT_EQ(relative("/Volumes/Disk2/p.png", "/Users/a/C.qtz"), "../../Volumes/Disk2/p.png");
  EXPECT_EQ(relative("p.png", "/Users/a/C.qtz"), "p.png");
  EXPECT_EQ(relative("/a/p.png", "C.qtz"), "/a/p.png");
  EXPECT_EQ(relative("/a/p.png", ""), "/a/p.png");
}

TEST_F(MaintenanceTest, UpgradesTextComponentsAndKeepsTheirValues) {
  const QString number = QStringLiteral("QCNumberPort");
  const QString old = files.writeComponent(
      QStringLiteral("other/Text.qtz"), {{QStringLiteral("Text"), string, QStringLiteral("x"), {}},
                                         {QStringLiteral("Changed"), number, 1.0, {}},
                                         {QStringLiteral("Gone"), number, 1.0, {}}});
  files.writeComponent(QStringLiteral("Text.qtz"),
                       {{QStringLiteral("New"), number, 5.0, {}},
                        {QStringLiteral("Changed"), string, QStringLiteral("now text"), {}},
                        {QStringLiteral("Text"), string, QStringLiteral("default"), {}}});
  QuartzComponent* text = graphic->addComponenWithQuartzCompositionFile(old, {}, warnings);
  text->setTitle(QStringLiteral("Name"));
  text->setOriginX(33);
  text->attributeForKey(QStringLiteral("Text"))->setCurrentValue(QStringLiteral("mine"));
  withFile(QStringLiteral("other"), {});
  EXPECT_THAT(maintenance.upgradeComponents(warnings), ElementsAre(QStringLiteral("Name")));
  EXPECT_EQ(text->compositionFilename(), files.path(QStringLiteral("Text.qtz")));
  const auto value = [&](const char* key) {
    const Attribute* attribute = text->attributeForKey(QString::fromLatin1(key));
    return attribute ? attribute->currentValue() : AttributeValue();
  };
  EXPECT_EQ(value("Text"), AttributeValue(QStringLiteral("mine")));
  EXPECT_EQ(value("New"), AttributeValue(5.0));
  EXPECT_EQ(value("Changed"), AttributeValue(QStringLiteral("now text")));
  EXPECT_TRUE(value("Gone").isEmpty());
  EXPECT_EQ(text->originX(), 33);
  EXPECT_EQ(text->title(), QStringLiteral("Name"));
  graphic.context->undo();
  EXPECT_EQ(value("Gone"), AttributeValue(1.0));
  EXPECT_EQ(text->compositionFilename(), old);
}

TEST_F(MaintenanceTest, PathsBecomeRelativeToTheSavedDocument) {
  const QuartzComponent* first = withFile(QStringLiteral("a"), files.path(QStringLiteral("p.png")));
  withFile(QStringLiteral("b"), QStringLiteral("already/relative.png"));
  EXPECT_THAT(maintenance.makePathsRelative(), IsEmpty());
  save();
  EXPECT_THAT(maintenance.makePathsRelative(), ElementsAre(files.path(QStringLiteral("p.png")),
                                                           QStringLiteral("already/relative.png")));
  EXPECT_EQ(pathOf(*first), QStringLiteral("../p.png"));
}

TEST_F(MaintenanceTest, EmbeddingSaysWhatToCopy) {
  const QuartzComponent* first = withFile(QStringLiteral("a"), files.path(QStringLiteral("p.png")));
  const QuartzComponent* folder =
      withFile(QStringLiteral("b"), files.path(QStringLiteral("other")));
  const QuartzComponent* missing = withFile(QStringLiteral("c"), QStringLiteral("/nowhere.png"));
  const QuartzComponent* relative = withFile(QStringLiteral("d"), QStringLiteral("../other/p.png"));
  EXPECT_THAT(maintenance.embedResources(), IsEmpty());
  save();
  EXPECT_THAT(codes(), Contains(QStringLiteral("missing-file")));
  const QString dest = files.path(QStringLiteral("doc.composition/p.png"));
  EXPECT_THAT(maintenance.embedResources(),
              ElementsAre(EmbeddedResource{files.path(QStringLiteral("p.png")), dest},
                          EmbeddedResource{files.path(QStringLiteral("other/p.png")), dest}));
  EXPECT_EQ(pathOf(*first), QStringLiteral("p.png"));
  EXPECT_EQ(pathOf(*relative), QStringLiteral("p.png"));
  EXPECT_EQ(pathOf(*folder), files.path(QStringLiteral("other")));
  EXPECT_EQ(pathOf(*missing), QStringLiteral("/nowhere.png"));
  touch(QStringLiteral("doc.composition/p.png"));
  EXPECT_THAT(maintenance.embedResources(), IsEmpty());  // lies in the package by now
}

TEST(MaintenanceReports, SayWhatHappened) {
  const CommandReport none = Maintenance::upgradeReport({});
  EXPECT_EQ(none.title, QStringLiteral("Upgrade Components Complete"));
  EXPECT_EQ(none.text, QStringLiteral("No components were upgraded in this composition."));
  EXPECT_EQ(none.preferenceKey, QStringLiteral("upgradeComponents"));
  EXPECT_EQ(Maintenance::embedReport({{QStringLiteral("/a"), QStringLiteral("/b")},
                                      {QStringLiteral("/c"), QStringLiteral("/d")}})
                .text,
            QStringLiteral("The following resources were embedded in the composition "
                           "document:\n\n/a\n/c"));
  EXPECT_EQ(Maintenance::saveFirstForEmbedding().title, QStringLiteral("Save Document"));
}

TEST_F(MaintenanceTest, WhatIsMissingIsReplacedEverywhereInOneStep) {
  QuartzComponent* first = withFile(QStringLiteral("First"), QStringLiteral("/gone/p.png"));
  QuartzComponent* second = withFile(QStringLiteral("Second"), QStringLiteral("/gone/p.png"));
  QuartzComponent* other = withFile(QStringLiteral("Other"), files.path(QStringLiteral("p.png")));
  graphic->setBackgroundMovie(QStringLiteral("/gone/p.png"));
  const QString found = files.path(QStringLiteral("other/p.png"));
  EXPECT_EQ(Replacement(*graphic).replaceFile(QStringLiteral("/gone/p.png"), found), 3);
  EXPECT_EQ(pathOf(*first), found);
  EXPECT_EQ(pathOf(*second), found);
  EXPECT_EQ(pathOf(*other), files.path(QStringLiteral("p.png")));
  EXPECT_EQ(graphic->backgroundMovie(), found);
  graphic.context->undo();
  EXPECT_EQ(pathOf(*first), QStringLiteral("/gone/p.png"));
  EXPECT_EQ(graphic->backgroundMovie(), QStringLiteral("/gone/p.png"));

  const QString path = files.writeComponent(
      QStringLiteral("rich.qtz"),
      {{QStringLiteral("Head_Rich_Font_Name"), string, QStringLiteral("Gone Sans"), {}},
       {QStringLiteral("Head_Rich_Font_Size"), QStringLiteral("QCNumberPort"), 40.0, {}}});
  QuartzComponent* text = graphic->addComponenWithQuartzCompositionFile(path, {}, warnings);
  const auto fontOf = [&] {
    for (const Attribute* attribute : text->attributes()) {
      const AttributeValue value = attribute->currentValue();
      if (const auto* rich = value.as<std::shared_ptr<const RichFontValue>>())
        return (*rich)->font();
    }
    return FontValue{};
  };
  ASSERT_EQ(fontOf().name, QStringLiteral("Gone Sans"));
  EXPECT_EQ(
      Replacement(*graphic).replaceFont(QStringLiteral("Gone Sans"), QStringLiteral("Inter Bold")),
      1);
  EXPECT_EQ(fontOf(), (FontValue{QStringLiteral("Inter Bold"), 40}));
}

TEST_F(MaintenanceTest, APictureThatIsAFieldNeedsAPictureToBePublished) {
  const QString path =
      files.writeComponent(QStringLiteral("logo.qtz"),
                           {{QStringLiteral("Logo"), QStringLiteral("QCGLImagePort"), {}, {}}});
  QuartzComponent* logo = graphic->addComponenWithQuartzCompositionFile(path, {}, warnings);
  Attribute& picture = *logo->attributeForKey(QStringLiteral("Logo"));
  EXPECT_THAT(codes(), IsEmpty());
  picture.setPermissionToChange(true);
  EXPECT_THAT(codes(), ElementsAre(QStringLiteral("empty-field")));
  QImage image(4, 4, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::red);
  picture.setCurrentValue(image);
  EXPECT_THAT(codes(), IsEmpty());
}

TEST_F(MaintenanceTest, FindingsNameWhatWillSurprise) {
  const QString path = files.writeComponent(
      QStringLiteral("card.qtz"), {{QStringLiteral("Tint"), QStringLiteral("QCColorPort"), {}, {}},
                                   {QStringLiteral("Text"), string, QStringLiteral("x"), {}}});
  QuartzComponent* card = graphic->addComponenWithQuartzCompositionFile(path, {}, warnings);
  Attribute& tint = *card->attributeForKey(QStringLiteral("Tint"));
  Attribute& text = *card->attributeForKey(QStringLiteral("Text"));
  tint.setCurrentValue(foundation::Color{1, 1, 1, 1});
  EXPECT_THAT(codes(), IsEmpty());

  tint.setCurrentValue(foundation::Color{1, 1, 1, 0.5});
  text.setPermissionToChange(true);
  text.addTimepoint(0.5, QStringLiteral("a"));
  EXPECT_THAT(codes(), ElementsAre(QStringLiteral("color-alpha-dropped"),
                                   QStringLiteral("field-lost-to-animation")));
  EXPECT_EQ(compositionFindings(*graphic).first().object, QStringLiteral("card/Tint"));
  graphic.context->undo();
  EXPECT_THAT(codes(), Not(Contains(QStringLiteral("field-lost-to-animation"))));

  graphic->setBackgroundMode(BackgroundMode::SolidColor);
  graphic->setBackgroundColor({1, 1, 1, 0.5});
  tint.setCurrentValue(std::make_shared<const RichFontValue>(
      QStringLiteral("%@"), QMap<QString, AttributeValue>{{QStringLiteral("Rich_Font_Color"),
                                                           foundation::Color{1, 1, 1, 0}}}));
  EXPECT_EQ(codes().count(QStringLiteral("color-alpha-dropped")), 2);
  graphic->setBackgroundColor({1, 1, 1, 1});

  text.addTimepoint(0.5, QStringLiteral("a"));
  text.setPermissionToChange(true);
  EXPECT_THAT(codes(), Contains(QStringLiteral("animated-field")));
  card->setStartTime(1);
  EXPECT_THAT(codes(), Contains(QStringLiteral("key-frame-outside-times")));
  card->setEndTime(9);
  EXPECT_THAT(codes(), Contains(QStringLiteral("ends-after-composition")));
  graphic->addStopFrame(3);
  EXPECT_THAT(codes(), Contains(QStringLiteral("stop-frame-outside")));
  for (int i = 0; i < 256; ++i) graphic->addStopFrame(1);
  EXPECT_THAT(codes(), Contains(QStringLiteral("too-many-stop-frames")));

  save();
  withFile(QStringLiteral("same"), files.path(QStringLiteral("p.png")));
  withFile(QStringLiteral("same"), QStringLiteral("../p.png"));  // that very file
  EXPECT_THAT(codes(), Not(Contains(QStringLiteral("same-file-name"))));
  withFile(QStringLiteral("same"), files.path(QStringLiteral("other/p.png")));
  EXPECT_THAT(codes(), Contains(QStringLiteral("same-file-name")));
  for (QuartzComponent* component : graphic->components())
    if (Attribute* file = component->attributeForKey(QStringLiteral("Image_Path")))
      file->setPermissionToChange(true);
  EXPECT_THAT(codes(), Contains(QStringLiteral("key-gets-counter")));
  EXPECT_THAT(codes(), Not(Contains(QStringLiteral("only-first-node-exported"))));
}

}  // namespace model
