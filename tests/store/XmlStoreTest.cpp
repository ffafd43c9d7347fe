#include "store/XmlStore.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "store/StoreSnapshot.h"
#include "support/StoreObjects.h"

namespace store {

namespace {

using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::PropertyValue;
using support::Box;
using support::Item;
using support::OlderItem;
using support::RandomValues;
using testing::HasSubstr;

const QString path = QStringLiteral("data.xml");

/// A context that was read from a file, with the store that read it.
struct Document {
  explicit Document(EntityFactories factories = support::storeEntities(), MigrationSteps steps = {})
      : store(std::move(factories), std::move(steps)) {}
  [[nodiscard]] foundation::Result<void> read(const QByteArray& xml) {
    return store.read(xml, path, context);
  }
  [[nodiscard]] QByteArray write() const { return store.write(context); }
  template <typename T>
  [[nodiscard]] T* object(ObjectId id) const {
    return static_cast<T*>(context.objectWithId(id));
  }
  [[nodiscard]] std::string warnings() const {
    return store.warnings().join(QLatin1Char('\n')).toStdString();
  }
  XmlStore store;
  ObjectContext context;
};

QByteArray file(const QByteArray& content, const QByteArray& attributes = "version=\"1\"") {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<store " + attributes + ">\n" + content +
         "</store>\n";
}

const QByteArray twoItems = file(R"(  <object entity="Box" id="1">
  </object>
  <object entity="Item" id="2">
    <relation key="box" to="1"/>
    <dictionary key="any">
      <array key="list">
        <real>0.1</real>
        <string>a &lt; b &amp; c</string>
      </array>
      <data key="png">iVBORw==</data>
    </dictionary>
    <string key="title">Bar</string>
    <real key="x">272</real>
    <real key="y">-0.5</real>
  </object>
  <object entity="Item" id="5">
    <null key="any"/>
    <string key="title"/>
    <real key="x">0</real>
    <real key="y">0</real>
  </object>
)");

QString reasonFor(const QByteArray& xml) {
  Document document;
  const auto read = document.read(xml);
  EXPECT_TRUE(document.context.objects().empty() || read);
  if (read) return {};
  EXPECT_EQ(read.error().file, path);
  return read.error().detail;
}

}  // namespace

TEST(XmlStore, MovingAnObjectChangesOnlyTheLinesOfItsPlace) {
  Document document;
  ASSERT_TRUE(document.read(twoItems));
  EXPECT_EQ(document.warnings(), "");
  EXPECT_FALSE(document.context.hasChanges());
  EXPECT_FALSE(document.context.canUndo());
  EXPECT_EQ(document.write().toStdString(), twoItems.toStdString());
  document.object<Item>(2)->setX(300.25);
  QByteArray expected = twoItems;
  expected.replace("<real key=\"x\">272<", "<real key=\"x\">300.25<");
  EXPECT_EQ(document.write().toStdString(), expected.toStdString());
  EXPECT_EQ(document.context.insert(std::make_unique<Item>())->objectId(), 6);
}

TEST(XmlStore, EveryKindOfValueReadsBackTheSame) {
  const double least = std::numeric_limits<double>::denorm_min();
  QString deep = QStringLiteral("leaf");
  PropertyValue nested = deep;
  for (int i = 0; i < 300; ++i) nested = PropertyArray{nested};
  const QList<PropertyValue> values{
      {},
      true,
      0,
      std::numeric_limits<qint64>::min(),
      std::numeric_limits<quint64>::max(),
      0.0,
      -0.0,
      1.0 / 3,
      least,
      std::numeric_limits<double>::max(),
      std::numeric_limits<double>::infinity(),
      -std::numeric_limits<double>::infinity(),
      std::numeric_limits<double>::quiet_NaN(),
      QString(),
      QStringLiteral("  leading, \t\r\n trailing \n"),
      QStringLiteral("\\u0041 \\ ]]> &amp; <b>"),
      QString(QChar(0)) + QChar(7) + QChar(0xFFFF) + QLatin1Char('\\'),
      QString(QChar(0xD800)) + QLatin1Char('x') + QChar(0xDC00) + QChar(0xDC00),
      QString(QChar(0xFEFF)) + QStringLiteral("mark"),
      QByteArray(),
      QByteArray("\0\1\xFF", 3),
      QByteArray(57, 'x'),
      QByteArray(58, 'y'),
      QDateTime(),
      QDateTime::fromMSecsSinceEpoch(1234567890123, Qt::UTC),
      QDateTime::fromMSecsSinceEpoch(-300000000000000, Qt::UTC),
      PropertyValue::Uid{7},
      PropertyArray(),
      PropertyDictionary(),
      PropertyDictionary{{QString(), 1},
                         {QStringLiteral(" \t\n\r\"<'"), QByteArray(100, 'z')},
                         {QString(QChar(3)), PropertyArray{QByteArray(100, 'z')}}},
      nested};
  Document document;
  for (const PropertyValue& value : values)
    document.context.insert(std::make_unique<Item>())->setAny(value);
  const QByteArray bytes = document.write();
  EXPECT_EQ(bytes.count(QByteArray(100, 'z').toBase64().first(76)), 1);  // equal data once
  Document again;
  ASSERT_TRUE(again.read(bytes));
  EXPECT_EQ(again.warnings(), "");
  for (qsizetype i = 0; i < values.size(); ++i) {
    const PropertyValue& read = again.object<Item>(static_cast<ObjectId>(i) + 1)->any();
    EXPECT_TRUE(read == values[i]) << "value " << i;
    EXPECT_EQ(std::signbit(read.toDouble()), std::signbit(values[i].toDouble())) << "value " << i;
  }
  EXPECT_EQ(again.write().toStdString(), bytes.toStdString());
}

TEST(XmlStore, ReadsWhatPeopleEditedByHand) {
  QByteArray edited =
      "\xEF\xBB\xBF<!-- ours --><store version = '1' >"
      "<object id='5' entity='Item'><integer key='x'> 7 </integer>\n\n<!-- gone: y --></object>"
      "<block name='photo'>AAEC\n AwQF </block>"
      "<object entity=\"Item\" id=\"2\"\n><string\nkey='title'>a\nb "
      "&#x263A;<![CDATA[<&>]]></string>"
      "<data key='any' block='photo'></data><relation to=\"1\" key=\"box\"></relation></object>"
      "<?note?><object entity=\"Box\" id=\"1\"/>\n</store>\n<!-- end -->";
  for (const bool isWindows : {false, true}) {
    if (isWindows) edited.replace("\n", "\r\n");
    Document document;
    const auto read = document.read(edited);
    ASSERT_TRUE(read) << read.error().text().toStdString();
    EXPECT_EQ(document.warnings(), "");
    EXPECT_EQ(document.object<Item>(2)->title(), QStringLiteral("a\nb ☺<&>"));
    EXPECT_EQ(document.object<Item>(2)->any().toData(), QByteArray("\0\1\2\3\4\5", 6));
    EXPECT_EQ(document.object<Item>(2)->valueForKey(QStringLiteral("box")).value<ManagedObject*>(),
              document.object<Box>(1));
    EXPECT_EQ(document.object<Item>(5)->x(), 7);
    EXPECT_EQ(document.object<Item>(5)->title(), QStringLiteral("untitled"));
  }
}

TEST(XmlStore, WhatIsUnknownIsKeptAlsoByObjectsThatComeBack) {
  const QByteArray unknown = file(R"(  <object entity="Gadget" id="1" locked="yes">
    <relation key="owner" to="2"/>
    <data key="picture" block="b"/>
    <vector key="route"><x>1</x></vector>
    <style/>
  </object>
  <object entity="Item" id="2" note='"a"'>
    <relation key="box" to="1"/>
    <relation key="friend" to="99"/>
    <null key="any"/>
    <real key="shade">0.25</real>
    <string key="title">Bar</string>
    <real key="x" unit="pt">3</real>
    <real key="y">high</real>
    <vector key="z"><x>1</x></vector>
    <style name="s">&#65;</style>
  </object>
  <settings grid="10"><b/></settings>
  <block name="b">
)" + QByteArray(60, 'A').toBase64() + "\n  </block>\n",
                                  "version=\"1\" author=\"me\"");
  // Data is named by its contents when a value that can be read speaks of it.
  Document document;
  ASSERT_TRUE(document.read(unknown));
  EXPECT_THAT(document.warnings(), HasSubstr("The kind \"Gadget\" is unknown here: one object"));
  EXPECT_THAT(document.warnings(), HasSubstr("\"friend\" of the kind \"Item\" is unknown"));
  EXPECT_THAT(document.warnings(), HasSubstr("\"shade\" of the kind \"Item\""));
  EXPECT_THAT(document.warnings(), HasSubstr("Line 16: \"y\" of object 2 (Item) cannot be read."));
  EXPECT_THAT(document.warnings(), HasSubstr("Line 15: \"x\" of object 2 (Item) can be read only"));
  const QByteArray written = document.write();
  QByteArray expected = unknown;
  const QByteArray name = written.mid(written.indexOf("block=\"") + 7, 40);
  EXPECT_EQ(QByteArray::fromHex(name).size(), 20);
  expected.replace("block=\"b\"", "block=\"" + name + "\"");
  const qsizetype lines = written.indexOf("  <block name=\"" + name);
  EXPECT_EQ(written.first(lines).toStdString(),
            expected.first(expected.indexOf("  <block")).toStdString());

