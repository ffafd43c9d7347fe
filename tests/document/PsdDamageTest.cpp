#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QElapsedTimer>

#include "document/psd/PsdDocument.h"
#include "support/PsdWriter.h"

namespace {

using document::PsdDocument;
using support::PsdTestLayer;
using support::PsdWriter;

PsdWriter sample(quint16 compression, bool large) {
  PsdWriter writer;
  writer.compression = compression;
  writer.large = large;
  QImage image({9, 5}, QImage::Format_ARGB32);
  for (int y = 0; y < 5; ++y)
    for (int x = 0; x < 9; ++x) image.setPixel(x, y, qRgba(x * 20, y * 50, x * y, 255 - x));
  PsdTestLayer group;
  group.name = QStringLiteral("Group");
  group.divider = 1;
  group.mask = QImage({2, 2}, QImage::Format_Grayscale8);
  group.mask.fill(200);
  PsdTestLayer end;
  end.divider = 3;
  writer.layers = {
      {QStringLiteral("A"), {1, 1}, image}, end, {QStringLiteral("B"), {}, image}, group};
  return writer;
}

QByteArray with32(QByteArray bytes, qsizetype place, quint32 value) {
  return bytes.replace(place, 4, PsdWriter::u32(value));
}

TEST(PsdDamage, EveryPrefixGivesWhatIsWholeInIt) {
  for (const quint16 compression : {0, 1, 2, 3})
    for (const bool large : {false, true}) {
      const QByteArray whole = sample(compression, large).bytes();
      const PsdDocument expected = PsdDocument::read(whole);
      ASSERT_EQ(expected.layers.size(), 2u);
      size_t most = 0;
      for (qsizetype size = 0; size < whole.size() - 4; ++size) {
        const PsdDocument part = PsdDocument::read(whole.first(size));
        EXPECT_FALSE(part.warnings.isEmpty());
        most = std::max(most, part.layers.size());
        for (const auto& picture : part.layers) {  // the lowest layers come first in the file
          if (picture.name != QStringLiteral("A")) continue;
          EXPECT_EQ(picture.image, expected.layers[1].image);
        }
      }
      EXPECT_GE(most, 1u);
    }
}

TEST(PsdDamage, AnyByteMayBeWrong) {
  for (const quint16 compression : {1, 3}) {
    const QByteArray whole = sample(compression, false).bytes();
    for (qsizetype i = 0; i < whole.size(); ++i)
      for (const int value : {0, 1, 0x7F, 0x80, 0xFF}) {
        QByteArray bytes = whole;
        bytes[i] = static_cast<char>(value);
        const PsdDocument document = PsdDocument::read(bytes);
        EXPECT_LE(document.layers.size(), 4u);
      }
  }
}

TEST(PsdDamage, RefusesKindsOfPicturesThatAreNotRead) {
  const QByteArray whole = sample(1, false).bytes();
  const auto warningOf = [](const QByteArray& bytes) {
    const PsdDocument document = PsdDocument::read(bytes);
    EXPECT_TRUE(document.layers.empty());
    return document.warnings.join(QString()).toStdString();
  };
  QByteArray other = whole;
  other[5] = 3;
  EXPECT_THAT(warningOf(other), testing::HasSubstr("Version 3"));
  other = whole;
  other[25] = 4;
  EXPECT_THAT(warningOf(other), testing::HasSubstr("CMYK"));
  other = whole;
  other[23] = 32;
  EXPECT_THAT(warningOf(other), testing::HasSubstr("32 bits"));
  EXPECT_THAT(warningOf(with32(whole, 14, 30'001)), testing::HasSubstr("30001"));
  EXPECT_THAT(warningOf(with32(with32(whole, 14, 30'000), 18, 30'000)),
              testing::HasSubstr("300 million"));
  EXPECT_THAT(warningOf(with32(whole, 14, 0)), testing::HasSubstr("pixels large"));
}

// A few bytes that claim large pictures must not cost memory or time.
TEST(PsdDamage, ClaimsAreCheckedBeforeMemoryIsReserved) {
  QElapsedTimer timer;
  timer.start();
  for (const quint16 compression : {0, 1, 2, 3}) {
    PsdWriter writer = sample(compression, false);
    writer.layers.resize(1);
    const QByteArray whole = writer.bytes();
    constexpr qsizetype kRect = 26 + 4 + 4 + 4 + 4 + 2;
    const QByteArray bytes = with32(with32(whole, kRect + 8, 10'001), kRect + 12, 20'001);
    const PsdDocument document = PsdDocument::read(bytes);
    EXPECT_TRUE(document.layers.empty());
    EXPECT_THAT(document.warnings.join(QString()).toStdString(),
                testing::HasSubstr("incomplete: A."));
  }
  EXPECT_LT(timer.elapsed(), 2'000);
}

// Narrow layers count as if they were wider, since every row costs time.
TEST(PsdDamage, PixelsOfAllLayersTogetherAreLimited) {
  constexpr int kFit = 300'000'000 / (64 * 30'000);
  PsdWriter writer;
  writer.compression = 2;
  writer.gray = true;
  QImage line({1, 30'000}, QImage::Format_ARGB32);
  line.fill(Qt::black);
  writer.layers = {{QStringLiteral("Line"), {}, line}};
  const QByteArray one = writer.bytes();
  // The same record and the same pixels again and again.
  constexpr qsizetype kInfo = 26 + 4 + 4 + 4;
  const qsizetype pixels = one.indexOf("luni") + 4 + 4 + 4 + 2 * 4;
  const QByteArray record = one.mid(kInfo + 4 + 2, pixels - kInfo - 4 - 2);
  const QByteArray channels = one.mid(pixels, one.size() - pixels - 4);
  const QByteArray info =
      PsdWriter::u16(kFit + 2) + record.repeated(kFit + 2) + channels.repeated(kFit + 2);
  const QByteArray file = one.first(kInfo - 4) + PsdWriter::u32(quint32(info.size() + 4)) +
                          PsdWriter::u32(quint32(info.size())) + info;
  const PsdDocument document = PsdDocument::read(file);
  EXPECT_EQ(document.layers.size(), size_t(kFit));
  EXPECT_THAT(document.warnings.join(QString()).toStdString(),
              testing::HasSubstr("too many pixels: Line, Line."));
}

}  // namespace
