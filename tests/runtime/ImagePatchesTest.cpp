#include <gtest/gtest.h>

#include <QBuffer>
#include <QColorSpace>
#include <QImageReader>
#include <QTemporaryDir>

#include "runtime/PatchRegistry.h"
#include "support/ImageGraph.h"

using foundation::PropertyDictionary;
using foundation::PropertyValue;
using runtime::Image;
using support::at;
using support::GraphBuilder;
using support::Rgba;
using support::text;

namespace {

/// 3 × 2, upper row red, lower row half transparent blue.
QImage sample() {
  QImage image(3, 2, QImage::Format_ARGB32);
  for (int x = 0; x < 3; ++x) {
    image.setPixel(x, 0, 0xffff0000);
    image.setPixel(x, 1, 0x800000ff);
  }
  return image;
}

QByteArray encoded(const QImage& image, const char* format) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  EXPECT_TRUE(image.save(&buffer, format)) << format;
  return buffer.data();
}

struct Loaded {
  runtime::Value value;
  QStringList findings;
};

Loaded loaded(const QByteArray& data, const PropertyDictionary& state = {},
              const runtime::Budget& budget = {}) {
  PropertyDictionary whole = state;
  whole.insert(text("imageData"), data);
  GraphBuilder g;
  g.publishOutput(g.node(text("QCImageLoader"), whole), text("outputImage"), text("result"));
  const auto renderer = g.renderer({}, budget);
  (void)renderer->renderAtTime(0, QSize(10, 10));
  return {renderer->valueForOutputKey(text("result")), renderer->findings()};
}

/// Runs one patch on an image and gives its published outputs.
class Probe {
 public:
  explicit Probe(const QString& patchClass, const PropertyDictionary& inputs = {},
                 const QImage& image = sample()) {
    const QString loader =
        m_graph.node(text("QCImageLoader"), {{text("imageData"), encoded(image, "PNG")}});
    m_node = m_graph.node(patchClass, {}, inputs);
    m_graph.connect(loader, text("outputImage"), m_node, text("inputImage"));
  }
  runtime::Value output(const char* key) {
    if (!m_renderer) {
      const auto* known = runtime::PatchRegistry::shared().find(m_node.section(u'_', 0, 0), {});
      for (const runtime::Port& port : known->ports.outputs)
        m_graph.publishOutput(m_node, port.key, port.key);
      m_renderer = m_graph.renderer();
      (void)m_renderer->renderAtTime(0, QSize(200, 100));
    }
    return m_renderer->valueForOutputKey(text(key));
  }

 private:
  GraphBuilder m_graph;
  QString m_node;
  std::unique_ptr<runtime::CompositionRenderer> m_renderer;
};

}  // namespace

TEST(ImageLoader, DecodesEveryFormatWithRowsUpwards) {
  for (const char* format : {"PNG", "BMP", "TIFF"}) {
    if (!QImageReader::supportedImageFormats().contains(QByteArray(format).toLower())) continue;
    const Image image = loaded(encoded(sample(), format)).value.toImage();
    EXPECT_EQ(image.extent(), QRect(0, 0, 3, 2)) << format;
    EXPECT_EQ(at(image, 1, 1), (Rgba{255, 0, 0, 255})) << format;
    if (QByteArray(format) == "BMP") continue;  // written without alpha
    EXPECT_EQ(at(image, 1, 0), (Rgba{0, 0, 128, 128})) << format;
  }
  QImage grey(8, 8, QImage::Format_RGB32);
  grey.fill(qRgb(100, 100, 100));
  EXPECT_NEAR(at(loaded(encoded(grey, "JPG")).value.toImage(), 4, 4)[0], 100, 2);
}

TEST(ImageLoader, FillsTheBackgroundAndSharesEqualData) {
  const QByteArray data = encoded(sample(), "PNG");
  const Image filled = loaded(data, {{text("fillBackground"), 1}}).value.toImage();
  EXPECT_EQ(at(filled, 0, 0), (Rgba{127, 127, 255, 255}));
  EXPECT_EQ(loaded(data).value.toImage().source(), loaded(data).value.toImage().source());
  const Loaded all = loaded(data, {{text("allImages"), 1}});
  ASSERT_EQ(all.value.toStructure().size(), 1);
  EXPECT_EQ(all.value.toStructure().at(0).toImage().size(), QSize(3, 2));
}

