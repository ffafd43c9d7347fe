#include "foundation/archive/KeyedArchive.h"

#include <gtest/gtest.h>

#include "foundation/PropertyList.h"

using foundation::ArchiveArray;
using foundation::ArchiveDictionary;
using foundation::ArchiveImage;
using foundation::ArchiveObject;
using foundation::ArchiveValue;
using foundation::Color;
using foundation::KeyedArchive;
using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::PropertyList;
using foundation::PropertyValue;
using Uid = foundation::PropertyValue::Uid;

namespace {

ArchiveValue read(const QByteArray& bytes) {
  const auto value = KeyedArchive::read(bytes, QStringLiteral("defaults"));
  EXPECT_TRUE(value) << (value ? "" : value.error().text().toStdString());
  return value.value_or(ArchiveValue());
}

ArchiveValue richFont() {
  return ArchiveObject{QStringLiteral("RichFontValue"),
                       {{QStringLiteral("attributes"),
                         ArchiveDictionary{{QStringLiteral("Font_Size"), 0.125},
                                           {QStringLiteral("Color"), Color{1, 0.5, 0.1, 0.7}}}},
                        {QStringLiteral("keyPattern"), QStringLiteral("Title_.*")}}};
}

ArchiveValue everything() {
  return ArchiveArray{richFont(),
                      Color::white(),
                      ArchiveImage{QByteArray("\x89PNG\r\n\0x", 8)},
                      QStringLiteral("$null"),
                      QStringLiteral("Grüße"),
                      true,
                      qint64(1) << 40,
                      0.1,
                      QByteArray("data"),
                      QPointF(0.1, -2),
                      QSizeF(3, 4),
                      QRectF(1, 2, 3, 4),
                      ArchiveArray(),
                      ArchiveDictionary(),
                      ArchiveValue()};
}

// An archive of the given objects whose root is object 1.
PropertyValue archive(const PropertyArray& objects) {
  return PropertyDictionary{
      {QStringLiteral("$objects"), PropertyValue(PropertyArray{u"$null"} + objects)},
      {QStringLiteral("$top"),
       PropertyValue(PropertyDictionary{{QStringLiteral("root"), PropertyValue(Uid{1})}})}};
}

PropertyValue objectOf(quint64 classIndex, PropertyDictionary fields) {
  fields.insert(QStringLiteral("$class"), Uid{classIndex});
  return fields;
}

PropertyValue classNamed(const QString& name) {
  return PropertyDictionary{{QStringLiteral("$classname"), PropertyValue(name)}};
}

PropertyValue listOf(quint64 classIndex, const PropertyArray& items) {
  return objectOf(classIndex, {{QStringLiteral("NS.objects"), PropertyValue(items)}});
}

}  // namespace

TEST(KeyedArchiveTest, KeepsEveryValueInBothForms) {
  EXPECT_EQ(read(KeyedArchive::write(everything()).value()), everything());
  const PropertyValue list = KeyedArchive::toPropertyList(everything()).value();
  EXPECT_EQ(list.dictionary().value(u"$archiver").toString(), QStringLiteral("NSKeyedArchiver"));
  EXPECT_EQ(read(PropertyList::toXml(list).value()), everything());
}

TEST(KeyedArchiveTest, ReadsColoursOfTheOtherSpaces) {
  const auto color = [](const QString& key, const QByteArray& parts) {
    return KeyedArchive::fromPropertyList(archive({objectOf(2, {{key, PropertyValue(parts)}}),
                                                   classNamed(QStringLiteral("NSColor"))}))
        .value();
  };
  EXPECT_EQ(color(QStringLiteral("NSWhite"), QByteArray("0.5\0", 4)),
            ArchiveValue(Color{0.5, 0.5, 0.5, 1}));
  EXPECT_EQ(color(QStringLiteral("NSRGB"), "0.25 0.5 1 0.75"),
            ArchiveValue(Color{0.25, 0.5, 1, 0.75}));
  EXPECT_EQ(color(QStringLiteral("NSCMYK"), "1 0 0 0.5 1"), ArchiveValue(Color{0, 0.5, 0.5, 1}));
  EXPECT_TRUE(color(QStringLiteral("NSColorName"), "x").as<ArchiveObject>());
}

TEST(KeyedArchiveTest, CyclesAndHostileReferencesAreRefused) {
  const auto error = [](const PropertyArray& objects) {
    const auto value = KeyedArchive::fromPropertyList(archive(objects), QStringLiteral("file"));
    return value ? QString() : value.error().text();
  };
  const PropertyValue kind = classNamed(QStringLiteral("NSArray"));
  EXPECT_TRUE(error({listOf(2, {Uid{1}}), kind}).contains(QStringLiteral("contains itself")));
  EXPECT_TRUE(error({listOf(2, {Uid{77}}), kind}).contains(QStringLiteral("missing")));
  PropertyArray bomb;
  for (quint64 i = 2; i < 60; ++i) bomb.append(listOf(61, {Uid{i}, Uid{i}, Uid{i}}));
  bomb += {u"end", u"", kind};
  EXPECT_TRUE(error(bomb).contains(QStringLiteral("expand")));
  EXPECT_FALSE(KeyedArchive::fromPropertyList(PropertyValue(5)));
  EXPECT_FALSE(KeyedArchive::fromPropertyList(archive({})));
  PropertyArray deep;
  for (quint64 i = 2; i < 500; ++i) deep.append(listOf(501, {Uid{i}}));
  deep += {u"end", u"", kind};
  EXPECT_TRUE(error(deep).contains(QStringLiteral("deep")));
}

TEST(KeyedArchiveTest, EveryPrefixAndEveryChangedByteIsSurvived) {
  const QByteArray bytes = KeyedArchive::write(everything()).value();
  for (qsizetype i = 0; i < bytes.size(); ++i) EXPECT_FALSE(KeyedArchive::read(bytes.left(i)));
  for (qsizetype i = 0; i < bytes.size(); ++i)
    for (int change = 1; change < 256; change += 31) {
      QByteArray changed = bytes;
      changed[i] = static_cast<char>(changed[i] ^ change);
      (void)KeyedArchive::read(changed);
    }
}
