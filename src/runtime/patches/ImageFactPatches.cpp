#include <array>

#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/StructureMember.h"
#include "runtime/image/ComputedImage.h"
#include "runtime/image/Pixel.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/PortHelpers.h"

namespace runtime::patches {

namespace {

class ImageDimensionsEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const QSize size = x.image(0).isInfinite() ? QSize(0, 0) : x.image(0).size();
    const double unit = x.destination().pixelsPerUnit();
    x.setOutput(0, size.width() / unit);
    x.setOutput(1, size.height() / unit);
    x.setOutput(2, Value::index(static_cast<quint64>(size.width())));
    x.setOutput(3, Value::index(static_cast<quint64>(size.height())));
    x.setOutput(4, size.isEmpty() ? 0.0 : static_cast<double>(size.width()) / size.height());
  }
};

class ImageOriginEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const QRect extent = x.image(0).isInfinite() ? QRect() : x.image(0).extent();
    x.setOutput(0, static_cast<double>(extent.x()));
    x.setOutput(1, static_cast<double>(extent.y()));
  }
};

double linear(double encoded) {
  return encoded <= 0.04045 ? encoded / 12.92 : std::pow((encoded + 0.055) / 1.055, 2.4);
}

/// The straight components of one pixel, counted from the image's lower left corner.
class ImagePixelEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    enum { Picture, PixelX, PixelY, ColorSpace };
    const image::Pixel p = pixelAt(x.image(Picture), x.number(PixelX), x.number(PixelY)).straight();
    const bool isLinear = x.index(ColorSpace) == 1;
    int output = 0;
    for (const float c : {p.r, p.g, p.b}) x.setOutput(output++, isLinear ? linear(c) : double{c});
    x.setOutput(output, double{p.a});
  }

 private:
  static image::Pixel pixelAt(const Image& image, double column, double row) {
    const QRect place = image::pixelRect(QRectF(std::floor(column), std::floor(row), 1, 1))
                            .translated(image.extent().topLeft());
    const QImage pixel = image.pixels(place);
    if (pixel.isNull()) return {};
    return image::Pixel::fromRgb(reinterpret_cast<const QRgb*>(pixel.constScanLine(0))[0]);
  }
};

/// For each component how large a share of the pixels has each of the 256 values.
class ImageHistogramEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    std::array<std::array<qint64, 256>, 4> counts{};
    const QImage bitmap = x.image(0).bitmap();
    for (int row = 0; row < bitmap.height(); ++row) {
      const auto* line = reinterpret_cast<const QRgb*>(bitmap.constScanLine(row));
      for (int column = 0; column < bitmap.width(); ++column) {
        const QRgb c = qUnpremultiply(line[column]);
        const int components[] = {qRed(c), qGreen(c), qBlue(c), qAlpha(c)};
        for (size_t i = 0; i < 4; ++i) ++counts[i][static_cast<size_t>(components[i])];
      }
    }
    const double pixels = static_cast<double>(bitmap.width()) * bitmap.height();
    for (size_t i = 0; i < 4; ++i) {
      std::vector<Value> members;
      if (pixels > 0)
        for (const qint64 count : counts[i])
          members.emplace_back(static_cast<double>(count) / pixels);
      x.setOutput(static_cast<int>(i), Structure::fromValues(std::move(members)));
    }
  }
};

class ImageInfoEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    enum { Representation, OriginX, OriginY, Width, Height, Domain, ColorSpace, HasAlpha, Matrix };
    const Image input = x.image(0);
    const QRect e = input.isInfinite() || input.isNull() ? QRect() : input.extent();
    x.setOutput(Representation, input.isNull()       ? QString()
                                : input.isInfinite() ? QStringLiteral("endless image")
                                                     : QStringLiteral("bitmap"));
    x.setOutput(OriginX, double(e.x()));
    x.setOutput(OriginY, double(e.y()));
    x.setOutput(Width, double(e.width()));
    x.setOutput(Height, double(e.height()));
    x.setOutput(Domain, domain(e));
    x.setOutput(ColorSpace, input.isNull() ? QString() : QStringLiteral("sRGB"));
    x.setOutput(HasAlpha, !input.isNull());
    const QTransform& m = input.textureMatrix();
    x.setOutput(Matrix, input.isNull() ? QString()
                                       : QStringLiteral("[%1 %2 %3 %4 %5 %6]")
                                             .arg(m.m11())
                                             .arg(m.m12())
                                             .arg(m.m21())
                                             .arg(m.m22())
                                             .arg(m.dx())
                                             .arg(m.dy()));
  }

 private:
  /// White where the image has pixels.
  static Image domain(const QRect& extent) {
    return image::ComputedImage::finite(extent, {}, [](const QRect& area) {
      QImage out(area.size(), QImage::Format_ARGB32_Premultiplied);
      if (!out.isNull()) out.fill(Qt::white);
      return out;
    });
  }
};

