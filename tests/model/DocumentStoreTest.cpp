#include <gtest/gtest.h>

#include <QDirIterator>

#include "ComponentFiles.h"
#include "model/CompositionSource.h"
#include "model/ModelEntities.h"
#include "store/XmlStore.h"

namespace model {

namespace {

/// Writes, opens and writes again; what was opened must be what was written.
void expectToSurviveStoring(const store::ObjectContext& context) {
  const QByteArray bytes = store::XmlStore(modelEntities()).write(context);
  store::XmlStore store(modelEntities());
  store::ObjectContext opened;
  const auto read = store.read(bytes, QStringLiteral("data.xml"), opened);
  ASSERT_TRUE(read) << read.error().text().toStdString();
  EXPECT_TRUE(store.warnings().isEmpty()) << store.warnings().join(u'\n').toStdString();
  EXPECT_FALSE(opened.hasChanges());
  EXPECT_TRUE(store::storeSnapshot(opened) == store::storeSnapshot(context));
  EXPECT_TRUE(store.write(opened) == bytes);
}

}  // namespace

TEST(DocumentStore, ExampleGraphicsSurviveIt) {
  const StandardComponents components = StandardComponents::located();
  QDirIterator files(QStringLiteral(TESSARY_SOURCE_DIR "/resources/examples"),
                     {QStringLiteral("*.json")}, QDir::Files, QDirIterator::Subdirectories);
  if (!files.hasNext() || !components.pathOf(QStringLiteral("Renderer")))
    GTEST_SKIP() << "no examples or no standard components at hand";
  while (files.hasNext()) {
    const QString source = files.next();
    SCOPED_TRACE(source.toStdString());
    const auto graphic = CompositionSource(components).compositionFromFile(source);
    ASSERT_TRUE(graphic) << graphic.error().text().toStdString();
    expectToSurviveStoring(*graphic->context);
  }
}

TEST(DocumentStore, ComponentsOfOneFileShareItsDataAndTheirProgram) {
  ComponentFiles files;
  const QString file = files.writeComponent(
      QStringLiteral("Part.qtz"), {{QStringLiteral("Text"), QStringLiteral("QCStringPort"),
                                    QStringLiteral("a\nb"), QStringLiteral("A text")}});
  Graphic graphic = emptyGraphic();
  QStringList warnings;
  for (int i = 0; i < 3; ++i) graphic->addComponenWithQuartzCompositionFile(file, {}, warnings);
  expectToSurviveStoring(*graphic.context);
  const QByteArray bytes = store::XmlStore(modelEntities()).write(*graphic.context);
  EXPECT_EQ(bytes.count("<block "), 1);

  store::ObjectContext opened;
  ASSERT_TRUE(store::XmlStore(modelEntities()).read(bytes, {}, opened));
  QList<const QuartzComponent*> components;
  for (const auto& [id, object] : opened.objects())
    if (const auto* component = dynamic_cast<QuartzComponent*>(object.get()))
      components.append(component);
  ASSERT_EQ(components.size(), 3);
  for (const QuartzComponent* component : components) {
    EXPECT_EQ(component->program(), components[0]->program());
    EXPECT_EQ(component->attributeForKey(QStringLiteral("Text"))->label(),
              QStringLiteral("A text"));
  }
}

}  // namespace model
