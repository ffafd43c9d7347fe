#include "document/CompositionDocument.h"

#include <gmock/gmock.h>

#include <QImage>

#include "DocumentFixture.h"
#include "foundation/PropertyList.h"
#include "runtime/CompositionRenderer.h"
#include "store/StoreSnapshot.h"
#include "support/LogGuard.h"

namespace document {

namespace {

using foundation::PropertyValue;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class CompositionDocumentTest : public DocumentFixture {
 protected:
  [[nodiscard]] QStringList entries(const QString& package) const {
    return QDir(path(package)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
  }
  /// The lightness of the thumbnail's middle.
  [[nodiscard]] int thumbnailLightness(const QString& package) const {
    const QImage picture(PackageLayout(path(package)).thumbnail());
    return picture.isNull() ? -1 : qGray(picture.pixel(picture.rect().center()));
  }
};

}  // namespace

TEST_F(CompositionDocumentTest, NewDocumentIsUnchangedAndHasNoPlace) {
  ASSERT_TRUE(document.composition());
  EXPECT_EQ(document.composition()->broadcastMode(), QStringLiteral("1080i25 RGBA"));
  EXPECT_FALSE(document.isDocumentEdited());
  EXPECT_FALSE(document.context().canUndo());
  EXPECT_TRUE(document.quartzCompositionURL().isEmpty());
  EXPECT_EQ(document.displayName(), QStringLiteral("Untitled"));
}

TEST_F(CompositionDocumentTest, WritesThePackageAndReadsItBack) {
  addText(QStringLiteral("Harbour"))->setOriginX(120);
  document.composition()->addStopFrame(1.5, QStringLiteral("Out"));
  document.composition()->addStopFrame(0.5);
  saveAs(QStringLiteral("strap.composition"));
  EXPECT_FALSE(document.isDocumentEdited());
  EXPECT_TRUE(document.context().canUndo()) << "saving does not forget";
  EXPECT_EQ(document.displayName(), QStringLiteral("strap"));
  EXPECT_EQ(document.composition()->fileURL(), document.quartzCompositionURL());
  EXPECT_THAT(
      entries(QStringLiteral("strap.composition")),
      UnorderedElementsAre(QStringLiteral("data.xml"), QStringLiteral("Composition.qtz"),
                           QStringLiteral("CompositionInfo.xml"), QStringLiteral("QuickLook")));
  EXPECT_THAT(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              testing::SizeIs(1))
      << "nothing else is left";

  for (const char* opened :
       {"strap.composition", "strap.composition/", "strap.composition/QuickLook/Thumbnail.jpg"}) {
    CompositionDocument other;
    ASSERT_TRUE(other.readFromURL(url(QString::fromLatin1(opened)))) << opened;
    EXPECT_EQ(storeSnapshot(other.context()), storeSnapshot(document.context()));
    EXPECT_FALSE(other.isDocumentEdited());
    EXPECT_FALSE(other.context().canUndo());
    EXPECT_EQ(other.fileURL(), document.fileURL());
    EXPECT_EQ(other.composition()->fileURL(), document.quartzCompositionURL());
  }
}

TEST_F(CompositionDocumentTest, InformationDescribesTheGraphic) {
  addText(QStringLiteral("Harbour"))->setTitle(QStringLiteral("Name"));
  document.composition()->addStopFrame(1.1, QStringLiteral("Out"));
  document.composition()->addStopFrame(0.5);
  saveAs(QStringLiteral("a.composition"));
  const auto info =
      foundation::PropertyList::fromFile(path(QStringLiteral("a.composition/CompositionInfo.xml")));
  ASSERT_TRUE(info);
  const foundation::PropertyDictionary& top = info->dictionary();
  EXPECT_THAT(top.keys(), UnorderedElementsAre(
                              QStringLiteral("duration"), QStringLiteral("width"),
                              QStringLiteral("height"), QStringLiteral("stopframes"),
                              QStringLiteral("pixelAspectRatio"), QStringLiteral("components")));
  EXPECT_EQ(top[u"duration"].toDouble(), 5);
  EXPECT_EQ(top[u"width"], PropertyValue(qint64{1920}));
  const auto& stops = top[u"stopframes"].array();
  ASSERT_EQ(stops.size(), 2);
  EXPECT_EQ(stops[0].dictionary().keys(), QStringList{QStringLiteral("timepoint")});
  EXPECT_EQ(stops[1].dictionary()[u"title"].toString(), QStringLiteral("Out"));
  EXPECT_EQ(stops[1].dictionary()[u"timepoint"].toDouble(), static_cast<double>(1.1F));
  ASSERT_EQ(top[u"components"].array().size(), 1);
  EXPECT_EQ(top[u"components"].array()[0].dictionary()[u"title"].toString(),
            QStringLiteral("Name"));
}

TEST_F(CompositionDocumentTest, ThumbnailShowsThePosterFrameBeyondStops) {
  model::QuartzComponent* text = addText(QStringLiteral("Harbour"));
  ASSERT_TRUE(text);
  model::Composition& composition = *document.composition();
  composition.setBackgroundMode(model::BackgroundMode::SolidColor);
  composition.setBackgroundColor(foundation::Color::white());
  saveAs(QStringLiteral("a.composition"));
  EXPECT_LT(thumbnailLightness(QStringLiteral("a.composition")), 5) << "no time, no picture";

  text->setVisibleInCompositionEditor(true);
  text->setStartTime(2);  // away until the stops are behind
  text->setEndTime(3);
  composition.addStopFrame(0.5);
  composition.addStopFrame(1);
  composition.setPosterFrameTimepoint(1.5);
  ASSERT_TRUE(document.saveToURL(document.fileURL(), SaveOperation::Save));
  EXPECT_GT(thumbnailLightness(QStringLiteral("a.composition")), 250);

  QImage poster(16, 9, QImage::Format_RGB32);
  poster.fill(QColor(100, 100, 100));
  composition.setPosterFrameImage(poster);
  composition.setPosterFrameMode(1);
  ASSERT_TRUE(document.saveToURL(document.fileURL(), SaveOperation::Save));
  EXPECT_NEAR(thumbnailLightness(QStringLiteral("a.composition")), 100, 3);
}

TEST_F(CompositionDocumentTest, SaveAsMovesTheDocumentAndTakesItsFilesAlong) {
  saveAs(QStringLiteral("a.composition"));
  write(path(QStringLiteral("a.composition/photo.png")), "picture");
  write(path(QStringLiteral("a.composition/.notes")), "hidden");
  write(path(QStringLiteral("a.composition/data.xml.Ab3xYz")), "half a store");
  const QByteArray before = contents(path(QStringLiteral("a.composition/data.xml")));
  addText(QStringLiteral("Harbour"));
  saveAs(QStringLiteral("b.composition"));
  EXPECT_EQ(document.displayName(), QStringLiteral("b"));
  EXPECT_EQ(contents(path(QStringLiteral("b.composition/photo.png"))), "picture");
  EXPECT_EQ(contents(path(QStringLiteral("b.composition/.notes"))), "hidden");
  EXPECT_FALSE(QFile::exists(path(QStringLiteral("b.composition/data.xml.Ab3xYz"))));
  EXPECT_EQ(contents(path(QStringLiteral("a.composition/data.xml"))), before);
  EXPECT_TRUE(document.composition()->fileURL().path().contains(QLatin1String("b.composition")));

  // Onto itself it writes nothing and says that all is well; what is unsaved stays so.
  addText(QStringLiteral("Bridge"));
  const QByteArray saved = contents(path(QStringLiteral("b.composition/data.xml")));
  EXPECT_TRUE(document.saveToURL(url(QStringLiteral("b.composition/")), SaveOperation::SaveAs));
  EXPECT_EQ(contents(path(QStringLiteral("b.composition/data.xml"))), saved);
  EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(CompositionDocumentTest, SaveAsReplacesADocumentAndNothingElse) {
  saveAs(QStringLiteral("a.composition"));
  write(path(QStringLiteral("a.composition/old.png")), "old");
  CompositionDocument other;
  other.emptyDocumentWithResolution(model::VideoResolution(QStringLiteral("HD 720p50")));
  ASSERT_TRUE(other.saveToURL(url(QStringLiteral("a.composition")), SaveOperation::SaveAs));
  EXPECT_FALSE(QFile::exists(path(QStringLiteral("a.composition/old.png"))));
  EXPECT_TRUE(document.storeChangedOnDisk());
  ASSERT_TRUE(document.revertToContentsOfURL(document.fileURL()));
  EXPECT_EQ(document.composition()->width(), 1280);
  EXPECT_FALSE(document.storeChangedOnDisk());

  ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("photos")));
  write(path(QStringLiteral("photos/one.png")), "one");
  support::LogGuard::expectMessage(QStringLiteral("Could not write document with error is"));
  const auto refused = document.saveToURL(url(QStringLiteral("photos")), SaveOperation::SaveAs);
  ASSERT_FALSE(refused);
  EXPECT_THAT(refused.error().text().toStdString(), HasSubstr("photos"));
  EXPECT_EQ(contents(path(QStringLiteral("photos/one.png"))), "one");
  EXPECT_EQ(document.displayName(), QStringLiteral("a"));
}

TEST_F(CompositionDocumentTest, ADocumentThatWasTakenAwayCanBeSavedAs) {
  saveAs(QStringLiteral("a.composition"));
  for (const QString& name : {QStringLiteral("b.composition"), QStringLiteral("b.composition")}) {
    ASSERT_TRUE(QDir(document.fileURL().toLocalFile()).removeRecursively());
    addText(QStringLiteral("Harbour"));
    saveAs(name);
    EXPECT_TRUE(QFile::exists(path(name + QStringLiteral("/data.xml"))));
    EXPECT_FALSE(document.isDocumentEdited());
  }
  ASSERT_TRUE(QFile::remove(path(QStringLiteral("b.composition/data.xml"))));
  saveAs(QStringLiteral("b.composition"));
  CompositionDocument again;
  ASSERT_TRUE(again.readFromURL(document.fileURL()));
  EXPECT_EQ(again.composition()->components().size(), 2);
}

TEST_F(CompositionDocumentTest, SavingAsThroughALinkReplacesWhatItLeadsTo) {
  ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("shared")));
  saveAs(QStringLiteral("shared/a.composition"));
  const QString link = path(QStringLiteral("link.composition"));
  ASSERT_TRUE(QFile::link(path(QStringLiteral("shared/a.composition")), link));
  CompositionDocument other;
  other.emptyDocumentWithResolution(model::VideoResolution(QStringLiteral("HD 720p50")));
  ASSERT_TRUE(other.saveToURL(QUrl::fromLocalFile(link), SaveOperation::SaveAs));
  EXPECT_TRUE(QFileInfo(link).isSymLink());
  ASSERT_TRUE(document.revertToContentsOfURL(document.fileURL()));
  EXPECT_EQ(document.composition()->width(), 1280);
}