  Item* item = document.object<Item>(2);
  document.context.remove(*item);
  EXPECT_FALSE(document.write().contains("friend"));
  document.context.undo();
  EXPECT_EQ(document.write().toStdString(), written.toStdString());
  item->setX(4);  // now the value counts
  EXPECT_TRUE(document.write().contains("<real key=\"x\">4</real>"));
  EXPECT_TRUE(document.write().contains("<real key=\"y\">high</real>"));
  EXPECT_EQ(document.context.insert(std::make_unique<Item>())->objectId(), 3);

  Document again;
  ASSERT_TRUE(again.read(written));
  EXPECT_EQ(again.write().toStdString(), written.toStdString());
}

TEST(XmlStore, AnOlderProgramLosesNothingOfRandomFiles) {
  for (quint32 seed = 0; seed < 60; ++seed) {
    SCOPED_TRACE(seed);
    RandomValues random(seed);
    Document full;
    Box* box = full.context.insert(std::make_unique<Box>());
    for (int i = 0; i < 12; ++i) {
      Item* item = full.context.insert(std::make_unique<Item>());
      item->setTitle(random.text());
      item->setAny(random.value());
      item->setX(random.real());
      if (random.below(2) == 0) item->setBox(box);
      if (random.below(5) == 0) full.context.remove(*item);
    }
    const QByteArray bytes = full.write();
    Document older(support::olderStoreEntities());
    ASSERT_TRUE(older.read(bytes));
    EXPECT_EQ(older.write().toStdString(), bytes.toStdString());
    // Changes there keep what is unknown.
    for (const auto& [id, object] : full.context.objects()) {
      if (id == 1) continue;
      static_cast<Item*>(object.get())->setX(static_cast<double>(id));
      older.object<OlderItem>(id)->setX(static_cast<double>(id));
    }
    while (older.context.objects().size() > 2)
      older.context.remove(*older.context.objects().begin()->second);
    while (older.context.objects().size() + 1 < full.context.objects().size()) older.context.undo();
    EXPECT_EQ(older.write().toStdString(), full.write().toStdString());
    Document again;
    ASSERT_TRUE(again.read(older.write()));
    EXPECT_TRUE(storeSnapshot(again.context) == storeSnapshot(full.context));
  }
}