Port imageInput() {
  return portOf(PortType::Image, "inputImage", "Image");
}

void registerImageInfo(PatchRegistry& registry) {
  registry.add(
      {.className = QStringLiteral("QCImageInfo"),
       .title = QStringLiteral("Image Info"),
       .ports = {{imageInput()},
                 {stringOutput("outputSourceRepresentation", "Source Representation"),
                  numberOutput("outputPixelsOriginX", "Pixels Origin X"),
                  numberOutput("outputPixelsOriginY", "Pixels Origin Y"),
                  numberOutput("outputPixelsSizeH", "Pixels Size H"),
                  numberOutput("outputPixelsSizeV", "Pixels Size V"),
                  portOf(PortType::Image, "outputDomainOfDefinition", "Domain Of Definition"),
                  stringOutput("outputColorSpace", "Color Space"),
                  booleanOutput("outputHasAlpha", "Has Alpha"),
                  stringOutput("outputTransformation", "Transformation"),
                  portOf(PortType::Structure, "outputStaticMetadata", "Static Medatada"),
                  portOf(PortType::Structure, "outputForwardMetadata", "Forwarded Medatada")}},
       .status = QStringLiteral("metadata stay empty; every image counts as sRGB with alpha"),
       .make = makeEvaluator<ImageInfoEvaluator>});
}

}  // namespace

void registerImageFactPatches(PatchRegistry& registry) {
  registry.add(
      {.className = QStringLiteral("QCImageDimensions"),
       .title = QStringLiteral("Image Dimensions"),
       .ports = {{imageInput()},
                 {numberOutput("outputWidth", "Width"), numberOutput("outputHeight", "Height"),
                  indexOutput("outputPixelsWide", "Pixels Wide"),
                  indexOutput("outputPixelsHigh", "Pixels High"),
                  numberOutput("outputRatio", "Aspect Ratio")}},
       .make = makeEvaluator<ImageDimensionsEvaluator>});
  registry.add({.className = QStringLiteral("QCImageOrigin"),
                .title = QStringLiteral("Image Origin"),
                .ports = {{imageInput()},
                          {numberOutput("outputPixelsOriginX", "Pixels Origin X"),
                           numberOutput("outputPixelsOriginY", "Pixels Origin Y")}},
                .make = makeEvaluator<ImageOriginEvaluator>});
  registry.add({.className = QStringLiteral("QCImagePixel"),
                .title = QStringLiteral("Image Pixel"),
                .ports = {{imageInput(), numberPort("inputPixelX", 0, "Pixel X"),
                           numberPort("inputPixelY", 0, "Pixel Y"),
                           menuPort("inputColorSpace", 0, "Color Space",
                                    {"Image Native", "Absolute Linear", "Rendering Destination"})},
                          {numberOutput("outputRed", "Red Component"),
                           numberOutput("outputGreen", "Green Component"),
                           numberOutput("outputBlue", "Blue Component"),
                           numberOutput("outputAlpha", "Alpha Component")}},
                .make = makeEvaluator<ImagePixelEvaluator>});
  registry.add({.className = QStringLiteral("QCImageHistogram"),
                .title = QStringLiteral("Image Histogram"),
                .ports = {{imageInput()},
                          {portOf(PortType::Structure, "outputRedHistogram", "Red Histogram"),
                           portOf(PortType::Structure, "outputGreenHistogram", "Green Histogram"),
                           portOf(PortType::Structure, "outputBlueHistogram", "Blue Histogram"),
                           portOf(PortType::Structure, "outputAlphaHistogram", "Alpha Histogram")}},
                .status = QStringLiteral("256 shares of the pixels a component"),
                .make = makeEvaluator<ImageHistogramEvaluator>});
  registerImageInfo(registry);
}

}  // namespace runtime::patches
