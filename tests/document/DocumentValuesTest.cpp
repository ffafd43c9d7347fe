#include <gmock/gmock.h>
#include <unistd.h>

#include "DocumentFixture.h"
#include "document/DocumentSession.h"
#include "runtime/CompositionRenderer.h"
#include "support/LogGuard.h"

namespace document {

namespace {

using playout::ValueSet;
using playout::ValueSets;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

const QString home = QStringLiteral("Home");
const QString away = QStringLiteral("Away / 2");

ValueSets with(ValueSets sets, const QString& name, const QJsonObject& values = {}) {
  EXPECT_TRUE(sets.put({name, values}));
  return sets;
}

/// Permissions count for nothing for the administrator.
class OrdinaryUser {
 public:
  OrdinaryUser() {
    if (m_wasRoot && ::seteuid(65534) != 0) ADD_FAILURE();
  }
  ~OrdinaryUser() {
    if (m_wasRoot && ::seteuid(0) != 0) ADD_FAILURE();
  }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;

 private:
  const bool m_wasRoot = geteuid() == 0;
};

class DocumentValuesTest : public DocumentFixture {
 protected:
  void put(const QString& name, const QJsonObject& values = {}) {
    const auto done = document.setValueSets(with(document.valueSets(), name, values));
    EXPECT_TRUE(done) << done.error().text().toStdString();
  }
  [[nodiscard]] QString file(const QString& package) const {
    return PackageLayout(path(package)).values();
  }
  /// As a program sees them that opens the package.
  [[nodiscard]] QStringList namesIn(const QString& package) const {
    CompositionDocument other;
    EXPECT_TRUE(other.readFromURL(url(package)));
    EXPECT_THAT(other.warnings(), IsEmpty());
    return other.valueSets().names();
  }

  const QString a = QStringLiteral("a.composition");
  const QString b = QStringLiteral("b.composition");
};

}  // namespace

TEST_F(DocumentValuesTest, AreWrittenAtOnceAndAreNoEdit) {
  saveAs(a);
  EXPECT_FALSE(QFile::exists(file(a))) << "a document without sets has no file of them";
  int told = 0;
  const auto observed = document.observeValueSets([&](const auto&) { ++told; });
  put(home, {{QStringLiteral("Key"), QStringLiteral("x")}});
  EXPECT_FALSE(document.isDocumentEdited());
  EXPECT_FALSE(document.context().canUndo());
  EXPECT_EQ(told, 1);
  EXPECT_EQ(namesIn(a), QStringList{home});

  // They go along with whatever happens to the package.
  put(away);
  saveAs(b);
  EXPECT_EQ(namesIn(b), QStringList({home, away}));
  ASSERT_TRUE(document.saveToURL(url(QStringLiteral("copy.composition")), SaveOperation::SaveTo));
  EXPECT_EQ(namesIn(QStringLiteral("copy.composition")), QStringList({home, away}));
  ASSERT_TRUE(QDir(folder.path()).rename(b, QStringLiteral("moved.composition")));
  put(QStringLiteral("After the move"));
  EXPECT_THAT(namesIn(QStringLiteral("moved.composition")), SizeIs(3));
  EXPECT_THAT(namesIn(a), SizeIs(2)) << "the other document is another one";
}

TEST_F(DocumentValuesTest, WaitForTheFirstSave) {
  put(home);
  EXPECT_FALSE(document.heldBesideStore().isEmpty());
  ASSERT_TRUE(document.saveToURL(url(b), SaveOperation::SaveTo));
  EXPECT_EQ(namesIn(b), QStringList{home});
  EXPECT_FALSE(document.heldBesideStore().isEmpty()) << "a copy is not the document";
  saveAs(a);
  EXPECT_EQ(namesIn(a), QStringList{home});
  EXPECT_TRUE(document.heldBesideStore().isEmpty());
  EXPECT_EQ(document.valueSets().names(), QStringList{home});
}

TEST_F(DocumentValuesTest, PicturesAreCopiedIntoThePackage) {
  const QStringList keys{QStringLiteral("Photo")};
  const auto keep = [&](const QString& name, const QString& picture) {
    const QJsonObject values{{keys.front(), picture}, {QStringLiteral("Path"), picture}};
    return document.setValueSets(with(document.valueSets(), name, values), keys).has_value();
  };
  const auto picture = [&](const QString& name) {
    return document.valueSets().named(name)->values.value(keys.front()).toString();
  };
  ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("other")));
  for (const char* name : {"ada.png", "Values.json", "other/ada.png"})
    write(path(QString::fromLatin1(name)), name);
  // A document without a place has none for pictures either.
  const QString ada = path(QStringLiteral("ada.png"));
  EXPECT_TRUE(keep(home, ada));
  EXPECT_EQ(picture(home), ada);
  saveAs(a);
  EXPECT_EQ(picture(home), QStringLiteral("ada.png"));
  EXPECT_EQ(contents(path(a) + QStringLiteral("/ada.png")), "ada.png");
  // Another file of the name, the same file again, one that is there, and one that is not.
  const QString missing = path(QStringLiteral("none.png"));
  EXPECT_TRUE(keep(QStringLiteral("1"), path(QStringLiteral("other/ada.png"))));
  EXPECT_TRUE(keep(QStringLiteral("2"), ada));
  EXPECT_TRUE(keep(QStringLiteral("3"), path(a) + QStringLiteral("/ada 2.png")));
  EXPECT_TRUE(keep(QStringLiteral("4"), missing));
  EXPECT_TRUE(keep(QStringLiteral("5"), path(QStringLiteral("Values.json"))));
  EXPECT_EQ(picture(QStringLiteral("1")), QStringLiteral("ada 2.png"));
  EXPECT_EQ(contents(path(a) + QStringLiteral("/ada 2.png")), "other/ada.png");
  EXPECT_EQ(picture(QStringLiteral("2")), QStringLiteral("ada.png"));
  EXPECT_EQ(picture(QStringLiteral("3")), QStringLiteral("ada 2.png"));
  EXPECT_EQ(picture(QStringLiteral("4")), missing);
  EXPECT_EQ(picture(QStringLiteral("5")), QStringLiteral("Values 2.json"));
  EXPECT_THAT(namesIn(a), SizeIs(6)) << "the sets are where they were";
  EXPECT_EQ(document.valueSets().named(home)->values.value(QStringLiteral("Path")), ada)
      << "a text is no picture";
  saveAs(b);
  EXPECT_EQ(contents(path(b) + QStringLiteral("/ada 2.png")), "other/ada.png");
}

