#include <gtest/gtest.h>

#include "ComponentFiles.h"
#include "model/ModelEntities.h"
#include "store/StoreSnapshot.h"
#include "store/XmlStore.h"
#include "support/Samples.h"

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

TEST(DocumentStore, GraphicsWithEverythingSurviveIt) {
  ComponentFiles files;
  const auto input = [](const char* key, const char* portClass) {
    return ComponentFiles::Input{
        QString::fromLatin1(key), QString::fromLatin1(portClass), {}, QString()};
  };
  const QString file = files.writeComponent(
      QStringLiteral("Part.qtz"),
      {input("Text", "QCStringPort"), input("Size", "QCNumberPort"), input("On", "QCBooleanPort"),
       input("Which", "QCIndexPort"), input("Paint", "QCColorPort"), input("Face", "QCGLImagePort"),
       input("Rich_Font_Name", "QCStringPort"), input("Rich_Font_Size", "QCNumberPort")});
  Graphic graphic = emptyGraphic();
  QStringList warnings;
  auto* component = graphic->addComponenWithQuartzCompositionFile(file, {}, warnings);
  ASSERT_TRUE(component) << warnings.join(u'\n').toStdString();
  QImage image(40, 30, QImage::Format_ARGB32_Premultiplied);
  image.fill(QColor(200, 100, 50, 128));
  graphic->setBackgroundImage(image);
  graphic->setPosterFrameTimepoint(0.8);
  graphic->addStopFrame(1, QStringLiteral("a\tb\u0001"));
  graphic->addRulerAtPosition(0.1, true);
  for (Attribute* attribute : component->attributes().list()) {
    if (attribute->animationPossible()) attribute->setAnimateable(true);
    if (attribute->type() == AttributeType::Image) attribute->setCurrentValue(image);
    if (attribute->type() == AttributeType::String)
      attribute->setCurrentValue(QStringLiteral(" two\nlines\r "));
  }
  expectToSurviveStoring(*graphic.context);
}

TEST(DocumentStore, SamplesSurviveIt) {
  if (support::samplePaths().isEmpty()) GTEST_SKIP() << "no sample compositions at hand";
  Graphic graphic = emptyGraphic();
  QStringList warnings;
  for (const QString& path : support::samplePaths())
    graphic->addComponenWithQuartzCompositionFile(path, {}, warnings);
  EXPECT_GT(graphic->components().size(), 0);
  expectToSurviveStoring(*graphic.context);
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
