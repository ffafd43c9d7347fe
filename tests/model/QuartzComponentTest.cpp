#include "model/QuartzComponent.h"

#include <QFile>
#include <QFileInfo>

#include "ComponentFiles.h"
#include "model/RenderInImageWrapper.h"
#include "runtime/CompositionRenderer.h"

namespace model {

namespace {

QStringList keysOf(const QuartzComponent& component) {
  QStringList keys;
  for (const auto& attribute : component.attributes()) keys.append(attribute->key());
  return keys;
}

class ComponentFromFile : public testing::Test {
 protected:
  void SetUp() override {
    m_oldCache = qgetenv("XDG_CACHE_HOME");
    qputenv("XDG_CACHE_HOME", m_cache.path().toUtf8());
  }
  void TearDown() override { qputenv("XDG_CACHE_HOME", m_oldCache); }
  QuartzComponent* load(const QString& path) {
    return m_graphic->addComponenWithQuartzCompositionFile(path, {}, m_warnings);
  }

  QTemporaryDir m_cache;
  QByteArray m_oldCache;
  ComponentFiles m_files;
  Graphic m_graphic = emptyGraphic();
  QStringList m_warnings;
};

}  // namespace

TEST_F(ComponentFromFile, MakesAttributesOfInputsThenTheStandardOnes) {
  const QString number = QStringLiteral("QCNumberPort");
  const QString path = m_files.writeComponent(
      QStringLiteral("Box.qtz"), {{QStringLiteral("SpeCIal"), number, 2.0, QStringLiteral("B [5]")},
                                  {QStringLiteral("First"), number, 1.0, {}},
                                  {QStringLiteral("inputWidth"), number, 0.0, {}},
                                  {QStringLiteral("inputHeight"), number, 90.7, {}},
                                  {QStringLiteral("CIRadius"), number, 3.0, {}}});
  const QuartzComponent* component = load(path);
  ASSERT_NE(component, nullptr);
  EXPECT_TRUE(m_warnings.isEmpty());
  EXPECT_EQ(component->title(), QStringLiteral("Box"));
  EXPECT_EQ(
      keysOf(*component),
      (QStringList{QStringLiteral("SpeCIal"), QStringLiteral("First"), QStringLiteral("CIRadius"),
                   QStringLiteral("inputWidth"), QStringLiteral("inputHeight"),
                   QStringLiteral("originX"), QStringLiteral("originY"), QStringLiteral("opacity"),
                   QStringLiteral("zRotation"), QStringLiteral("marginX"),
                   QStringLiteral("marginY"), QStringLiteral("visibleInCompositionEditor")}));
  EXPECT_EQ(component->attributes()[0]->position(), 5u);
  EXPECT_EQ(component->attributes()[1]->position(), 0u);
  EXPECT_EQ(component->attributes()[2]->position(), 1u);
  EXPECT_TRUE(component->attributes()[2]->permissionToChange());
  EXPECT_FALSE(component->attributes()[0]->permissionToChange());
  // 0 becomes 200; whole pixels; centred.
  EXPECT_EQ(component->drawingFrame(), QRectF(860, 495, 200, 90));
  EXPECT_EQ(component->endTime(), 2);
  EXPECT_TRUE(component->visibleInCompositionEditor());
  EXPECT_EQ(component->zLevel(), 1u);
}

TEST_F(ComponentFromFile, AConsumerIsWrapped) {
  const QuartzComponent* component = load(m_files.writeConsumer(QStringLiteral("Paint.box.qtz")));
  ASSERT_NE(component, nullptr) << m_warnings.join(u' ').toStdString();
  const QFileInfo wrapped(component->compositionFilename());
  EXPECT_EQ(wrapped.path(), wrappedCompositionFolder());
  EXPECT_TRUE(wrapped.path().startsWith(m_cache.path()));
  EXPECT_EQ(wrapped.fileName(), QStringLiteral("Paint.box-Wrapped.qtz"));
  EXPECT_TRUE(component->renderer()->outputKeys().contains(QStringLiteral("outputImage")));
  EXPECT_TRUE(keysOf(*component).contains(QStringLiteral("Paint")));
  EXPECT_EQ(component->drawingFrame().size(), QSizeF(200, 200));
  EXPECT_FALSE(component->quartzCompositionData().contains("pixelFormat"));
}

TEST_F(ComponentFromFile, FilesThatCannotBeLoadedGiveOneWarning) {
  EXPECT_EQ(load(QStringLiteral("/nowhere/at all.qtz")), nullptr);
  QFile junk(m_files.path(QStringLiteral("junk.qtz")));
  ASSERT_TRUE(junk.open(QIODevice::WriteOnly));
  junk.write("not a list");
  junk.close();
  EXPECT_EQ(load(junk.fileName()), nullptr);
  ASSERT_EQ(m_warnings.size(), 2);
  EXPECT_TRUE(m_warnings[0].startsWith(
      QStringLiteral("Could not load composition \"/nowhere/at all.qtz\"")));
  EXPECT_TRUE(m_graphic->components().isEmpty());
}

TEST_F(ComponentFromFile, AMissingFontIsSubstituted) {
  const QString path = m_files.writeComponent(
      QStringLiteral("Text.qtz"),
      {{QStringLiteral("Font_Name"),
        QStringLiteral("QCStringPort"),
        QStringLiteral("No Such Font"),
        {}},
       {QStringLiteral("Font_Size"), QStringLiteral("QCNumberPort"), 24.0, {}}});
  const QuartzComponent* component = load(path);
  ASSERT_NE(component, nullptr);
  ASSERT_EQ(m_warnings.size(), 1);
  EXPECT_TRUE(m_warnings[0].startsWith(
      QStringLiteral("Could not find font \"No Such Font\", substituted with font \"")));
  const AttributeValue value = component->attributes().front()->currentValue();
  EXPECT_EQ(value.as<FontValue>()->size, 24);
}

TEST_F(ComponentFromFile, TimesAreCoercedAndSizesKeepTheirRatio) {
  QuartzComponent* component = load(m_files.writeComponent(QStringLiteral("a.qtz"), {}));
  ASSERT_NE(component, nullptr);
  component->setStartTime(1);
  component->setDuration(-1);
  EXPECT_EQ(component->endTime(), 2);
  EXPECT_EQ(component->validatedEndTime(0.5), 1);
  EXPECT_EQ(component->validatedStartTime(3), 2);
  EXPECT_EQ(component->animateable(), 0);
  component->attributeForKey(QStringLiteral("opacity"))->addTimepoint(1, 0.5);
  EXPECT_EQ(component->animateable(), -1);
  component->setAnimateable(-1);
  EXPECT_EQ(component->animateable(), 0);
  component->setWidth(300);
  component->setConstrainProportions(true);
  component->setWidth(100);
  EXPECT_EQ(component->height(), 67);
  component->setWidth(-1);
  EXPECT_EQ(component->width(), 100);
}

}  // namespace model
