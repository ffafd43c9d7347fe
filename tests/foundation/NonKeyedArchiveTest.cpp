#include "foundation/archive/NonKeyedArchive.h"

#include <gtest/gtest.h>

#include <map>

#include "foundation/PropertyList.h"
#include "support/Samples.h"

using foundation::ArchiveArray;
using foundation::ArchiveDictionary;
using foundation::ArchiveGraph;
using foundation::ArchiveObject;
using foundation::ArchiveValue;
using foundation::Color;
using foundation::NonKeyedArchive;
using foundation::PropertyValue;

namespace {

const QString kName = QStringLiteral("name");
const QString kPosition = QStringLiteral("position");

ArchiveValue read(const QByteArray& bytes) {
  const auto value = NonKeyedArchive::read(bytes);
  EXPECT_TRUE(value) << (value ? "" : value.error().text().toStdString());
  return value.value_or(ArchiveValue());
}

ArchiveValue placement() {
  return ArchiveDictionary{{kName, QStringLiteral("Sprite Grüße")},
                           {kPosition, QPointF(-12.5, 340)}};
}

ArchiveValue everything() {
  return ArchiveArray{
      placement(),
      ArchiveDictionary{{QStringLiteral("title"), QString(300, u'x')},
                        {QStringLiteral("start"), 0.25},
                        {QStringLiteral("count"), 100000},
                        {QStringLiteral("whole"), 7.0},
                        {QStringLiteral("data"), QByteArray(400, '\x86')},
                        {QStringLiteral("size"), QSizeF(3, 4.5)},
                        {QStringLiteral("frame"), QRectF(1, 2, 3, 1e9)},
                        {QStringLiteral("colour"), Color{0, 0.25, 0.5, 1}},
                        {QStringLiteral("list"), ArchiveArray{-111, -110, 127, 128, 32768}}}};
}

// The archive of one dictionary {"name": "Y"} as the platform writes it.
QByteArray platformArchive() {
  static const char bytes[] =
      "\x04\x0bstreamtyped\x81\xe8\x03\x84\x01@\x84\x84\x84\x13NSMutableDictionary\x00\x84\x84\x0c"
      "NSDictionary\x00\x84\x84\x08NSObject\x00\x85\x84\x01i\x01\x92\x84\x84\x84\x08NSString\x01"
      "\x95\x84\x01+\x04name\x86\x92\x84\x97\x98\x01Y\x86\x86";
  return {bytes, sizeof bytes - 1};
}

}  // namespace

TEST(NonKeyedArchiveTest, ReadsAndWritesThePlatformsBytes) {
  const ArchiveValue expected = ArchiveDictionary{{kName, QStringLiteral("Y")}};
  EXPECT_EQ(read(platformArchive()), expected);
  EXPECT_EQ(NonKeyedArchive::write(expected).value(), platformArchive());
}

TEST(NonKeyedArchiveTest, KeepsEveryValueInBothByteOrders) {
  const QByteArray bytes = NonKeyedArchive::write(everything()).value();
  ArchiveValue back = read(bytes);
  EXPECT_EQ(back.array().size(), 2);
  EXPECT_EQ(back.array()[0], placement());
  const ArchiveDictionary& fields = back.array()[1].dictionary();
  const ArchiveValue all = everything();
  for (const auto& [key, value] : all.array()[1].dictionary().entries())
    EXPECT_EQ(fields.value(key), value) << key.toStdString();
  ArchiveGraph graph = NonKeyedArchive::decode(bytes).value();
  EXPECT_EQ(NonKeyedArchive::encode(graph).value(), bytes);
  graph.bigEndian = true;
  const QByteArray big = NonKeyedArchive::encode(graph).value();
  EXPECT_NE(big, bytes);
  EXPECT_EQ(read(big), back);
}

TEST(NonKeyedArchiveTest, ColoursOfEverySpaceAreUnderstood) {
  const auto archived = [](qint64 space, QList<ArchiveGraph::Item> parts) {
    ArchiveGraph graph = NonKeyedArchive::decode(NonKeyedArchive::write(Color()).value()).value();
    graph.objects[0].groups[0].items = {space};
    graph.objects[0].groups[1] = {QByteArray(parts.size(), 'f'), parts};
    return read(NonKeyedArchive::encode(graph).value());
  };
  EXPECT_EQ(archived(2, {1.0, 0.5, 0.0, 0.25}), ArchiveValue(Color{1, 0.5, 0, 0.25}));
  EXPECT_EQ(archived(3, {0.5, 1.0}), ArchiveValue(Color{0.5, 0.5, 0.5, 1}));
  EXPECT_EQ(archived(5, {1.0, 0.0, 0.0, 0.5, 1.0}), ArchiveValue(Color{0, 0.5, 0.5, 1}));
  EXPECT_TRUE(archived(6, {1.0}).as<ArchiveObject>());
}

