#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "document/recovery/RecoveryJournal.h"
#include "foundation/DurableFile.h"
#include "model/Composition.h"
#include "model/ModelEntities.h"
#include "quartz/QuartzComposition.h"
#include "store/XmlStore.h"

namespace document {

namespace {

using model::Composition;
using store::ObjectContext;

using store::XmlStore;

/// A component file of about a megabyte.
QString writeComponent(const QString& path) {
  quartz::QuartzComposition file;
  quartz::QuartzPatch* content = file.rootPatch()->addPatchWithClass(QStringLiteral("QCPatch"));
  content
      ->addPatchWithClass(QStringLiteral("QCSplitter"),
                          {{QStringLiteral("portClass"), QStringLiteral("QCGLImagePort")},
                           {QStringLiteral("weight"), QByteArray(1 << 20, 'x')}})
      ->publishOutputPort(QStringLiteral("output"), QStringLiteral("outputImage"));
  content->publishOutputPort(QStringLiteral("outputImage"), QStringLiteral("outputImage"));
  EXPECT_TRUE(file.writeToFile(path, false));
  return path;
}

/// A document of the model with its store, as an editor has it.
struct Graphic {
  ObjectContext context;
  XmlStore xml{model::modelEntities()};

  [[nodiscard]] QByteArray bytes() const { return xml.write(context); }
  [[nodiscard]] Composition* composition() const {
    return dynamic_cast<Composition*>(context.objects().begin()->second.get());
  }
  [[nodiscard]] RecoveryJournal::Host host() {
    return {[this] { return bytes(); }};
  }
  [[nodiscard]] foundation::Result<RecoveredDocument> recover(const RecoveryStore& store,
                                                              const RecoveryEntry& entry) {
    return store.recover(
        entry,
        [this](const QByteArray& stored, const QString& path, ObjectContext& into) {
          return xml.read(stored, path, into);
        },
        model::modelEntities(), context);
  }
};

class CompositionRecovery : public testing::Test {
 protected:
  /// A saved document with one component and something that this program does not know.
  void SetUp() override {
    Graphic made;
    auto* composition = made.context.insert(
        std::make_unique<Composition>(model::VideoResolution(QStringLiteral("HD 1080i25"))));
    QStringList warnings;
    ASSERT_TRUE(composition->addComponenWithQuartzCompositionFile(
        writeComponent(folder.filePath(QStringLiteral("part.qtz"))), {}, warnings));
    const QByteArray stored = made.bytes().replace(
        "  </object>", "    <string key=\"future\">kept</string>\n  </object>");
    ASSERT_TRUE(QDir().mkdir(document.path));
    ASSERT_TRUE(foundation::replaceFile(storePathOf(document.path), stored));
    ASSERT_TRUE(graphic.xml.read(stored, document.path, graphic.context));
    journal =
        std::make_unique<RecoveryJournal>(graphic.context, store, document, stored, graphic.host());
  }

  /// What a new process finds after this one was killed.
  void expectRecovered(Graphic& again) {
    const qint64 changes = journal->changes();
    journal.reset();
    const QList<RecoveryEntry> entries = store.recoverable();
    ASSERT_EQ(entries.size(), 1);
    const auto recovered = again.recover(store, entries.first());
    ASSERT_TRUE(recovered) << recovered.error().text().toStdString();
    EXPECT_EQ(recovered->warnings, QStringList());
    EXPECT_EQ(recovered->changes, changes);
    EXPECT_TRUE(again.bytes() == graphic.bytes());
    EXPECT_EQ(again.bytes().count("key=\"future\""), graphic.bytes().count("key=\"future\""));
    EXPECT_GT(again.bytes().count("key=\"future\""), 1) << "what nobody knows is kept";
  }

  QTemporaryDir folder;
  RecoveryStore store{folder.filePath(QStringLiteral("state"))};
  DocumentName document{folder.filePath(QStringLiteral("News.composition")),
                        QStringLiteral("News")};
  Graphic graphic;
  std::unique_ptr<RecoveryJournal> journal;
};

TEST_F(CompositionRecovery, GraphicsComeBackReadyToGoOn) {
  Composition* composition = graphic.composition();
  model::QuartzComponent* component = composition->components()[0];
  component->setOriginX(12);
  component->setTitle(QStringLiteral("Größe"));
  EXPECT_LT(journal->size(), 1000) << "the composition of the component did not change";
  composition->setVideoResolution(model::VideoResolution(QStringLiteral("HD 720p50")));
  composition->setDuration(9);
  composition->setBackgroundImage(QImage(20, 10, QImage::Format_ARGB32));
  QStringList warnings;
  (void)model::QuartzComponent::createWithDictionaryData(component->dictionaryWithData(),
                                                         *composition, warnings);
  composition->removeComponents({composition->components()[0]});
  graphic.context.undo();
  graphic.context.insert(std::make_unique<model::StopFrame>(1.5, QStringLiteral("Second person")))
      ->setComposition(composition);

  Graphic again;
  expectRecovered(again);
  Composition* root = again.composition();
  ASSERT_TRUE(root);
  EXPECT_EQ(root->width(), 1280) << "what follows from stored values is up to date";
  ASSERT_EQ(root->components().size(), 2);
  root->components()[1]->setOriginX(3);
  again.context.undo();
  EXPECT_TRUE(again.bytes() == graphic.bytes());
}

TEST_F(CompositionRecovery, CheckpointsHoldWhatThisProgramDoesNotKnow) {
  graphic.composition()->setDuration(9);
  ASSERT_TRUE(journal->checkpoint());
  graphic.composition()->components()[0]->setOriginX(12);
  ASSERT_TRUE(QDir(document.path).removeRecursively());
  Graphic again;
  expectRecovered(again);
}

}  // namespace

}  // namespace document