TEST_F(CompositionDocumentTest, ACopyLeavesTheDocumentWhereItIs) {
  saveAs(QStringLiteral("a.composition"));
  addText(QStringLiteral("Harbour"));
  ASSERT_TRUE(document.saveToURL(url(QStringLiteral("copy.composition")), SaveOperation::SaveTo));
  EXPECT_TRUE(document.isDocumentEdited());
  EXPECT_EQ(document.displayName(), QStringLiteral("a"));
  CompositionDocument copy;
  ASSERT_TRUE(copy.readFromURL(url(QStringLiteral("copy.composition"))));
  EXPECT_EQ(copy.composition()->components().size(), 1);
}

TEST_F(CompositionDocumentTest, RevertBringsBackWhatWasSavedAndTellsHolders) {
  saveAs(QStringLiteral("a.composition"));
  addText(QStringLiteral("Harbour"));
  int told = 0;
  const auto subscription = document.observeReplacement([&](const PersistentPackageDocument& old) {
    ++told;
    EXPECT_TRUE(old.isDocumentEdited());
  });
  ASSERT_TRUE(document.revertToContentsOfURL(document.fileURL()));
  EXPECT_EQ(told, 1);
  EXPECT_EQ(document.composition()->components().size(), 0);
  EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(CompositionDocumentTest, AMovedPackageIsSavedWhereItIs) {
  saveAs(QStringLiteral("a.composition"));
  ASSERT_TRUE(QDir(folder.path())
                  .rename(QStringLiteral("a.composition"), QStringLiteral("moved.composition")));
  write(path(QStringLiteral("moved.composition/photo.png")), "picture");
  addText(QStringLiteral("Harbour"));
  ASSERT_TRUE(document.saveToURL(document.fileURL(), SaveOperation::Save));
  EXPECT_FALSE(QFile::exists(path(QStringLiteral("a.composition"))));
  EXPECT_EQ(document.displayName(), QStringLiteral("moved"));
  EXPECT_FALSE(document.storeChangedOnDisk());

  // What is saved as another document then takes its files along.
  ASSERT_TRUE(QDir(folder.path())
                  .rename(QStringLiteral("moved.composition"), QStringLiteral("b.composition")));
  saveAs(QStringLiteral("c.composition"));
  EXPECT_EQ(contents(path(QStringLiteral("c.composition/photo.png"))), "picture");

  // Into the rubbish it is not followed.
  ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("Trash/files")));
  ASSERT_TRUE(
      QDir(folder.path())
          .rename(QStringLiteral("c.composition"), QStringLiteral("Trash/files/c.composition")));
  support::LogGuard::expectMessage(QStringLiteral("Could not write document"));
  addText(QStringLiteral("Bridge"));
  EXPECT_FALSE(document.saveToURL(document.fileURL(), SaveOperation::Save));
  EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(CompositionDocumentTest, WhatCannotBeOpenedSaysWhy) {
  const auto error = [&](const QString& name) {
    CompositionDocument other;
    const auto read = other.readFromURL(url(name));
    return read ? std::string("opened") : read.error().text().toStdString();
  };
  EXPECT_THAT(error(QStringLiteral("none.composition")), HasSubstr("does not exist"));
  ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("empty.composition")));
  EXPECT_THAT(error(QStringLiteral("empty.composition")), HasSubstr("holds no data.xml"));
  write(path(QStringLiteral("plain.txt")), "x");
  EXPECT_THAT(error(QStringLiteral("plain.txt")), HasSubstr("is not in a composition document"));
  saveAs(QStringLiteral("a.composition"));
  const QString store = path(QStringLiteral("a.composition/data.xml"));
  write(store, contents(store).chopped(40));
  EXPECT_THAT(error(QStringLiteral("a.composition")), HasSubstr("data.xml"));
  QFile::remove(store);
  ASSERT_TRUE(QFile::link(QStringLiteral("/etc/hostname"), store));
  EXPECT_THAT(error(QStringLiteral("a.composition")), HasSubstr("is not a plain file"));
}