TEST(NonKeyedArchiveTest, ObjectsOfOtherClassesAreReadOver) {
  ArchiveGraph graph =
      NonKeyedArchive::decode(NonKeyedArchive::write(everything()).value()).value();
  for (auto& one : graph.classes)
    if (one.name == "NSColor") one.name = "SomethingNew";
  const ArchiveValue back = read(NonKeyedArchive::encode(graph).value());
  const auto* object = back.array()[1].dictionary().value(u"colour").as<ArchiveObject>();
  ASSERT_TRUE(object);
  EXPECT_EQ(object->className, QStringLiteral("SomethingNew"));
  EXPECT_EQ(back.array()[0], placement());
}

TEST(NonKeyedArchiveTest, WhatCannotBeArchivedIsRefused) {
  EXPECT_FALSE(NonKeyedArchive::write(qint64(1) << 40));
  EXPECT_FALSE(NonKeyedArchive::write(foundation::ArchiveImage{}));
  ArchiveValue deep = 1;
  for (int i = 0; i < 250; ++i) deep = ArchiveArray{deep};
  EXPECT_FALSE(NonKeyedArchive::write(deep));
}

TEST(NonKeyedArchiveTest, EveryPrefixAndEveryChangedByteIsSurvived) {
  const QByteArray bytes = NonKeyedArchive::write(everything()).value();
  for (qsizetype i = 0; i < bytes.size(); ++i) EXPECT_FALSE(NonKeyedArchive::read(bytes.left(i)));
  for (qsizetype i = 0; i < bytes.size(); ++i)
    for (int change = 1; change < 256; change += 7) {
      QByteArray changed = bytes;
      changed[i] = static_cast<char>(changed[i] ^ change);
      if (const auto graph = NonKeyedArchive::decode(changed)) {
        (void)NonKeyedArchive::encode(*graph);
        (void)NonKeyedArchive::read(changed);
      }
    }
}

TEST(NonKeyedArchiveTest, HostileArchivesAreRefused) {
  const QByteArray start("\x04\x0bstreamtyped\x81\xe8\x03");
  const auto error = [&start](const QByteArray& body) {
    const auto graph = NonKeyedArchive::decode(start + body);
    return graph ? QString() : graph.error().text();
  };
  EXPECT_TRUE(error("\x84\x82\xff\xff\xff\x7fx").contains(QStringLiteral("length")));
  EXPECT_TRUE(error("\x84\x0f[9999999999{a=}]").contains(QStringLiteral("type")));
  EXPECT_TRUE(error("\x84\x13[999999999{a=[9i]}]").contains(QStringLiteral("cut short")));
  EXPECT_TRUE(error("\x84\x01@\x95").contains(QStringLiteral("missing")));
  const QByteArray nested = "\x84\x01@" + QByteArray("\x84\x84\x84\x01N\x01\x85\x92") +
                            QByteArray("\x84\x93\x92").repeated(10000);
  EXPECT_TRUE(error(nested).contains(QStringLiteral("deep")));
  // An array that holds itself decodes, but has no value.
  ArchiveGraph ring =
      NonKeyedArchive::decode(NonKeyedArchive::write(ArchiveArray{1}).value()).value();
  ring.objects.first().groups[1].items = {ring.root.first().items.first()};
  const QByteArray bytes = NonKeyedArchive::encode(ring).value();
  EXPECT_TRUE(NonKeyedArchive::decode(bytes));
  EXPECT_FALSE(NonKeyedArchive::read(bytes));
}

namespace {

struct Sweep {
  int archives = 0;
  int decoded = 0;
  int same = 0;
  int understood = 0;

  void visit(const PropertyValue& value) {
    for (const PropertyValue& item : value.array()) visit(item);
    for (const auto& entry : value.dictionary()) visit(entry.second);
    if (value.isData() && value.toData().startsWith("\x04\x0b")) archive(value.toData());
  }
  void archive(const QByteArray& bytes) {
    ++archives;
    const auto graph = NonKeyedArchive::decode(bytes);
    if (!graph) return;
    ++decoded;
    const auto again = NonKeyedArchive::encode(*graph);
    same += again && *again == bytes;
    const auto value = NonKeyedArchive::read(bytes);
    understood += value && !value->as<ArchiveObject>();
  }
};

}  // namespace

TEST(NonKeyedArchiveTest, EveryArchiveOfTheSamplesKeepsItsBytes) {
  const QStringList samples = support::samplePaths();
  if (samples.isEmpty()) GTEST_SKIP() << "no sample compositions at hand";
  Sweep sweep;
  for (const QString& path : samples)
    sweep.visit(foundation::PropertyList::fromFile(path).value_or(PropertyValue()));
  std::printf("%d archives: %d decoded, %d encoded to the same bytes, %d understood\n",
              sweep.archives, sweep.decoded, sweep.same, sweep.understood);
  EXPECT_EQ(sweep.decoded, sweep.archives);
  EXPECT_EQ(sweep.same, sweep.archives);
}
