#include "foundation/PropertyList.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTimeZone>
#include <bit>
#include <clocale>
#include <limits>

#include "support/PlistOracle.h"
#include "support/Samples.h"

using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::PropertyList;
using foundation::PropertyValue;
using Type = PropertyValue::Type;

namespace {

// What is read is compared with what libplist reads, wherever that reads it at all.
PropertyValue read(const QByteArray& bytes) {
  const auto value = PropertyList::fromData(bytes, QStringLiteral("test.qtz"));
  EXPECT_TRUE(value) << (value ? "" : value.error().text().toStdString());
  const auto library = value ? support::readWithLibrary(bytes) : std::nullopt;
  EXPECT_TRUE(!library || support::sameButForDates(*value, *library)) << bytes.toStdString();
  return value.value_or(PropertyValue());
}

// The error text of bytes that must be refused.
QString refusal(const QByteArray& bytes) {
  const auto value = PropertyList::fromData(bytes, QStringLiteral("test.qtz"));
  EXPECT_FALSE(value) << bytes.left(200).toStdString();
  return value ? QString() : value.error().text();
}

QByteArray wrapped(const QByteArray& body) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n" + body +
         "</plist>\n";
}

PropertyValue everyType() {
  const double inf = std::numeric_limits<double>::infinity();
  return PropertyDictionary{
      {QStringLiteral("yes"), PropertyValue(true)},
      {QStringLiteral("no"), PropertyValue(false)},
      {QStringLiteral("integers"),
       PropertyValue(PropertyArray{0, 1, -1, 255, 256, 65536, qint64(1) << 32,
                                   std::numeric_limits<qint64>::min(),
                                   std::numeric_limits<qint64>::max(),
                                   std::numeric_limits<quint64>::max(), quint64(1) << 63})},
      {QStringLiteral("reals"),
       PropertyValue(PropertyArray{0.0, 1.0, 0.1, -2.5e-300, 4.9e-324, 1.7976931348623157e308, inf,
                                   -inf, 1.0 / 3, PropertyValue::fromFloat(0.1F)})},
      {QStringLiteral("text"), PropertyValue(u"a < b && \"c\" > \r\n\t Grüße \U0001F600 ")},
      {QStringLiteral(""), PropertyValue(u"")},
      {QStringLiteral("ключ & <key>"), PropertyValue(QByteArray("\x00\xff\x01", 3))},
      {QStringLiteral("long data"), PropertyValue(QByteArray(1000, '\x7f'))},
      {QStringLiteral("no data"), PropertyValue(QByteArray(""))},
      {QStringLiteral("dates"),
       PropertyValue(
           PropertyArray{QDateTime(QDate(1, 1, 1), QTime(0, 0), QTimeZone::utc()),
                         QDateTime(QDate(1812, 9, 7), QTime(5, 6, 7), QTimeZone::utc()),
                         QDateTime(QDate(1932, 12, 13), QTime(20, 45, 53), QTimeZone::utc()),
                         QDateTime(QDate(2000, 12, 31), QTime(23, 59, 59), QTimeZone::utc()),
                         QDateTime(QDate(2024, 2, 29), QTime(1, 2, 3), QTimeZone::utc()),
                         QDateTime(QDate(9999, 12, 31), QTime(23, 59, 59), QTimeZone::utc())})},
      {QStringLiteral("uid"), PropertyValue(PropertyValue::Uid{70000})},
      {QStringLiteral("empty"),
       PropertyValue(PropertyArray{PropertyArray(), PropertyDictionary()})},
      {QStringLiteral("nested"),
       PropertyValue(
           PropertyDictionary{{QStringLiteral("b"), PropertyValue(PropertyArray{1, u"text", 2.0})},
                              {QStringLiteral("a"), PropertyValue(u"text")}})}};
}

// Reals compare by value elsewhere; a file must keep every bit.
void expectSameBits(const PropertyValue& a, const PropertyValue& b) {
  EXPECT_EQ(std::bit_cast<quint64>(a.toDouble()), std::bit_cast<quint64>(b.toDouble()));
}

}  // namespace