TEST(ImageLoader, ConvertsAnEmbeddedColourSpaceUnlessToldNotTo) {
  QImage image(2, 2, QImage::Format_RGB32);
  image.fill(qRgb(64, 64, 64));
  image.setColorSpace(QColorSpace::SRgbLinear);
  const QByteArray data = encoded(image, "PNG");
  EXPECT_NEAR(at(loaded(data).value.toImage(), 0, 0)[0], 137, 2);
  EXPECT_EQ(at(loaded(data, {{text("colorCorrection"), 0}}).value.toImage(), 0, 0)[0], 64);
}

TEST(ImageLoader, BrokenDataGiveAFindingAndNoImage) {
  const QByteArray png = encoded(sample(), "PNG");
  for (qsizetype length = 1; length < png.size() - 12; ++length) {
    const Loaded cut = loaded(png.left(length));
    EXPECT_EQ(cut.findings.size(), cut.value.toImage().isNull() ? 1 : 0) << length;
  }
  EXPECT_TRUE(loaded(png.left(20)).value.toImage().isNull());
  const Loaded pdf = loaded(QByteArrayLiteral("%PDF-1.4 …"));
  EXPECT_TRUE(pdf.value.toImage().isNull());
  ASSERT_EQ(pdf.findings.size(), 1);
  EXPECT_TRUE(pdf.findings[0].contains(QLatin1String("PDF")));
  runtime::Budget small;
  small.imagePixels = 5;
  const Loaded large = loaded(encoded(QImage(4, 3, QImage::Format_RGB32), "PNG"), {}, small);
  EXPECT_TRUE(large.value.toImage().isNull());
  EXPECT_EQ(large.findings.size(), 1);
}

TEST(ImageDownloader, LoadsLocalFilesAndOnlyReportsTheNetwork) {
  QTemporaryDir folder;
  ASSERT_TRUE(sample().save(folder.filePath(text("a.png"))));
  GraphBuilder g;
  const QString node = g.node(text("QCImageDownloader"));
  g.publishInput(node, text("inputURL"), text("url"));
  g.publishOutput(node, text("outputImage"), text("image"));
  g.publishOutput(node, text("outputSignal"), text("done"));
  g.setParameter(text("url"), text("a.png"));
  const auto renderer = g.renderer(folder.filePath(text("c.qtz")));
  renderer->userInfo().insert(text("baseFolder"), folder.path());
  auto frame = [&, time = 0.0]() mutable {
    (void)renderer->renderAtTime(time += 1, QSize(10, 10));
    return renderer->valueForOutputKey(text("image")).toImage();
  };
  EXPECT_EQ(frame().size(), QSize(3, 2));
  EXPECT_TRUE(renderer->valueForOutputKey(text("done")).toBoolean());
  EXPECT_EQ(frame().size(), QSize(3, 2));
  EXPECT_FALSE(renderer->valueForOutputKey(text("done")).toBoolean());

  for (const char* missing : {"https://localhost/a.png", "nothing.png", "."}) {
    const auto before = renderer->findings().size();
    renderer->setValueForInputKey(text(missing), text("url"));
    EXPECT_TRUE(frame().isNull()) << missing;
    EXPECT_EQ(renderer->findings().size(), before + 1) << missing;
  }
  renderer->setValueForInputKey(QStringLiteral("file://") + folder.filePath(text("a.png")),
                                text("url"));
  EXPECT_EQ(frame().size(), QSize(3, 2));
}

TEST(ImageFacts, DimensionsInPixelsAndUnitsOfTheDestination) {
  Probe probe(text("QCImageDimensions"));
  EXPECT_EQ(probe.output("outputPixelsWide").toIndex(), 3U);
  EXPECT_EQ(probe.output("outputPixelsHigh").toIndex(), 2U);
  EXPECT_DOUBLE_EQ(probe.output("outputWidth").toNumber(), 0.03);
  EXPECT_DOUBLE_EQ(probe.output("outputRatio").toNumber(), 1.5);
}