TEST_F(DocumentValuesTest, ChangesOfOtherProgramsAreBroughtTogether) {
  saveAs(a);
  put(home);
  CompositionDocument other;
  ASSERT_TRUE(other.readFromURL(url(a)));
  ASSERT_TRUE(other.setValueSets(with(other.valueSets(), away)));
  put(QStringLiteral("Mine"));
  EXPECT_EQ(document.valueSets().names(), QStringList({home, QStringLiteral("Mine"), away}));
  EXPECT_EQ(namesIn(a), document.valueSets().names());
  // Reverting shows what has come meanwhile.
  ASSERT_TRUE(other.setValueSets(with(other.valueSets(), QStringLiteral("Late"))));
  ASSERT_TRUE(document.revertToContentsOfURL(document.fileURL()));
  EXPECT_TRUE(document.valueSets().named(QStringLiteral("Late")));
  EXPECT_TRUE(document.valueSets().named(QStringLiteral("Mine")));
}

TEST_F(DocumentValuesTest, DamagedFilesAreToldAndKept) {
  saveAs(a);
  const QByteArray damaged = "{\"version\": 1, \"sets\": [{\"name\": \"Home\"";
  write(file(a), damaged);
  ASSERT_TRUE(document.readFromURL(url(a)));
  ASSERT_THAT(document.warnings(), SizeIs(1));
  EXPECT_THAT(document.warnings()[0].toStdString(), HasSubstr(file(a).toStdString()));
  EXPECT_TRUE(document.valueSets().isEmpty());
  ASSERT_TRUE(document.saveToURL(document.fileURL(), SaveOperation::Save));
  EXPECT_EQ(contents(file(a)), damaged) << "nothing to write leaves it alone";
  support::LogGuard::expectMessage(QStringLiteral("Values (damaged).json"));
  support::LogGuard::expectMessage(QStringLiteral("Values (damaged 2).json"));
  put(home);
  const QString kept = path(a) + QStringLiteral("/Values (damaged).json");
  EXPECT_EQ(contents(kept), damaged);
  EXPECT_EQ(namesIn(a), QStringList{home});
  // Damaged again while the document is open, and differently.
  write(file(a), "[]");
  put(away);
  EXPECT_EQ(contents(kept), damaged);
  EXPECT_EQ(contents(path(a) + QStringLiteral("/Values (damaged 2).json")), "[]");
  EXPECT_EQ(namesIn(a), QStringList({home, away})) << "what is known is not lost";
}