TEST(PropertyListTest, BothFormsKeepEveryType) {
  const PropertyValue value = everyType();
  const auto xml = PropertyList::toXml(value);
  const auto binary = PropertyList::toBinary(value);
  ASSERT_TRUE(xml && binary);
  const PropertyValue fromXml = read(*xml);
  const PropertyValue fromBinary = read(*binary);
  EXPECT_EQ(fromXml.dictionary().keys(), value.dictionary().keys());
  for (const auto& [key, one] : value.dictionary()) {
    EXPECT_EQ(fromXml.dictionary().value(key), one) << key.toStdString();
    EXPECT_EQ(fromBinary.dictionary().value(key), one) << key.toStdString();
  }
  EXPECT_EQ(PropertyList::toXml(read(*binary)).value(), *xml);
  EXPECT_EQ(PropertyList::toBinary(read(*xml)).value(), *binary);
}

TEST(PropertyListTest, RealsKeepTheirLastBitAndNumberTypesStayApart) {
  quint64 bits = 1;
  for (int i = 0; i < 2000; ++i) {
    bits = bits * 6364136223846793005ULL + 1442695040888963407ULL;
    const auto real = std::bit_cast<double>(bits);
    if (std::isnan(real)) continue;
    expectSameBits(read(PropertyList::toXml(real).value()), real);
    expectSameBits(read(PropertyList::toBinary(real).value()), real);
  }
  expectSameBits(read(PropertyList::toXml(-0.0).value()), -0.0);
  const PropertyValue nan(std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(read(PropertyList::toXml(nan).value()), nan);
  for (const PropertyValue& one : PropertyArray{1, 1.0, true, u"1"})
    EXPECT_EQ(read(PropertyList::toXml(one).value()).type(), one.type());
  EXPECT_NE(PropertyValue(1), PropertyValue(1.0));
  EXPECT_NE(PropertyValue(-1), PropertyValue(std::numeric_limits<quint64>::max()));
}

TEST(PropertyListTest, ReadsWhatOtherWritersProduce) {
  EXPECT_EQ(read(wrapped("<integer> 0x1F </integer>")), PropertyValue(31));
  EXPECT_EQ(read(wrapped("<real>+INFINITY</real>")),
            PropertyValue(std::numeric_limits<double>::infinity()));
  EXPECT_EQ(read(wrapped("<string>a<![CDATA[<b>&]]>c<!-- no -->&#x1F600;&#65;&apos;</string>")),
            PropertyValue(u"a<b>&c\U0001F600A'"));
  EXPECT_EQ(read(wrapped("<dict><key>a</key><true/><key>a</key><false/></dict>")),
            PropertyValue(PropertyDictionary{{QStringLiteral("a"), PropertyValue(false)}}));
  EXPECT_EQ(read(wrapped("<data> AA\n\tEC Aw== </data>")),
            PropertyValue(QByteArray("\x00\x01\x02\x03", 4)));
  EXPECT_EQ(read(wrapped("<string/>")).type(), Type::String);
  EXPECT_EQ(read("<!-- <plist> --><?x <plist> ?><!DOCTYPE plist>" +
                 wrapped("<!-- a --><array ><dict/><!--<b>--><true></true><string></string>"
                         "<array /><integer>-0x10</integer><integer>+7</integer></array >")
                     .replace("<?xml version=\"1.0\" encoding=\"UTF-8\"?>", "")
                     .replace("</array >", "</array>")),
            PropertyValue(PropertyArray{PropertyDictionary(), true, u"", PropertyArray(), -16, 7}));
  EXPECT_EQ(read(wrapped("<array><real>1e999</real><real>-1e999</real><real>1e-999</real>"
                         "<real>+.5</real><real>5.</real><real>-INF</real></array>")),
            PropertyValue(PropertyArray{HUGE_VAL, -HUGE_VAL, 0.0, 0.5, 5.0, -HUGE_VAL}));
  EXPECT_EQ(read(wrapped("<dict><key>CF$UID</key><integer>7</integer></dict>")),
            PropertyValue(PropertyValue::Uid{7}));
  EXPECT_TRUE(read(wrapped("<dict><key>CF$UID</key><integer>-7</integer></dict>")).isDictionary());
  EXPECT_EQ(read(wrapped("<string>\xEF\xBB\xBFmarked</string>")),
            PropertyValue(QChar(0xFEFF) + QStringLiteral("marked")));
  EXPECT_EQ(read("\xEF\xBB\xBF" + wrapped("<true/>")), PropertyValue(true));
  QByteArray utf16("\xFF\xFE");
  const QByteArray narrow = wrapped("<string>wide</string>").replace("UTF-8", "UTF-16");
  for (const char c : narrow) utf16.append(c).append('\0');
  EXPECT_EQ(read(utf16), PropertyValue(u"wide"));
}

TEST(PropertyListTest, TheLocaleDoesNotChangeNumbers) {
  const char* found = nullptr;
  for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE", "nl_NL.UTF-8"})
    if (!found) found = std::setlocale(LC_NUMERIC, name);
  if (!found) GTEST_SKIP() << "no locale with a decimal comma is installed";
  const PropertyValue value = read(wrapped("<real>1.5</real>"));
  const QByteArray xml = PropertyList::toXml(1.5).value();
  std::setlocale(LC_NUMERIC, "C");
  EXPECT_EQ(value, PropertyValue(1.5));
  EXPECT_TRUE(xml.contains("<real>1.5</real>"));
}

TEST(PropertyListTest, WhatAFormCannotHoldIsRefusedWithItsPlace) {
  const auto error = [](const PropertyValue& value) {
    const auto bytes = PropertyList::toXml(value);
    return bytes ? QString() : bytes.error().text();
  };
  const QString key = QStringLiteral("bell");
  EXPECT_TRUE(error(PropertyDictionary{{key, PropertyValue(u"ding\a")}}).contains(key));
  EXPECT_TRUE(error(PropertyDictionary{{key, PropertyValue()}}).contains(key));
  EXPECT_FALSE(error(QString(QChar(0xD800))).isEmpty());
  EXPECT_FALSE(error(QDateTime()).isEmpty());
  EXPECT_FALSE(PropertyList::toBinary(PropertyArray{PropertyValue()}));
  EXPECT_FALSE(PropertyList::toBinary(QString(QChar(0xDC00))));
  const QString zero = QStringLiteral("a") + QChar(u'\0') + QStringLiteral("b\a");
  EXPECT_EQ(read(PropertyList::toBinary(zero).value()), PropertyValue(zero));
  PropertyValue deep = 1;
  for (int i = 0; i < 600; ++i) deep = PropertyArray{deep};
  EXPECT_FALSE(PropertyList::toXml(deep));
  EXPECT_FALSE(PropertyList::toBinary(deep));
}

TEST(PropertyListTest, DamagedXmlIsRefusedWithLineAndReason) {
  const QString text = refusal(wrapped("<dict>\n<key>a</key>\n<integer>5x</integer></dict>"));
  EXPECT_EQ(text, QStringLiteral("test.qtz: The property list cannot be read "
                                 "(line 5: not a 64-bit integer)"));
  for (const char* body : {"<dict><true/></dict>",
                           "<dict><key>a</key></dict>",
                           "<array><key>a</key></array>",
                           "<true/><true/>",
                           "",
                           "<array>",
                           "</array>",
                           "<array></dict>",
                           "<string>a&b;</string>",
                           "<string>&#0;</string>",
                           "<string>&#xD800;</string>",
                           "<string>\x01</string>",
                           "<string>\xff</string>",
                           "<string><b/></string>",
                           "<integer/>",
                           "<integer>1 2</integer>",
                           "<integer>99999999999999999999</integer>",
                           "<integer>-9223372036854775809</integer>",
                           "<real>1,5</real>",
                           "<real></real>",
                           "<real>0x1p3</real>",
                           "<date>2001-02-30T00:00:00Z</date>",
                           "<date>yesterday</date>",
                           "<data>AAE*</data>",
                           "<data>AAECA</data>",
                           "<data>A==A</data>",
                           "<unknown/>",
                           "<true>1</true>",
                           "text",
                           "<?php ?>",
                           "<plist><true/></plist>"})
    EXPECT_TRUE(refusal(wrapped(body)).contains(QStringLiteral("line "))) << body;
  EXPECT_TRUE(refusal("<!DOCTYPE plist [<!ENTITY a \"b\">]><plist><string>&a;</string></plist>")
                  .contains(QStringLiteral("entity")));
  for (const char* bytes : {"", "hello", "{ a = 1; }", "bplist", "bplist00", "<", "<plist"})
    refusal(bytes);
}

TEST(PropertyListTest, DeepNestingIsRefusedAndTheLimitItselfIsRead) {
  const auto nested = [](int depth) {
    return wrapped(QByteArray("<array>").repeated(depth) + QByteArray("</array>").repeated(depth));
  };
  EXPECT_TRUE(refusal(nested(10000)).contains(QStringLiteral("deep")));
  EXPECT_TRUE(read(nested(500)).isArray());
  QByteArray deep("bplist00");
  constexpr int kCount = 10000;
  QByteArray offsets;
  for (int i = 0; i < kCount; ++i) {
    const int at = static_cast<int>(deep.size());
    offsets.append(static_cast<char>(at >> 8)).append(static_cast<char>(at));
    const int next = i + 1 < kCount ? i + 1 : i;
    deep.append('\xA1').append(static_cast<char>(next >> 8)).append(static_cast<char>(next));
  }
  QByteArray trailer(32, '\0');
  trailer[6] = trailer[7] = 2;
  trailer[14] = static_cast<char>(kCount >> 8);
  trailer[15] = static_cast<char>(kCount & 0xFF);
  trailer[30] = static_cast<char>(deep.size() >> 8);
  trailer[31] = static_cast<char>(deep.size() & 0xFF);
  EXPECT_TRUE(refusal(deep + offsets + trailer).contains(QStringLiteral("deep")));
}

namespace {

// A binary list of at most 255 objects, the first of which is the root.
QByteArray binaryList(const QList<QByteArray>& objects) {
  QByteArray bytes("bplist00");
  QByteArray offsets;
  for (const QByteArray& object : objects) {
    offsets.append(static_cast<char>(bytes.size() >> 8)).append(static_cast<char>(bytes.size()));
    bytes += object;
  }
  QByteArray trailer(32, '\0');
  trailer[6] = 2;
  trailer[7] = 1;
  trailer[15] = static_cast<char>(objects.size());
  trailer[30] = static_cast<char>(bytes.size() >> 8);
  trailer[31] = static_cast<char>(bytes.size());
  return bytes + offsets + trailer;
}

}  // namespace

TEST(PropertyListTest, DamagedBinaryIsRefusedWithByteAndReason) {
  EXPECT_EQ(refusal(binaryList({"\xA1\x01", QByteArray("\xA1\x00", 2)})),
            QStringLiteral("test.qtz: The property list cannot be read "
                           "(byte 11: a container that contains itself)"));
  const QByteArray hugeLength = QByteArray("\x4F\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF", 10);
  const QByteArray fourGigabytes = QByteArray("\xAF\x12\xFF\xFF\xFF\xFF", 6);
  for (const QByteArray& object :
       {hugeLength, fourGigabytes, QByteArray("\x6F\x13\x80\0\0\0\0\0\0\0", 10),
        QByteArray("\xA1\x07"), QByteArray("\x5F\x5F"), QByteArray("\x13"), QByteArray("\x70"),
        QByteArray("\x24\0\0", 3), QByteArray("\x61\xD8\x00", 3), QByteArray("\x51\xFF"),
        QByteArray("\x51\0", 2), QByteArray("\x33\x7F\xF0\0\0\0\0\0\0", 9), QByteArray("\0", 1),
        QByteArray("\x14\0\0\0\0\0\0\0\1\0\0\0\0\0\0\0\0", 17)})
    EXPECT_TRUE(refusal(binaryList({object})).contains(QStringLiteral("byte ")));
  // A day before the year 1.
  EXPECT_TRUE(refusal(binaryList({QByteArray("\x33\xC2\x2D\x63\xC6\x22\0\0\0", 9)}))
                  .contains(QStringLiteral("years")));
  EXPECT_TRUE(refusal(binaryList({"\xD1\x01\x01", "\x09"})).contains(QStringLiteral("key")));
  // Thirty arrays that each hold the next one four times.
  QList<QByteArray> bomb;
  for (char i = 1; i <= 30; ++i) bomb.append("\xA4" + QByteArray(4, i));
  bomb.append("\x09");
  EXPECT_TRUE(refusal(binaryList(bomb)).contains(QStringLiteral("expand")));
}

TEST(PropertyListTest, SharedValuesOfABinaryFileStayShared) {
  // An array that holds one array three times, that holds one text and one number twice each.
  const PropertyValue value =
      read(binaryList({"\xA3\x01\x01\x01", "\xA4\x02\x03\x02\x03", "\x52hi", "\x10\x2A"}));
  const PropertyArray inner{u"hi", 42, u"hi", 42};
  EXPECT_EQ(value, PropertyValue(PropertyArray{inner, inner, inner}));
  EXPECT_EQ(value.array()[0].array().constData(), value.array()[2].array().constData());
  // As large as a file may expand to: 23 arrays that each hold the next one twice.
  QList<QByteArray> halves;
  for (char i = 1; i <= 22; ++i) halves.append("\xA2" + QByteArray(2, i));
  halves.append("\x09");
  PropertyValue deepest = PropertyList::fromData(binaryList(halves), {}).value_or(PropertyValue());
  for (int i = 0; i < 22; ++i) deepest = PropertyValue(deepest.array().value(1));
  EXPECT_EQ(deepest, PropertyValue(true));
}

TEST(PropertyListTest, EveryPrefixAndEveryChangedByteIsSurvived) {
  const QByteArray xml = PropertyList::toXml(everyType()).value();
  const QByteArray binary = PropertyList::toBinary(everyType()).value();
  for (qsizetype i = 0; i < xml.trimmed().size(); ++i) refusal(xml.left(i));
  for (qsizetype i = 0; i < binary.size(); ++i) refusal(binary.left(i));
  for (qsizetype i = 0; i < binary.size(); ++i)
    for (const int change : {0x01, 0x10, 0x80, 0xFF}) {
      QByteArray changed = binary;
      changed[i] = static_cast<char>(changed[i] ^ change);
      const auto value = PropertyList::fromData(changed, {});
      if (!value) continue;
      (void)PropertyList::toXml(*value);
      const auto library = support::readWithLibrary(changed);
      EXPECT_TRUE(!library || support::sameButForDates(*value, *library)) << i << ' ' << change;
    }
}

TEST(PropertyListTest, SampleCompositionsSurviveBothForms) {
  const QStringList samples = support::samplePaths();
  if (samples.isEmpty()) GTEST_SKIP() << "no sample compositions at hand";
  for (const QString& path : samples) {
    const auto value = PropertyList::fromFile(path);
    ASSERT_TRUE(value) << value.error().text().toStdString();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const auto library = support::readWithLibrary(file.readAll());
    ASSERT_TRUE(library) << path.toStdString();
    EXPECT_EQ(*value, *library) << path.toStdString();
    EXPECT_EQ(read(PropertyList::toXml(*value).value()), *value) << path.toStdString();
    EXPECT_EQ(read(PropertyList::toBinary(*value).value()), *value) << path.toStdString();
  }
  std::printf("%d sample compositions\n", static_cast<int>(samples.size()));
}

TEST(PropertyListTest, AMissingFileIsNamed) {
  const auto value = PropertyList::fromFile(QStringLiteral("/nowhere/at/all.qtz"));
  ASSERT_FALSE(value);
  EXPECT_EQ(value.error().file, QStringLiteral("/nowhere/at/all.qtz"));
}