TEST(ImageFacts, PixelIsStraightAndCountsFromTheLowerLeft) {
  Probe lower(text("QCImagePixel"), {{text("inputPixelX"), 2.7}});
  EXPECT_NEAR(lower.output("outputBlue").toNumber(), 1, 1e-6);
  EXPECT_NEAR(lower.output("outputAlpha").toNumber(), 128 / 255.0, 1e-6);
  Probe upper(text("QCImagePixel"), {{text("inputPixelY"), 1.0}});
  EXPECT_EQ(upper.output("outputRed").toNumber(), 1);
  Probe outside(text("QCImagePixel"), {{text("inputPixelX"), 3.0}});
  EXPECT_EQ(outside.output("outputAlpha").toNumber(), 0);
  QImage grey(1, 1, QImage::Format_RGB32);
  grey.fill(qRgb(128, 128, 128));
  Probe linear(text("QCImagePixel"), {{text("inputColorSpace"), 1}}, grey);
  EXPECT_NEAR(linear.output("outputGreen").toNumber(), 0.2159, 1e-3);
}

TEST(ImageFacts, HistogramHoldsShares) {
  Probe probe(text("QCImageHistogram"));
  const runtime::Structure red = probe.output("outputRedHistogram").toStructure();
  ASSERT_EQ(red.size(), 256);
  EXPECT_EQ(red.at(0).toNumber(), 0.5);
  EXPECT_EQ(red.at(255).toNumber(), 0.5);
  EXPECT_EQ(probe.output("outputAlphaHistogram").toStructure().at(128).toNumber(), 0.5);
}

TEST(ImageUse, TexturingPropertiesKeepThePixels) {
  Probe probe(text("QCImageMatrix"), {{text("inputTarget"), 2},
                                      {text("inputScaleX"), 2.0},
                                      {text("inputTranslateX"), 0.25},
                                      {text("inputRotate"), 90.0}});
  const Image image = probe.output("outputImage").toImage();
  EXPECT_TRUE(image.repeats());
  EXPECT_EQ(image.size(), QSize(3, 2));
  // Scaled, turned counter-clockwise, then moved.
  const QPointF place = image.textureMatrix().map(QPointF(1, 0));
  EXPECT_NEAR(place.x(), 0.25, 1e-9);
  EXPECT_NEAR(place.y(), 2, 1e-9);
}

TEST(ImageAccumulator, KeepsWhatWasDrawn) {
  GraphBuilder g;
  const QString color = g.node(text("QCImageFilter:CIConstantColorGenerator"));
  const QString node = g.node(text("QCImageAccumulator"), {},
                              {{text("inputWidth"), 4},
                               {text("inputHeight"), 4},
                               {text("inputDirtyWidth"), 1.0},
                               {text("inputDirtyHeight"), 1.0}});
  g.connect(color, text("outputImage"), node, text("inputImage"));
  g.publishInput(node, text("inputDirtyOriginX"), text("x"));
  g.publishInput(node, text("inputAccumulate"), text("on"));
  g.setParameter(text("on"), true);
  g.publishOutput(node, text("outputImage"), text("result"));
  const auto renderer = g.renderer();
  auto frame = [&, time = 0.0](double x, bool on) mutable {
    renderer->setValueForInputKey(x, text("x"));
    renderer->setValueForInputKey(on, text("on"));
    (void)renderer->renderAtTime(time += 1, QSize(10, 10));
    return renderer->valueForOutputKey(text("result")).toImage();
  };
  frame(0, true);
  frame(1, false);
  const Image image = frame(2, true);
  EXPECT_EQ(image.extent(), QRect(0, 0, 4, 4));
  EXPECT_EQ(at(image, 0, 0), (Rgba{255, 0, 0, 255}));
  EXPECT_EQ(at(image, 1, 0)[3], 0);
  EXPECT_EQ(at(image, 2, 0)[3], 255);
  EXPECT_EQ(at(image, 2, 1)[3], 0);
}