TEST_F(CompositionDocumentTest, NoneOrSeveralCompositionsGiveADocumentWithoutOne) {
  saveAs(QStringLiteral("a.composition"));
  document.context().insert(
      std::make_unique<model::Composition>(model::VideoResolution(QStringLiteral("HD 720p50"))));
  ASSERT_TRUE(document.saveToURL(document.fileURL(), SaveOperation::Save));
  CompositionDocument several;
  ASSERT_TRUE(several.readFromURL(document.fileURL()));
  EXPECT_FALSE(several.composition());
  const size_t objects = several.context().objects().size();
  EXPECT_TRUE(several.saveToURL(several.fileURL(), SaveOperation::Save)) << "nothing is lost";
  CompositionDocument again;
  ASSERT_TRUE(again.readFromURL(document.fileURL()));
  EXPECT_EQ(again.context().objects().size(), objects);
}

TEST_F(CompositionDocumentTest, SavesWhatItCanWhereThingsAreInTheWay) {
  saveAs(QStringLiteral("a.composition"));
  const PackageLayout package(document.fileURL().toLocalFile());
  ASSERT_TRUE(QFile::remove(package.thumbnail()));
  ASSERT_TRUE(QDir().mkdir(package.thumbnail()));
  ASSERT_TRUE(QFile::remove(package.info()));
  ASSERT_TRUE(QDir().mkdir(package.info()));
  document.setResourcesToSave(
      {{path(QStringLiteral("gone.png")), package.folder() + QStringLiteral("/gone.png")}});
  support::LogGuard::expectMessage(QStringLiteral("Could not embed"));
  EXPECT_TRUE(document.saveToURL(document.fileURL(), SaveOperation::Save));
  EXPECT_EQ(document.saveWarnings().size(), 3);
  EXPECT_TRUE(document.saveToURL(document.fileURL(), SaveOperation::Save));
  EXPECT_EQ(document.saveWarnings().size(), 2) << "resources are tried once";

  ASSERT_TRUE(QDir(package.quickLook()).removeRecursively());
  write(package.quickLook(), "in the way");
  addText(QStringLiteral("Harbour"));
  support::LogGuard::expectMessage(QStringLiteral("Could not create QuickLook folder"));
  EXPECT_FALSE(document.saveToURL(document.fileURL(), SaveOperation::Save));
  EXPECT_TRUE(document.isDocumentEdited());
  CompositionDocument other;
  ASSERT_TRUE(other.readFromURL(document.fileURL()));
  EXPECT_EQ(other.composition()->components().size(), 1) << "the objects were written before";
}