TEST(XmlStore, OlderFilesAreBroughtToTheCurrentVersion) {
  const MigrationSteps steps{
      [](std::vector<StoredObject>& objects) {  // "Thing" became "Item"
        for (StoredObject& object : objects)
          if (object.entity == QLatin1String("Thing")) object.entity = QStringLiteral("Item");
      },
      [](std::vector<StoredObject>& objects) {  // "left" became "x", and is counted in pixels
        for (StoredObject& object : objects)
          if (StoredValue* left = object.value(QStringLiteral("left"))) {
            left->key = QStringLiteral("x");
            left->value = left->value.toDouble() * 100;
          }
      }};
  const QByteArray object =
      "<object entity=\"Thing\" id=\"3\"><string key=\"title\">T</string>"
      "<real key=\"left\">0.5</real><null key=\"new\"/></object>";
  Document document(support::storeEntities(), steps);
  ASSERT_TRUE(document.read(file(object)));
  EXPECT_THAT(document.warnings(), HasSubstr("had version 1 and was brought to version 3"));
  ASSERT_TRUE(document.object<Item>(3));
  EXPECT_EQ(document.object<Item>(3)->x(), 50);
  EXPECT_TRUE(document.object<Item>(3)->any().isNull());  // what is missing has its default
  const QByteArray written = document.write();
  EXPECT_TRUE(written.contains("<store version=\"3\">"));
  EXPECT_TRUE(written.contains("<null key=\"new\"/>"));
  Document again(support::storeEntities(), steps);
  ASSERT_TRUE(again.read(written));
  EXPECT_EQ(again.warnings(),
            "\"new\" of the kind \"Item\" is unknown here and kept as it is (one "
            "object).");
  EXPECT_EQ(again.write().toStdString(), written.toStdString());
}