TEST_F(DocumentValuesTest, WhatCannotBeWrittenIsToldAndTriedAgain) {
  saveAs(a);
  put(home);
  const QByteArray before = contents(file(a));
  QFile package(path(a));
  ASSERT_TRUE(package.setPermissions(QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther |
                                     QFile::ExeOther));
  ASSERT_TRUE(QFile(folder.path()).setPermissions(QFile::Permissions(0x7777)));
  {
    const OrdinaryUser user;
    const auto done = document.setValueSets(with(document.valueSets(), away));
    ASSERT_FALSE(done);
    EXPECT_THAT(done.error().text().toStdString(), HasSubstr("Values.json"));
  }
  EXPECT_EQ(contents(file(a)), before);
  EXPECT_EQ(document.valueSets().names(), QStringList({home, away})) << "nothing is lost here";
  saveAs(b);
  EXPECT_EQ(namesIn(b), QStringList({home, away}));
  ASSERT_TRUE(package.setPermissions(QFile::Permissions(0x7777)));

  // What is no plain file is not written over, and the save goes on.
  ASSERT_TRUE(QFile::remove(file(b)));
  write(path(QStringLiteral("elsewhere.json")), "other");
  ASSERT_TRUE(QFile::link(path(QStringLiteral("elsewhere.json")), file(b)));
  EXPECT_FALSE(document.setValueSets({}));
  ASSERT_TRUE(document.saveToURL(document.fileURL(), SaveOperation::Save));
  ASSERT_THAT(document.saveWarnings(), SizeIs(1));
  EXPECT_THAT(document.saveWarnings()[0].toStdString(), HasSubstr("not a plain file"));
  EXPECT_EQ(contents(path(QStringLiteral("elsewhere.json"))), "other");
}

TEST_F(DocumentValuesTest, OfUnsavedDocumentsSurviveTheProgram) {
  const RecoveryStore store(path(QStringLiteral("state")));
  auto untitled = std::make_unique<CompositionDocument>();
  auto session = std::make_unique<DocumentSession>(*untitled, store);
  untitled->emptyDocumentWithResolution(model::VideoResolution(QStringLiteral("SD PAL")));
  ASSERT_TRUE(untitled->setValueSets(with({}, home)));
  untitled->composition()->setDuration(7);
  ASSERT_TRUE(untitled->setValueSets(with(untitled->valueSets(), away)));
  session.reset();  // without closing it: the data stay
  untitled.reset();

  DocumentSession again(document, store);
  const auto entries = store.recoverable();
  ASSERT_THAT(entries, SizeIs(1));
  const auto recovered = again.recover(entries.first());
  ASSERT_TRUE(recovered) << recovered.error().text().toStdString();
  EXPECT_THAT(*recovered, IsEmpty());
  EXPECT_EQ(document.composition()->duration(), 7);
  EXPECT_EQ(document.valueSets().names(), QStringList({home, away}));
  saveAs(a);
  EXPECT_EQ(namesIn(a), QStringList({home, away}));
  again.close();
  EXPECT_THAT(store.recoverable(), IsEmpty());
}

TEST_F(DocumentValuesTest, ThumbnailsShowTheSetThatIsChosen) {
  model::QuartzComponent* bar = document.composition()->addComponenWithQuartzCompositionFile(
      *document.standardComponents().pathOf(QStringLiteral("Rectangle")), {},
      *std::make_unique<QStringList>());
  ASSERT_TRUE(bar);
  bar->setTitle(QStringLiteral("Bar"));
  bar->setOriginX(0);
  bar->setOriginY(0);
  bar->setWidth(1920);
  bar->setHeight(1080);
  bar->attributeForKey(QStringLiteral("Color"))->setPermissionToChange(true);
  document.composition()->setPosterFrameMode(0);
  document.composition()->setPosterFrameTimepoint(0.5);
  saveAs(a);
  const auto played =
      runtime::CompositionRenderer::fromFile(document.quartzCompositionURL().toLocalFile());
  ASSERT_TRUE(played);
  ASSERT_TRUE((*played)->inputKeys().contains(QStringLiteral("Bar_Color")))
      << (*played)->inputKeys().join(u' ').toStdString();

  ValueSets sets =
      with({}, home,
           {{QStringLiteral("Bar_Color"), QStringLiteral("#00FF00")}, {QStringLiteral("Gone"), 1}});
  ASSERT_TRUE(sets.setThumbnailName(home));
  ASSERT_TRUE(document.setValueSets(sets));
  const auto middle = [&] {
    const QImage picture(PackageLayout(path(a)).thumbnail());
    return picture.pixelColor(picture.rect().center());
  };
  ASSERT_TRUE(document.renewThumbnail());
  EXPECT_GT(middle().green(), 240);
  EXPECT_LT(middle().red(), 20);
  ASSERT_THAT(document.saveWarnings(), SizeIs(1));
  EXPECT_THAT(document.saveWarnings()[0].toStdString(), HasSubstr("'Gone' is not published"));

  sets = with(sets, home, {{QStringLiteral("Bar_Color"), QStringLiteral("#FF0000")}});
  ASSERT_TRUE(document.setValueSets(sets));
  ASSERT_TRUE(document.saveToURL(document.fileURL(), SaveOperation::Save));
  EXPECT_THAT(document.saveWarnings(), IsEmpty());
  EXPECT_GT(middle().red(), 240);
}

}  // namespace document
