#include "document/psd/PsdDocument.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QColorSpace>

#include "support/PsdWriter.h"

namespace {

using document::PsdDocument;
using document::PsdPicture;
using support::PsdTestLayer;
using support::PsdWriter;
using testing::ElementsAre;
using testing::HasSubstr;

/// No two pixels alike, with single samples, short and long runs in its rows.
QImage pattern(QSize size, bool gray = false) {
  QImage image(size, QImage::Format_ARGB32);
  for (int y = 0; y < size.height(); ++y)
    for (int x = 0; x < size.width(); ++x) {
      const int red = (x / 5 * 31 + y * 7) % 256;
      const int green = gray ? red : (x * x * 3 + y) % 256;
      const int blue = gray ? red : (y * 40) % 256;
      image.setPixel(x, y, qRgba(red, green, blue, (x < size.width() / 2 ? 255 : x * 11) % 256));
    }
  return image;
}

QImage filled(QSize size, const QColor& color) {
  QImage image(size, QImage::Format_ARGB32);
  image.fill(color);
  return image;
}

PsdTestLayer layer(const char* name) {
  return {QString::fromUtf8(name), {0, 0}, filled({3, 2}, Qt::green)};
}

PsdTestLayer divider(const char* name, int type) {
  PsdTestLayer record;
  record.name = QString::fromUtf8(name);
  record.divider = type;
  record.blendMode = "pass";
  return record;
}

PsdDocument read(const PsdWriter& writer) {
  return PsdDocument::read(writer.bytes());
}

QStringList namesOf(const PsdDocument& document) {
  QStringList names;
  for (const PsdPicture& picture : document.layers) names.append(picture.name);
  return names;
}

TEST(PsdDocument, ReadsEveryWayOfStoringPixels) {
  for (const int depth : {8, 16})
    for (const quint16 compression : {0, 1, 2, 3})
      for (const bool large : {false, true})
        for (const bool gray : {false, true}) {
          SCOPED_TRACE(testing::Message() << depth << " bits, compression " << compression
                                          << ", large " << large << ", gray " << gray);
          PsdWriter writer;
          writer.depth = depth;
          writer.compression = compression;
          writer.large = large;
          writer.gray = gray;
          writer.layersInBlock = depth == 16;
          const QImage image = pattern({301, 9}, gray);
          writer.layers = {{QStringLiteral("A"), {-3, 2}, image}, layer("B")};
          const PsdDocument document = read(writer);
          ASSERT_EQ(document.layers.size(), 2u);
          EXPECT_EQ(document.layers[1].image, image);
          EXPECT_EQ(document.layers[1].topLeft, QPoint(-3, 2));
          EXPECT_TRUE(document.warnings.isEmpty());
        }
}

TEST(PsdDocument, RoundsSixteenBitsToTheNearest) {
  PsdWriter writer;
  writer.depth = 16;
  writer.compression = 0;
  writer.layers = {{QStringLiteral("A"), {}, filled({1, 1}, QColor(100, 0, 0))}};
  QByteArray bytes = writer.bytes();
  const qsizetype place = bytes.lastIndexOf(QByteArray("\x64\x64", 2));  // 100 × 257
  const auto redOf = [&](quint16 sample) {
    qToBigEndian(sample, bytes.data() + place);
    return qRed(PsdDocument::read(bytes).layers.at(0).image.pixel(0, 0));
  };
  EXPECT_EQ(redOf(100 * 257 + 128), 100);
  EXPECT_EQ(redOf(100 * 257 + 129), 101);
  EXPECT_EQ(redOf(65535), 255);
}

TEST(PsdDocument, ReadsNamesInUnicodeAndWithout) {
  PsdWriter writer;
  PsdTestLayer old = layer("Größe");
  old.unicodeName = false;
  writer.layers = {layer("Überschrift 字幕 🎬"), old, layer("")};
  EXPECT_THAT(namesOf(read(writer)), ElementsAre(QString(), QStringLiteral("Größe"),
                                                 QStringLiteral("Überschrift 字幕 🎬")));
  QByteArray bytes = writer.bytes();
  bytes.replace(
      "Gr\xC3\xB6\xC3\x9F"
      "e",
      "Gr\xF6\xDF"
      "eDF");  // the same length
  EXPECT_EQ(PsdDocument::read(bytes).layers[1].name, QStringLiteral("GrößeDF"));
}

TEST(PsdDocument, ResolvesGroups) {
  PsdWriter writer;
  PsdTestLayer outer = divider("Outer", 1);
  outer.opacity = 128;
  PsdTestLayer inner = divider("Inner", 2);
  inner.hidden = true;
  PsdTestLayer half = layer("Half");
  half.opacity = 128;
  PsdTestLayer hidden = layer("Hidden");
  hidden.hidden = true;
  writer.layers = {layer("Bottom"),
                   divider("</>", 3),
                   half,
                   divider("</>", 3),
                   layer("Deep"),
                   inner,
                   layer("Shown"),
                   outer,
                   hidden};
  const PsdDocument document = read(writer);
  EXPECT_EQ(namesOf(document).join(QLatin1Char(' ')),
            QStringLiteral("Hidden Shown Deep Half Bottom"));
  QList<bool> visible;
  QList<int> opacity;
  for (const PsdPicture& picture : document.layers) {
    visible.append(picture.visible);
    opacity.append(qRound(picture.opacity * 1000));
  }
  EXPECT_EQ(visible, (QList<bool>{false, true, false, true, true}));
  EXPECT_EQ(opacity, (QList<int>{1000, 502, 502, 252, 1000}));
  EXPECT_TRUE(document.warnings.isEmpty());
}

TEST(PsdDocument, AppliesMasksOfLayersAndGroups) {
  QImage mask({2, 1}, QImage::Format_Grayscale8);
  mask.scanLine(0)[0] = 128;
  mask.scanLine(0)[1] = 0;
  const auto alphaRows = [&](const std::function<void(PsdTestLayer&, PsdTestLayer&)>& change) {
    PsdWriter writer;
    PsdTestLayer masked = layer("Masked");
    PsdTestLayer group = divider("Group", 1);
    change(masked, group);
    writer.layers = {divider("</>", 3), masked, group};
    const QImage image = read(writer).layers.at(0).image;
    QList<int> alpha;
    for (int y = 0; y < 2; ++y)
      for (int x = 0; x < 3; ++x) alpha.append(qAlpha(image.pixel(x, y)));
    return alpha;
  };
  const auto inside = [&](PsdTestLayer& target, quint8 outside) {
    target.mask = mask;
    target.maskTopLeft = {1, 1};
    target.maskOutside = outside;
  };
  EXPECT_EQ(alphaRows([&](auto& own, auto&) { inside(own, 255); }),
            (QList<int>{255, 255, 255, 255, 128, 0}));
  EXPECT_EQ(alphaRows([&](auto&, auto& group) { inside(group, 0); }),
            (QList<int>{0, 0, 0, 0, 128, 0}));
  EXPECT_EQ(alphaRows([&](auto& own, auto& group) {
              inside(own, 255);
              inside(group, 255);
            }),
            (QList<int>{255, 255, 255, 255, 64, 0}));
  EXPECT_EQ(alphaRows([&](auto& own, auto&) {
              inside(own, 0);
              own.maskDisabled = true;
            }),
            (QList<int>(6, 255)));
  // Beside the layer on the left and above: only what is outside of the mask counts.
  EXPECT_EQ(alphaRows([&](auto& own, auto&) {
              inside(own, 64);
              own.maskTopLeft = {-9, -9};
            }),
            (QList<int>(6, 64)));
}

TEST(PsdDocument, MultipliesTheOpacityOfTheFilling) {
  PsdWriter writer;
  writer.layers = {layer("A")};
  writer.layers[0].opacity = 128;
  writer.layers[0].blocks = {{"iOpa", QByteArray("\x80\0\0\0", 4)}};
  EXPECT_NEAR(read(writer).layers.at(0).opacity, 0.252, 1e-3);
}

TEST(PsdDocument, ClipsLayersToTheOneBelow) {
  PsdWriter writer;
  PsdTestLayer base{QStringLiteral("Base"), {1, 0}, filled({2, 1}, Qt::red)};
  base.image.setPixel(1, 0, qRgba(255, 0, 0, 51));
  base.opacity = 128;
  PsdTestLayer low = layer("Low");
  low.clipped = true;
  PsdTestLayer high = layer("High");
  high.clipped = true;
  high.opacity = 128;
  writer.layers = {layer("Bottom"), base, low, high, layer("Top")};
  PsdDocument document = read(writer);
  EXPECT_TRUE(document.warnings.isEmpty());
  for (const PsdPicture& picture : {document.layers.at(1), document.layers.at(2)}) {
    QList<int> alpha;
    for (int i = 0; i < 6; ++i) alpha.append(qAlpha(picture.image.pixel(i % 3, i / 3)));
    EXPECT_EQ(alpha, (QList<int>{0, 255, 51, 0, 0, 0}));
  }
  EXPECT_NEAR(document.layers[2].opacity, 0.502, 1e-3);
  EXPECT_NEAR(document.layers[1].opacity, 0.252, 1e-3);
  EXPECT_EQ(qAlpha(document.layers[0].image.pixel(0, 1)), 255);

  writer.layers[1].hidden = true;
  document = read(writer);
  EXPECT_FALSE(document.layers.at(1).visible);
  EXPECT_TRUE(document.layers.at(0).visible);

  // A layer cannot be clipped to one beyond the bottom of its group.
  writer.layers = {layer("Bottom"), divider("</>", 3), low, divider("Group", 1)};
  document = read(writer);
  EXPECT_EQ(qAlpha(document.layers.at(0).image.pixel(0, 0)), 255);
  EXPECT_THAT(document.warnings.join(QString()).toStdString(), HasSubstr("below: Low."));
}

TEST(PsdDocument, TellsWhatItLeavesOut) {
  PsdWriter writer;
  PsdTestLayer multiplied = layer("Multiplied");
  multiplied.blendMode = "mul ";
  PsdTestLayer clipped = layer("Clipped");
  clipped.clipped = true;
  clipped.blocks = {{"lfx2", QByteArray(8, '\0')}, {"vmsk", QByteArray(8, '\0')}};
  PsdTestLayer empty = layer("Curves");
  empty.image = {};
  PsdTestLayer distant = layer("Distant");
  distant.topLeft = {2'000'000'000, 0};
  writer.layers = {multiplied, empty, clipped, distant};
  const PsdDocument document = read(writer);
  EXPECT_EQ(namesOf(document).join(QLatin1Char(' ')), QStringLiteral("Clipped Multiplied"));
  EXPECT_THAT(document.warnings.join(QLatin1Char('\n')).toStdString(),
              testing::AllOf(HasSubstr("drawn normally: Multiplied."),
                             HasSubstr("Not clipped to the layer below: Clipped."),
                             HasSubstr("effects are not imported: Clipped."),
                             HasSubstr("Vector masks are not imported: Clipped."),
                             HasSubstr("no pixels of their own: Curves."),
                             HasSubstr("out of limits: Distant.")));
  writer.layers = std::vector<PsdTestLayer>(30, multiplied);
  EXPECT_THAT(read(writer).warnings, ElementsAre(testing::Truly([](const QString& text) {
                return text.endsWith(u", Multiplied and 22 more.");
              })));
}

TEST(PsdDocument, ShowsAFlatFileAsItsBackground) {
  for (const quint16 compression : {0, 1})
    for (const bool large : {false, true}) {
      PsdWriter writer;
      writer.compression = compression;
      writer.large = large;
      writer.flattened = pattern(writer.size).convertToFormat(QImage::Format_RGB32);
      const PsdDocument document = read(writer);
      ASSERT_EQ(document.layers.size(), 1u);
      EXPECT_EQ(document.layers[0].name, QStringLiteral("Background"));
      EXPECT_EQ(document.layers[0].image, writer.flattened.convertToFormat(QImage::Format_ARGB32));
    }
  EXPECT_THAT(read(PsdWriter()).warnings.join(QString()).toStdString(), HasSubstr("no layers"));
}

TEST(PsdDocument, ConvertsColoursToSrgb) {
  PsdWriter writer;
  const QColorSpace wide(QColorSpace::AdobeRgb);
  writer.colorProfile = wide.iccProfile();
  writer.layers = {{QStringLiteral("A"), {}, filled({2, 2}, QColor(100, 150, 100, 77))}};
  QImage expected = writer.layers[0].image;
  expected.setColorSpace(wide);
  expected.convertToColorSpace(QColorSpace::SRgb);
  ASSERT_NE(expected.pixel(0, 0), writer.layers[0].image.pixel(0, 0));
  EXPECT_EQ(read(writer).layers.at(0).image.pixel(0, 0), expected.pixel(0, 0));
}

}  // namespace
