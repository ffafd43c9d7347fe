#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/image/ComputedImage.h"
#include "runtime/image/Resampling.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/PortHelpers.h"

namespace runtime::patches {

namespace {

class ImageCropEvaluator : public PatchEvaluator {
 public:
  explicit ImageCropEvaluator(const NodeDescription& node)
      : m_normalised(node.state.value(u"normalizeCoordinates").toBool()) {}
  void execute(Execution& x) override {
    const Image input = x.image(0);
    if (input.isNull() || x.boolean(x.inputIndex(QStringLiteral("inputBypass")))) {
      x.setOutput(0, input);
      return;
    }
    QSizeF unit(1, 1);
    if (m_normalised && !input.isInfinite()) unit = input.size();
    const QRectF rect(x.number(1) * unit.width(), x.number(2) * unit.height(),
                      x.number(3) * unit.width(), x.number(4) * unit.height());
    x.setOutput(0, image::cropped(input, image::pixelRect(rect)));
  }

 private:
  bool m_normalised;
};

class ImageTransformEvaluator : public PatchEvaluator {
 public:
  explicit ImageTransformEvaluator(const NodeDescription& node)
      : m_normalised(node.state.value(u"normalizeCoordinates").toBool()) {}
  void execute(Execution& x) override {
    enum { Picture, OriginX, OriginY, ScaleX, ScaleY, Rotate, TranslateX, TranslateY };
    const Image input = x.image(Picture);
    if (input.isNull() || x.boolean(x.inputIndex(QStringLiteral("inputBypass")))) {
      x.setOutput(0, input);
      return;
    }
    QSizeF unit(1, 1);
    if (m_normalised && !input.isInfinite()) unit = input.size();
    const QPointF origin(x.number(OriginX) * unit.width(), x.number(OriginY) * unit.height());
    const QPointF move(x.number(TranslateX) * unit.width(), x.number(TranslateY) * unit.height());
    x.setOutput(0, image::transformed(
                       input, image::imageTransform(origin, x.number(ScaleX), x.number(ScaleY),
                                                    x.number(Rotate), move)));
  }

 private:
  bool m_normalised;
};

class ImageResizeEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    enum { Picture, Mode, Condition, Width, Height };
    const Image input = x.image(Picture);
    const QSizeF size = input.size();
    if (input.isNull() || input.isInfinite() || size.isEmpty()) {
      x.setOutput(0, input);
      return;
    }
    const QSizeF wanted = wantedSize(size, x.index(Width), x.index(Height));
    if (wanted.isEmpty() || !applies(x.index(Condition), size, wanted)) {
      x.setOutput(0, input);
      return;
    }
    if (wanted.width() * wanted.height() > static_cast<double>(x.budget().imagePixels)) {
      x.report(QStringLiteral("an image of %1 × %2 pixels is too large")
                   .arg(wanted.width())
                   .arg(wanted.height()));
      x.setOutput(0, Value());
      return;
    }
    x.setOutput(0, resized(input, x.index(Mode), wanted.toSize()));
  }

 private:
  /// A side of 0 follows from the other one by the aspect ratio.
  static QSizeF wantedSize(const QSizeF& size, quint64 width, quint64 height) {
    constexpr quint64 most = image::ComputedImage::largestSide;
    QSizeF wanted(static_cast<double>(std::min(width, most)),
                  static_cast<double>(std::min(height, most)));
    if (width == 0) wanted.setWidth(wanted.height() * size.width() / size.height());
    if (height == 0) wanted.setHeight(wanted.width() * size.height() / size.width());
    return wanted;
  }

  static bool applies(quint64 condition, const QSizeF& size, const QSizeF& wanted) {
    if (condition == 1) return size.width() < wanted.width() && size.height() < wanted.height();
    if (condition == 2) return size.width() > wanted.width() || size.height() > wanted.height();
    return true;
  }

  static Image resized(const Image& input, quint64 mode, const QSize& wanted) {
    if (mode == 0) return image::resized(input, wanted);
    const QSize whole =
        QSizeF(input.size())
            .scaled(wanted, mode == 1 ? Qt::KeepAspectRatio : Qt::KeepAspectRatioByExpanding)
            .toSize()
            .expandedTo({1, 1});
    if (mode == 1) return image::resized(input, whole);
    // Filling cuts off what stands out, half on each side.
    const QPoint corner((wanted.width() - whole.width()) / 2,
                        (wanted.height() - whole.height()) / 2);
    return image::cropped(image::resized(input, whole, corner), QRect(QPoint(), wanted));
  }
};

void addBypassPort(const NodeDescription& node, PatchPorts& ports) {
  if (node.state.value(u"hasBypass").toBool())
    ports.inputs.append(booleanPort("inputBypass", false, "Bypass"));
}

}  // namespace

void registerImageGeometryPatches(PatchRegistry& registry) {
  const auto image = [](const char* key, const char* label) {
    return portOf(PortType::Image, key, label);
  };
  registry.add(
      {.className = QStringLiteral("QCImageCrop"),
       .title = QStringLiteral("Image Crop"),
       .ports = {{image("inputImage", "Image"), numberPort("inputRectangle_X", 0, "Crop X"),
                  numberPort("inputRectangle_Y", 0, "Crop Y"),
                  numberPort("inputRectangle_Z", 0, "Crop Width"),
                  numberPort("inputRectangle_W", 0, "Crop Height")},
                 {image("outputImage", "Cropped Image")}},
       .dynamicPorts = QStringLiteral("inputBypass with hasBypass"),
       .status = QStringLiteral("cuts at whole pixels, outwards"),
       .addPorts = addBypassPort,
       .make = makeFromNode<ImageCropEvaluator>});
  registry.addAlias(QStringLiteral("QCImageFilter"), QStringLiteral("CICrop"),
                    QStringLiteral("QCImageCrop"));
  registry.add(
      {.className = QStringLiteral("QCImageTransform"),
       .title = QStringLiteral("Image Transform"),
       .ports = {{image("inputImage", "Image"), numberPort("inputTransform_OriginX", 0, "Origin X"),
                  numberPort("inputTransform_OriginY", 0, "Origin Y"),
                  numberPort("inputTransform_ScaleX", 1, "Scaling X"),
                  numberPort("inputTransform_ScaleY", 1, "Scaling Y"),
                  numberPort("inputTransform_Rotate", 0, "Rotation"),
                  numberPort("inputTransform_TranslateX", 0, "Translation X"),
                  numberPort("inputTransform_TranslateY", 0, "Translation Y")},
                 {image("outputImage", "Transformed Image")}},
       .dynamicPorts = QStringLiteral("inputBypass with hasBypass"),
       .addPorts = addBypassPort,
       .make = makeFromNode<ImageTransformEvaluator>});
  registry.addAlias(QStringLiteral("QCImageFilter"), QStringLiteral("CIAffineTransform"),
                    QStringLiteral("QCImageTransform"));
  registry.add(
      {.className = QStringLiteral("QCImageResize"),
       .title = QStringLiteral("Image Resize"),
       .ports = {{image("inputImage", "Image"),
                  menuPort("inputMode", 0, "Resize Mode", {"Stretch", "Fit", "Fill"}),
                  menuPort("inputCondition", 0, "Resize Condition",
                           {"Always", "Only If Image Is Smaller", "Only If Image Is Bigger"}),
                  indexPort("inputWidth", 0, "Resize Pixels Wide"),
                  indexPort("inputHeight", 0, "Resize Pixels High")},
                 {image("outputImage", "Resized Image")}},
       .make = makeEvaluator<ImageResizeEvaluator>});
}

}  // namespace runtime::patches
