#include <gmock/gmock.h>

#include <cmath>

#include "ComponentFiles.h"
#include "foundation/PropertyList.h"
#include "model/ComponentClipboard.h"
#include "model/ModelEntities.h"
#include "model/RichFontValue.h"
#include "runtime/CompositionRenderer.h"
#include "store/StoreSnapshot.h"
#include "support/RestoreSnapshot.h"

namespace model {

namespace {

using foundation::PropertyDictionary;

class ComponentDictionary : public testing::Test {
 protected:
  void SetUp() override {
    const QString string = QStringLiteral("QCStringPort");
    const QString path = files.writeComponent(
        QStringLiteral("a.qtz"),
        {{QStringLiteral("Text"), string, QStringLiteral("x"), QStringLiteral("Text [7] (Copy)")},
         {QStringLiteral("Tint"), QStringLiteral("QCColorPort"), {}, {}},
         {QStringLiteral("Picture"), QStringLiteral("QCGLImagePort"), {}, {}},
         {QStringLiteral("Font_Name"), string, QStringLiteral("Inter"), {}},
         {QStringLiteral("Font_Size"), QStringLiteral("QCNumberPort"), 24.0, {}},
         {QStringLiteral("Head_Rich_Font_Name"), string, QStringLiteral("Inter"), {}},
         {QStringLiteral("Head_Rich_Font_Size"), QStringLiteral("QCNumberPort"), 40.0, {}}});
    QImage picture(5, 4, QImage::Format_ARGB32);
    picture.fill(QColor(10, 200, 30, 40));
    original = graphic->addComponenWithQuartzCompositionFile(
        path, {{QStringLiteral("Picture"), picture}}, warnings);
    ASSERT_NE(original, nullptr);
    original->setTitle(QStringLiteral("Größe"));
    original->setStartTime(0.25);
    original->setConstrainProportions(true);
    Attribute& tint = *original->attributeForKey(QStringLiteral("Tint"));
    tint.addTimepoint(0.1, foundation::Color{0.1, 0.2, 0.3, 0.4});
    tint.addTimepoint(1.04, AttributeValue());
    original->attributeForKey(QStringLiteral("Text"))->setPermissionToChange(true);
  }