TEST(XmlStore, NewerFilesAreReadAsFarAsTheyCanBe) {
  QByteArray newer = twoItems;
  newer.replace("<store version=\"1\"", "<store version=\"7\"");
  newer.replace("<null key=\"any\"/>", "<matrix key=\"any\">1 0 0 1</matrix>");
  newer.replace("<string key=\"title\"/>", "<array key=\"title\"/>");
  Document document;
  ASSERT_TRUE(document.read(newer));
  EXPECT_THAT(document.warnings(), HasSubstr("newer version of this program"));
  EXPECT_EQ(document.object<Item>(5)->title(), QStringLiteral("untitled"));
  const QByteArray written = document.write();
  EXPECT_EQ(written.toStdString(), newer.toStdString());
  document.object<Item>(5)->setTitle(QStringLiteral("chosen"));
  EXPECT_TRUE(document.write().contains("<string key=\"title\">chosen</string>"));
}

TEST(XmlStore, BadFilesAreRefusedWithLineAndReason) {
  const QByteArray item = "<object entity=\"Item\" id=\"1\">\n</object>\n";
  QByteArray deep;
  for (int i = 0; i < 600; ++i) deep += "<array key=\"k\">";
  const std::vector<std::pair<QByteArray, const char*>> bad{
      {"", "line 1: the file is empty"},
      {"plain text", "line 1: it is not XML"},
      {"bplist00\x01", "a control character"},
      {"\n<plist version=\"1.0\"/>", "line 2: it is no store: its root is <plist>"},
      {"<store>\n</store>", "line 1: the store has no version number"},
      {"<store version=\"one\"/>", "\"one\" is no version number"},
      {"<store version=\"0\"/>", "\"0\" is no version number"},
      {"<!DOCTYPE store [<!ENTITY a \"aaa\">]>\n<store version=\"1\"/>",
       "line 1: a document type declaration"},
      {file("<object entity=\"Item\" id=\"1\"><string key=\"title\">\n&a;</string></object>"),
       "line 4: a reference"},
      {file(item + item), "line 5: there are two objects with the number 1 (see line 3)"},
      {file("<object entity=\"Item\"/>"), "line 3: an object has no number"},
      {file("<object entity=\"Item\" id=\"-1\"/>"), "an object has no number"},
      {file("<object entity=\"Item\" id=\"99999999999999999999\"/>"), "an object has no number"},
      {file("<object id=\"1\"/>"), "an object has no \"entity\""},
      {file("<object entity=\"Item\" id=\"1\">\n<real key=\"x\">1</real>\n<real key=\"x\">2</real>"
            "</object>"),
       "line 5: \"x\" is there twice in object 1"},
      {file("<object entity=\"Item\" id=\"1\">\noops</object>"),
       "line 4: there is text in <object>"},
      {file("<object entity=\"Item\" id=\"1\"></item>"), "</item> stands where </object>"},
      {file("<object entity=\"Item\" id=1/>"), "<object> is damaged"},
      {file("<object entity=\"Item\" entity=\"Item\" id=\"1\"/>"), "<object> is damaged"},
      {file("<block name=\"a\">AAAA</block>\n<block name=\"a\">BBBB</block>"),
       "line 4: there are two different blocks \"a\""},
      {file(item) + "<store/>", "something follows the end"},
      {file("<object entity=\"Item\" id=\"1\">\n<string key=\"title\">\xC3(</string></object>"),
       "line 4: it is not valid UTF-8"},
      {"<?xml version=\"1.0\" encoding=\"latin1\"?><store version=\"1\"/>", "it is latin1"},
      {"\xFF\xFE<", "it is UTF-16"},
      {file("<object entity=\"Item\" id=\"1\">" + deep), "nested too deeply"},
      {file("<!-- "), "a \"<!--\" has no end"},
      {twoItems.first(300), "the file ends within"},
  };
  for (const auto& [xml, reason] : bad)
    EXPECT_THAT(reasonFor(xml).toStdString(), HasSubstr(reason)) << xml.first(200).toStdString();
}

