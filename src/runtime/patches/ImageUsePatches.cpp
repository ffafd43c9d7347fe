#include <QPainter>

#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/image/ComputedImage.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/PortHelpers.h"

namespace runtime::patches {

namespace {

/// The same pixels, placed differently where the image is used as a texture.
class TexturingPropertiesEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    enum { Picture, Target, Mipmaps, ScaleX, ScaleY, Rotate, TranslateX, TranslateY };
    const Image input = x.image(Picture);
    if (input.isNull()) {
      x.setOutput(0, input);
      return;
    }
    const QTransform matrix = QTransform::fromScale(x.number(ScaleX), x.number(ScaleY)) *
                              QTransform().rotate(x.number(Rotate)) *
                              QTransform::fromTranslate(x.number(TranslateX), x.number(TranslateY));
    const quint64 target = x.index(Target);
    x.setOutput(0, input.withTexturing(matrix, target == 0 ? input.repeats() : target == 2));
  }
};

class ColorMatchingEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override { x.setOutput(0, x.image(0)); }
};

/// A picture of its own over which images are drawn, all of them or inside a rectangle.
class ImageAccumulatorEvaluator : public PatchEvaluator {
 public:
  /// Older files keep the size in the state.
  explicit ImageAccumulatorEvaluator(const NodeDescription& node)
      : m_stateWidth(stateCount(node, u"width", 0, 0, image::ComputedImage::largestSide)),
        m_stateHeight(stateCount(node, u"height", 0, 0, image::ComputedImage::largestSide)) {}

  void execute(Execution& x) override {
    enum { Width, Height, Accumulate, Picture, OriginX, OriginY, DirtyWidth, DirtyHeight };
    const QSize size(side(x.index(Width), m_stateWidth), side(x.index(Height), m_stateHeight));
    if (qint64{size.width()} * size.height() > x.budget().imagePixels) {
      x.report(QStringLiteral("an image of %1 × %2 pixels is too large")
                   .arg(size.width())
                   .arg(size.height()));
      x.setOutput(0, Value());
      return;
    }
    const bool isNew = size != m_content.size();
    if (isNew) {
      m_content = QImage(size, QImage::Format_ARGB32_Premultiplied);
      if (!m_content.isNull()) m_content.fill(0);
    }
    const Image input = x.image(Picture);
    const bool draws = x.boolean(Accumulate) && !input.isNull() && !m_content.isNull();
    if (draws)
      drawOver(input, QRectF(x.number(OriginX), x.number(OriginY), x.number(DirtyWidth),
                             x.number(DirtyHeight)));
    if (draws || isNew) x.setOutput(0, Image::fromQImage(m_content));
  }

 private:
  static int side(quint64 wanted, int otherwise) {
    if (wanted == 0) return otherwise;
    return static_cast<int>(std::min<quint64>(wanted, image::ComputedImage::largestSide));
  }

  void drawOver(const Image& input, const QRectF& rectangle) {
    QRect area(QPoint(), m_content.size());
    if (rectangle != QRectF()) area &= image::pixelRect(rectangle);
    if (!input.isInfinite()) area &= input.extent();
    if (area.isEmpty()) return;
    QPainter painter(&m_content);
    painter.drawImage(area.x(), m_content.height() - area.y() - area.height(), input.pixels(area));
  }

  int m_stateWidth;
  int m_stateHeight;
  QImage m_content;
};

}  // namespace

void registerImageUsePatches(PatchRegistry& registry) {
  const auto image = [](const char* key) { return portOf(PortType::Image, key, "Image"); };
  registry.add(
      {.className = QStringLiteral("QCImageTexturingProperties"),
       .title = QStringLiteral("Image Texturing Properties"),
       .ports = {{image("inputImage"),
                  menuPort("inputTarget", 0, "Target", {"Default", "Rectangle", "2D"}),
                  menuPort("inputMipmaps", 0, "Mipmapping", {"Default", "Disabled", "Enabled"}),
                  numberPort("inputScaleX", 1, "Matrix Scaling X"),
                  numberPort("inputScaleY", 1, "Matrix Scaling Y"),
                  numberPort("inputRotate", 0, "Matrix Rotation"),
                  numberPort("inputTranslateX", 0, "Matrix Translation X"),
                  numberPort("inputTranslateY", 0, "Matrix Translation Y")},
                 {image("outputImage")}},
       .status = QStringLiteral("mipmaps make no difference"),
       .make = makeEvaluator<TexturingPropertiesEvaluator>});
  registry.addAlias(QStringLiteral("QCImageMatrix"), {},
                    QStringLiteral("QCImageTexturingProperties"));
  registry.add({.className = QStringLiteral("QCImageColorMatchingProperties"),
                .title = QStringLiteral("Image Color Matching Properties"),
                .ports = {{image("inputImage"), menuPort("inputColorMatching", 0, "Color Matching",
                                                         {"Default", "Enable", "Disable"})},
                          {image("outputImage")}},
                .status = QStringLiteral("hands the image on: colours are matched when an image "
                                         "is loaded"),
                .make = makeEvaluator<ColorMatchingEvaluator>});
  registry.add({.className = QStringLiteral("QCImageAccumulator"),
                .title = QStringLiteral("Image Accumulator"),
                .ports = {{indexPort("inputWidth", 0, "Pixels Wide"),
                           indexPort("inputHeight", 0, "Pixels High"),
                           booleanPort("inputAccumulate", true, "Replace Content"),
                           portOf(PortType::Image, "inputImage", "Replacing Image"),
                           numberPort("inputDirtyOriginX", 0, "Replacing Rectangle (Origin X)"),
                           numberPort("inputDirtyOriginY", 0, "Replacing Rectangle (Origin Y)"),
                           numberPort("inputDirtyWidth", 0, "Replacing Rectangle (Width)"),
                           numberPort("inputDirtyHeight", 0, "Replacing Rectangle (Height)")},
                          {image("outputImage")}},
                .make = makeFromNode<ImageAccumulatorEvaluator>});
}

}  // namespace runtime::patches