  ComponentFiles files;
  Graphic graphic = emptyGraphic();
  QuartzComponent* original = nullptr;
  QStringList warnings;
};

}  // namespace

TEST_F(ComponentDictionary, ACopyIsTheSameInEverything) {
  const PropertyDictionary dictionary = original->dictionaryWithData();
  EXPECT_EQ(
      dictionary.keys(),
      (QStringList{QStringLiteral("animateable"), QStringLiteral("attributes"),
                   QStringLiteral("compositionFilename"), QStringLiteral("constrainProportions"),
                   QStringLiteral("endTime"), QStringLiteral("quartzCompositionData"),
                   QStringLiteral("startTime"), QStringLiteral("title")}));
  EXPECT_EQ(dictionary.value(u"animateable"), foundation::PropertyValue(-1));
  const auto& first = dictionary.value(u"attributes").array().first().dictionary();
  EXPECT_EQ(first.size(), 10);
  EXPECT_EQ(first.value(u"category").toString(), QStringLiteral("Copy"));
  EXPECT_EQ(first.value(u"position").toInteger(), 7);

  // Through a file's bytes, as a clipboard would have it.
  const auto bytes = foundation::PropertyList::toBinary(dictionary);
  const auto read = foundation::PropertyList::fromData(bytes.value(), {});
  QuartzComponent* copy =
      QuartzComponent::createWithDictionaryData(read->dictionary(), *graphic, warnings);
  ASSERT_NE(copy, nullptr) << warnings.join(u' ').toStdString();
  EXPECT_EQ(copy->dictionaryWithData() == dictionary, true);
  EXPECT_EQ(copy->renderer()->valueForInputKey(QStringLiteral("Head_Rich_Font_Size")).toNumber(),
            40);
  graphic.context->undo();
  EXPECT_EQ(graphic->components().size(), 1);
}

TEST_F(ComponentDictionary, TheClipboardCarriesComponentsWhole) {
  const auto data = ComponentClipboard::dataForComponents({original, original});
  ASSERT_TRUE(data) << data.error().text().toStdString();
  const auto read = ComponentClipboard::dictionariesFromData(*data);
  ASSERT_TRUE(read) << read.error().text().toStdString();
  ASSERT_EQ(read->size(), 2);
  QuartzComponent* pasted =
      QuartzComponent::createWithDictionaryData(read->last(), *graphic, warnings);
  ASSERT_NE(pasted, nullptr);
  EXPECT_EQ(pasted->dictionaryWithData() == original->dictionaryWithData(), true);
  for (const QByteArray& other : {QByteArray(), QByteArray("text"), data->left(data->size() / 2)})
    EXPECT_FALSE(ComponentClipboard::dictionariesFromData(other));
}

TEST_F(ComponentDictionary, ABrokenCompositionGivesAWarning) {
  PropertyDictionary dictionary = original->dictionaryWithData();
  dictionary.insert(QStringLiteral("quartzCompositionData"), QByteArray("nonsense"));
  EXPECT_EQ(QuartzComponent::createWithDictionaryData(dictionary, *graphic, warnings), nullptr);
  EXPECT_EQ(warnings.size(), 1);
  EXPECT_EQ(graphic->components().size(), 1);
}

TEST_F(ComponentDictionary, StrangeAttributesDoNoHarm) {
  using foundation::PropertyArray;
  using foundation::PropertyValue;
  const auto tagged = [](const char16_t* tag, PropertyValue value) {
    return PropertyValue(PropertyDictionary{{QString::fromUtf16(tag), std::move(value)}});
  };
  const QList<PropertyValue> strange{
      PropertyValue(),
      true,
      qint64(-5),
      std::numeric_limits<qint64>::max(),
      std::nan(""),
      double(INFINITY),
      QStringLiteral("text"),
      QByteArray("\x01"),
      PropertyArray{1, 2},
      tagged(u"color", PropertyArray{std::nan(""), -3.0, 1e300, 2.0}),
      tagged(u"image", QByteArray("x")),
      tagged(u"font", PropertyDictionary()),
      tagged(u"richFont", PropertyDictionary()),
      tagged(u"nan", 1.0)};
  const PropertyDictionary good = original->dictionaryWithData();
  const PropertyArray attributes = good.value(u"attributes").array();
  graphic->setEditorTimepoint(0.5);
  const auto tryOne = [&](qsizetype place, const PropertyDictionary& attribute) {
    PropertyArray list;
    for (qsizetype i = 0; i < attributes.size(); ++i)
      list.append(i == place ? PropertyValue(attribute) : attributes[i]);
    PropertyDictionary dictionary = good;
    dictionary.insert(QStringLiteral("attributes"), list);
    QuartzComponent* made =
        QuartzComponent::createWithDictionaryData(dictionary, *graphic, warnings);
    ASSERT_NE(made, nullptr);
    (void)made->renderForView({20, 20}, 0.5);
    for (Attribute* each : made->attributes()) {
      (void)each->keyFrameInformation();
      (void)each->quartzValues();
      for (const double time : each->sortedKeyFrames()) EXPECT_TRUE(std::isfinite(time));
    }
    graphic->removeComponents({made});
  };
  for (qsizetype i = 0; i < attributes.size(); ++i)
    for (const PropertyValue& value : strange) {
      PropertyDictionary animated = attributes[i].dictionary();
      animated.insert(QStringLiteral("animateable"), true);
      animated.insert(QStringLiteral("values"), PropertyDictionary{{QStringLiteral("0"), value},
                                                                   {QStringLiteral("1"), value},
                                                                   {QStringLiteral("inf"), value},
                                                                   {QStringLiteral("nan"), value}});
      tryOne(i, animated);
      for (const QString& key : animated.keys()) {
        PropertyDictionary attribute = attributes[i].dictionary();
        attribute.insert(key, value);
        tryOne(i, attribute);
      }
    }
}

TEST_F(ComponentDictionary, OlderDocumentsGetWhatTheyLackAndFontsStandStill) {
  PropertyDictionary dictionary = original->dictionaryWithData();
  foundation::PropertyArray kept;
  for (const auto& entry : dictionary.value(u"attributes").array()) {
    PropertyDictionary attribute = entry.dictionary();
    const QString key = attribute.value(u"key").toString();
    if (key == QLatin1String("marginX") || key == QLatin1String("marginY") ||
        key == QLatin1String("visibleInCompositionEditor"))
      continue;
    if (key == QLatin1String("Font_Name")) {
      attribute.insert(QStringLiteral("animateable"), true);
      KeyFrames values;
      values.set(1, FontValue{QStringLiteral("Inter"), 33});
      values.set(2, FontValue{QStringLiteral("Inter"), 44});
      attribute.insert(QStringLiteral("values"), store::CodecOf<KeyFrames>::encode(values));
    }
    kept.append(attribute);
  }
  dictionary.insert(QStringLiteral("attributes"), kept);
  QuartzComponent* copy = QuartzComponent::createWithDictionaryData(dictionary, *graphic, warnings);
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->attributes().size(), original->attributes().size());
  EXPECT_TRUE(copy->visibleInCompositionEditor());
  EXPECT_EQ(copy->marginX(), 0);
  const Attribute& font = *copy->attributeForKey(QStringLiteral("Font_Name"));
  EXPECT_FALSE(font.animateable());
  EXPECT_EQ(font.currentValue(), AttributeValue(FontValue{QStringLiteral("Inter"), 33}));
}