TEST(XmlStore, DamagedValuesAndRelationsLeaveTheRestReadable) {
  const QByteArray damaged = file(R"(<object entity="Item" id="1">
<relation key="box" to="8"/>
<string key="title"><b/>x</string>
<real key="x">1e999</real>
<data key="any" block="gone"/>
</object>
<object entity="Item" id="2">
<relation key="box" to="1"/>
<data key="any">A===</data>
<real key="x">5</real>
</object>
)");
  Document document;
  ASSERT_TRUE(document.read(damaged));
  EXPECT_THAT(document.warnings(),
              HasSubstr("Line 4: \"box\" of object 1 (Item) leads to object 8"));
  EXPECT_THAT(document.warnings(),
              HasSubstr("Line 10: \"box\" of object 2 (Item) leads to object 1"));
  for (const char* place :
       {"Line 5: \"title\"", "Line 6: \"x\"", "Line 7: \"any\"", "Line 11: \"any\""})
    EXPECT_THAT(document.warnings(), HasSubstr(place));
  EXPECT_EQ(document.object<Item>(1)->title(), QStringLiteral("untitled"));
  EXPECT_EQ(document.object<Item>(2)->x(), 5);
  const QByteArray written = document.write();
  for (const char* kept : {"<b/>x", "1e999", "block=\"gone\"", "A==="})
    EXPECT_TRUE(written.contains(kept)) << kept;
  EXPECT_FALSE(written.contains("relation"));
}

TEST(XmlStore, EveryBeginningOfAFileIsRefusedOrRead) {
  QByteArray whole = twoItems;
  whole.insert(whole.indexOf("</store>"),
               "<block name=\"b\">AAAA</block><x y='1'><![CDATA[]]></x>");
  for (qsizetype size = 0; size < whole.size(); ++size) {
    const QString reason = reasonFor(whole.first(size));
    if (size < whole.size() - 1) {
      EXPECT_TRUE(reason.startsWith(QLatin1String("line "))) << size;
    }
  }
}

TEST(XmlStore, LongFilesTakeTimeInProportion) {
  // In reverse, which is the hardest order for lists that are kept sorted.
  QByteArray content;
  constexpr int count = 100000;
  for (int i = count; i > 1; --i)
    content += "<object entity=\"Item\" id=\"" + QByteArray::number(i) +
               "\"><relation key=\"box\" to=\"1\"/><real key=\"x\">" + QByteArray::number(i) +
               "</real><real key=\"unknown\"/></object>\n";
  content += "<object entity=\"Box\" id=\"1\"/>";
  Document document;
  ASSERT_TRUE(document.read(file(content)));
  EXPECT_EQ(document.context.objects().size(), size_t(count));
  EXPECT_EQ(document.object<Item>(count)->x(), count);
  EXPECT_EQ(document.store.warnings().size(), 1);
}

}  // namespace store
