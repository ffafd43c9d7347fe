#include <QFile>
#include <QFileInfo>

#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/image/ImageDecoder.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/PortHelpers.h"

namespace runtime::patches {

namespace {

using image::DecodeOptions;

bool colorMatched(const NodeDescription& node) {
  return node.state.value(u"colorCorrection").toBool(true);
}

/// Decodes the image that is embedded in the node, when it is first needed.
class ImageLoaderEvaluator : public PatchEvaluator {
 public:
  explicit ImageLoaderEvaluator(const NodeDescription& node)
      : m_data(node.state.value(u"imageData").toData()) {
    m_options.allImages = node.state.value(u"allImages").toBool();
    m_options.fillBackground = node.state.value(u"fillBackground").toBool();
    m_options.colorMatched = colorMatched(node);
  }

  void execute(Execution& x) override {
    if (m_data.isEmpty()) return;
    m_options.largestPixels = x.budget().imagePixels;
    const auto images = image::decodeImages(m_data, m_options);
    if (!images) {
      x.report(images.error().message);
    } else if (m_options.allImages) {
      std::vector<Value> members(images->begin(), images->end());
      x.setOutput(0, Structure::fromValues(std::move(members)));
    } else {
      x.setOutput(0, images->front());
    }
  }

 private:
  QByteArray m_data;
  DecodeOptions m_options;
};

void addLoaderPorts(const NodeDescription& node, PatchPorts& ports) {
  const bool all = node.state.value(u"allImages").toBool();
  ports.outputs.append(portOf(all ? PortType::Structure : PortType::Image, "outputImage", "Image"));
}

/// Loads an image file. Everything happens at once, so the progress jumps from 0 to 1.
class ImageDownloaderEvaluator : public PatchEvaluator {
 public:
  explicit ImageDownloaderEvaluator(const NodeDescription& node) {
    m_options.colorMatched = colorMatched(node);
  }

  void execute(Execution& x) override {
    enum { Location, Reload };
    const bool signal = x.boolean(Reload);
    const QString location = x.string(Location);
    const bool loads = location != m_location || (signal && !m_signal);
    m_signal = signal;
    m_location = location;
    m_justLoaded = false;
    if (loads) load(x, location);
    x.setOutput(2, m_justLoaded);
  }
  // The signal falls again in the frame after.
  [[nodiscard]] bool wantsNextFrame() const override { return m_justLoaded; }
  [[nodiscard]] bool followsTimeAndInputs() const override { return true; }

 private:
  void load(Execution& x, const QString& location) {
    Image image;
    if (!location.isEmpty()) image = imageAt(x, location);
    m_justLoaded = !image.isNull();
    x.setOutput(0, image);
    x.setOutput(1, m_justLoaded ? 1.0 : 0.0);
  }

  Image imageAt(Execution& x, const QString& location) {
    static constexpr qint64 largestFile = 512 << 20;
    if (location.contains(QLatin1String("://")) &&
        !location.startsWith(QLatin1String("file:"), Qt::CaseInsensitive)) {
      x.report(QStringLiteral("images are not loaded over the network: %1").arg(location));
      return {};
    }
    const QString path = x.resolvePath(location);
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
      x.report(QStringLiteral("the image file cannot be opened: %1").arg(path));
      return {};
    }
    if (file.size() > largestFile) {
      x.report(QStringLiteral("the image file is too large: %1").arg(path));
      return {};
    }
    m_options.largestPixels = x.budget().imagePixels;
    const auto images = image::decodeImages(file.readAll(), m_options);
    if (images) return images->front();
    x.report(QStringLiteral("%1: %2").arg(path, images.error().message));
    return {};
  }

  DecodeOptions m_options;
  QString m_location;
  bool m_signal = false;
  bool m_justLoaded = false;
};

/// A device that is not there: its image stays empty.
class NoInputEvaluator : public PatchEvaluator {
 public:
  void execute(Execution&) override {}
  [[nodiscard]] bool followsTimeAndInputs() const override { return true; }
};

}  // namespace

void registerImageSourcePatches(PatchRegistry& registry) {
  using K = PatchClass::Kind;
  registry.add({.className = QStringLiteral("QCImageLoader"),
                .title = QStringLiteral("Image Importer"),
                .dynamicPorts = QStringLiteral("outputImage: an image, or with allImages a "
                                               "structure of images"),
                .status = QStringLiteral("PDF is not supported; TIFF needs the toolkit's plug-in"),
                .addPorts = addLoaderPorts,
                .make = makeFromNode<ImageLoaderEvaluator>});
  registry.add({.className = QStringLiteral("QCImageDownloader"),
                .title = QStringLiteral("Image Downloader"),
                .kind = K::Provider,
                .ports = {{stringPort("inputURL", "", "Image Location"),
                           booleanPort("inputSignal", false, "Update Signal")},
                          {portOf(PortType::Image, "outputImage", "Image"),
                           numberOutput("outputProgress", "Download Progress"),
                           booleanOutput("outputSignal", "Done Signal")}},
                .status = QStringLiteral("loads local files at once; network locations stay empty"),
                .make = makeFromNode<ImageDownloaderEvaluator>});
  registry.add({.className = QStringLiteral("QCVideoInput"),
                .title = QStringLiteral("Video Input"),
                .kind = K::Provider,
                .ports = {{}, {portOf(PortType::Image, "outputImage", "Image")}},
                .status = QStringLiteral("there is no camera: no image"),
                .make = makeEvaluator<NoInputEvaluator>});
}

}  // namespace runtime::patches