TEST_F(ComponentDictionary, ValuesAreReachedByAttributeKey) {
  int announced = 0;
  const auto bound =
      original->observe(QStringLiteral("Text"), [&](const store::Change&) { ++announced; });
  EXPECT_TRUE(original->setValueForKey(QVariant::fromValue(AttributeValue(QStringLiteral("new"))),
                                       QStringLiteral("Text")));
  EXPECT_EQ(original->valueForKey(QStringLiteral("Text")).value<AttributeValue>(),
            AttributeValue(QStringLiteral("new")));
  EXPECT_EQ(original->renderer()->valueForInputKey(QStringLiteral("Text")).toString(),
            QStringLiteral("new"));
  EXPECT_TRUE(original->needsUpdate());
  EXPECT_FALSE(original->setValueForKey(QVariant::fromValue(AttributeValue(1.0)),
                                        QStringLiteral("No such key")));
  original->sendChangeNotificationForValues(AbstractComponent::Announced::OnlyAnimateable);
  EXPECT_EQ(announced, 0);
  original->sendChangeNotificationForValues(AbstractComponent::Announced::All);
  EXPECT_EQ(announced, 1);
}

TEST_F(ComponentDictionary, ControlsSetPlainValuesByKey) {
  const auto set = [&](const char* key, const QVariant& value) {
    return original->setValueForKey(value, QString::fromLatin1(key));
  };
  EXPECT_TRUE(set("Text", QStringLiteral("typed")));
  EXPECT_TRUE(set("opacity", 0.5));
  EXPECT_EQ(original->valueForKey(QStringLiteral("opacity")).toDouble(), 0.5);
  EXPECT_TRUE(set("Tint", QColor(255, 0, 0)));
  original->setConstrainProportions(false);
  EXPECT_TRUE(set("width", 320));
  EXPECT_EQ(original->width(), 320);
  EXPECT_TRUE(set("opacityHumanReadable", 25));
  EXPECT_EQ(original->opacity(), 0.25);
  EXPECT_FALSE(set("originX", QStringLiteral("left")));
  EXPECT_FALSE(set("Picture", 5));
  EXPECT_FALSE(set("Font_Name", QStringLiteral("Inter")));
}

TEST_F(ComponentDictionary, AStoreIsRestoredAndOlderOnesAreCompleted) {
  graphic->addStopFrame(1, QStringLiteral("Out"));
  graphic->addRulerAtPosition(100, true);
  const auto snapshot = store::storeSnapshot(*graphic.context);
  const auto bytes = foundation::PropertyList::toXml(snapshot);
  store::ObjectContext fresh;
  ASSERT_TRUE(support::restoreSnapshot(
      foundation::PropertyList::fromData(bytes.value(), {}).value(), modelEntities(), fresh));
  EXPECT_EQ(store::storeSnapshot(fresh) == snapshot, true);
  EXPECT_FALSE(fresh.canUndo());
  EXPECT_FALSE(fresh.hasChanges());
  const auto* again =
      static_cast<const Composition*>(fresh.objectWithId(graphic.composition->objectId()));
  EXPECT_EQ(again->width(), 1920);
  const QuartzComponent* component = again->components().front();
  const Attribute* text = component->attributeForKey(QStringLiteral("Text"));
  EXPECT_EQ(text->position(), 7u);  // read again from the composition
  EXPECT_EQ(text->category(), QStringLiteral("Copy"));
  EXPECT_EQ(
      component->renderer()->valueForInputKey(QStringLiteral("Head_Rich_Font_Size")).toNumber(),
      40);

  // A document from before there were margins.
  foundation::PropertyArray older;
  for (const auto& entry : snapshot.array()) {
    const QString key = entry.dictionary().value(u"values").dictionary().value(u"key").toString();
    if (!key.startsWith(QLatin1String("margin"))) older.append(entry);
  }
  store::ObjectContext upgraded;
  ASSERT_TRUE(support::restoreSnapshot(older, modelEntities(), upgraded));
  EXPECT_EQ(upgraded.objects().size(), fresh.objects().size());
  EXPECT_FALSE(upgraded.canUndo());

  older.append(older.first());
  store::ObjectContext refused;
  EXPECT_FALSE(support::restoreSnapshot(older, modelEntities(), refused));  // a number twice
  EXPECT_TRUE(refused.objects().empty());
}

TEST_F(ComponentDictionary, UndoReachesTheRenderer) {
  Attribute& text = *original->attributeForKey(QStringLiteral("Text"));
  const auto shown = [&] {
    return original->renderer()->valueForInputKey(QStringLiteral("Text")).toString();
  };
  text.setCurrentValue(QStringLiteral("new"));
  EXPECT_EQ(shown(), QStringLiteral("new"));
  graphic.context->undo();
  EXPECT_EQ(shown(), QStringLiteral("x"));
  graphic->removeComponents({original});
  graphic.context->undo();
  EXPECT_EQ(shown(), QStringLiteral("x"));  // by a new renderer
}

TEST_F(ComponentDictionary, InformationForFileBrowsers) {
  const PropertyDictionary info = original->componentInfo();
  EXPECT_EQ(info.value(u"title").toString(), QStringLiteral("Größe"));
  const auto& list = info.value(u"attributes").array();
  EXPECT_EQ(list.size(), original->attributes().size());
  EXPECT_EQ(list.first(), foundation::PropertyValue(
                              PropertyDictionary{{QStringLiteral("animateable"), false},
                                                 {QStringLiteral("key"), QStringLiteral("Text")},
                                                 {QStringLiteral("label"), QStringLiteral("Text ")},
                                                 {QStringLiteral("permissionToChange"), true}}));
}

}  // namespace model
