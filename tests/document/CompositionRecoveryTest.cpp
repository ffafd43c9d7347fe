#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "document/recovery/RecoveryJournal.h"
#include "document/recovery/ValueStream.h"
#include "foundation/DurableFile.h"
#include "model/Composition.h"
#include "model/ModelEntities.h"
#include "quartz/QuartzComposition.h"

namespace document {

namespace {

using model::Composition;
using store::ObjectContext;

QByteArray bytesOf(const ObjectContext& context) {
  QByteArray bytes;
  ValueWriter(bytes).value(store::storeSnapshot(context));
  return bytes;
}

foundation::Result<void> readInto(const QByteArray& bytes, const QString&, ObjectContext& context) {
  return store::restoreSnapshot(ValueReader(bytes).value(), model::modelEntities(), context);
}

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

TEST(CompositionRecovery, GraphicsComeBackReadyToGoOn) {
  const QTemporaryDir folder;
  const RecoveryStore store(folder.filePath(QStringLiteral("state")));
  const DocumentName document{folder.filePath(QStringLiteral("News.composition")),
                              QStringLiteral("News")};
  ObjectContext context;
  auto* composition = context.insert(
      std::make_unique<Composition>(model::VideoResolution(QStringLiteral("HD 1080i25"))));
  QStringList warnings;
  auto* component = composition->addComponenWithQuartzCompositionFile(
      writeComponent(folder.filePath(QStringLiteral("part.qtz"))), {}, warnings);
  ASSERT_TRUE(component);
  context.markSaved();
  ASSERT_TRUE(QDir().mkdir(document.path));
  ASSERT_TRUE(foundation::replaceFile(storePathOf(document.path), bytesOf(context)));

  auto journal =
      std::make_unique<RecoveryJournal>(context, store, document, bytesOf(context),
                                        RecoveryJournal::Host{[&] { return bytesOf(context); }});
  component->setOriginX(12);
  component->setTitle(QStringLiteral("Größe"));
  EXPECT_LT(journal->size(), 1000) << "the composition of the component did not change";
  composition->setVideoResolution(model::VideoResolution(QStringLiteral("HD 720p50")));
  composition->setDuration(9);
  composition->setBackgroundImage(QImage(20, 10, QImage::Format_ARGB32));
  (void)model::QuartzComponent::createWithDictionaryData(component->dictionaryWithData(),
                                                         *composition, warnings);
  composition->removeComponents(composition->components().list().mid(0, 1));
  context.undo();
  context.insert(std::make_unique<model::StopFrame>(1.5, QStringLiteral("Second person")))
      ->setComposition(composition);
  const qint64 changes = journal->changes();
  journal.reset();

  const QList<RecoveryEntry> entries = store.recoverable();
  ASSERT_EQ(entries.size(), 1);
  ObjectContext again;
  const auto recovered = store.recover(entries.first(), readInto, model::modelEntities(), again);
  ASSERT_TRUE(recovered) << recovered.error().text().toStdString();
  EXPECT_EQ(recovered->warnings, QStringList());
  EXPECT_EQ(recovered->changes, changes);
  EXPECT_TRUE(bytesOf(again) == bytesOf(context));
  auto* root = dynamic_cast<Composition*>(again.objects().begin()->second.get());
  ASSERT_TRUE(root);
  EXPECT_EQ(root->width(), 1280) << "what follows from stored values is up to date";
  EXPECT_EQ(root->components().size(), 2);
  root->components()[1]->setOriginX(3);
  again.undo();
  EXPECT_TRUE(bytesOf(again) == bytesOf(context));
}

}  // namespace

}  // namespace document