TEST_F(CompositionDocumentTest, ExportByHandNamesScrollersForTranslation) {
  QStringList warnings;
  for (const char* component : {"TextScroller", "TextComponent"}) {
    auto* added = document.composition()->addComponenWithQuartzCompositionFile(
        *document.standardComponents().pathOf(QString::fromLatin1(component)), {}, warnings);
    ASSERT_TRUE(added);
    for (model::Attribute* attribute : added->attributes())
      attribute->setPermissionToChange(attribute->type() == model::AttributeType::String);
  }
  const QString out = path(QStringLiteral("out.qtz"));
  ASSERT_TRUE(document.exportQuartzComposition(out));
  const auto played = runtime::CompositionRenderer::fromFile(out);
  ASSERT_TRUE(played);
  EXPECT_TRUE((*played)->inputKeys().contains(QStringLiteral("EAS_TRANSLATION")))
      << (*played)->inputKeys().join(u' ').toStdString();
  EXPECT_EQ((*played)->inputKeys().filter(QStringLiteral("EAS")).size(), 1) << "no other field";
  support::LogGuard::expectMessage(QStringLiteral("Unable to write output file!"));
  EXPECT_FALSE(document.exportQuartzComposition(path(QStringLiteral("missing/out.qtz"))));
}

}  // namespace document
