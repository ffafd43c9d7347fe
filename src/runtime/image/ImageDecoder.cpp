#include "runtime/image/ImageDecoder.h"

#include <QBuffer>
#include <QCache>
#include <QColorSpace>
#include <QCryptographicHash>
#include <QImageReader>
#include <QMutex>
#include <QPainter>

namespace runtime::image {

namespace {

constexpr int cachedKilobytes = 256 * 1024;
constexpr int mostImages = 1000;

struct DecodedFiles {
  QMutex mutex;
  QCache<QByteArray, std::vector<Image>> files{cachedKilobytes};
};

DecodedFiles& decodedFiles() {
  static DecodedFiles all;
  return all;
}

QByteArray cacheKey(const QByteArray& data, const DecodeOptions& options) {
  QCryptographicHash hash(QCryptographicHash::Sha1);
  hash.addData(data);
  return hash.result() +
         char('0' + options.allImages + 2 * options.fillBackground + 4 * options.colorMatched);
}

foundation::Error failureOf(const QImageReader& reader) {
  return {QStringLiteral("the image data cannot be read: %1").arg(reader.errorString()), {}, {}};
}

QImage finished(QImage image, const DecodeOptions& options) {
  const QColorSpace space = image.colorSpace();
  if (options.colorMatched && space.isValid() && space != QColorSpace(QColorSpace::SRgb)) {
    if (image.depth() <= 8) image.convertTo(QImage::Format_ARGB32);  // palettes and greys
    image.convertToColorSpace(QColorSpace::SRgb);
  }
  image.setColorSpace({});
  image.convertTo(QImage::Format_ARGB32_Premultiplied);
  if (options.fillBackground) {
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOver);
    painter.fillRect(image.rect(), Qt::white);
  }
  return image;
}

foundation::Result<std::vector<Image>> decoded(const QByteArray& data,
                                               const DecodeOptions& options) {
  if (data.startsWith("%PDF"))
    return foundation::failure(QStringLiteral("PDF images are not supported"));
  QBuffer buffer;
  buffer.setData(data);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(false);
  std::vector<Image> images;
  qint64 pixels = 0;
  do {
    const QSize size = reader.size();
    pixels += qint64{size.width()} * size.height();
    if (size.isValid() && pixels > options.largestPixels)
      return foundation::failure(QStringLiteral("an image of %1 × %2 pixels is too large")
                                     .arg(size.width())
                                     .arg(size.height()));
    const QImage image = reader.read();
    if (image.isNull()) {
      if (images.empty()) return tl::unexpected(failureOf(reader));
      break;
    }
    images.push_back(Image::fromQImage(finished(image, options)));
    // Animations step on by reading, files of several pages by jumping.
  } while (options.allImages && images.size() < mostImages &&
           (reader.supportsAnimation() ? reader.canRead() : reader.jumpToNextImage()));
  return images;
}

int cost(const std::vector<Image>& images) {
  qint64 bytes = 1024;
  for (const Image& image : images) bytes += 4LL * image.size().width() * image.size().height();
  return static_cast<int>(bytes / 1024);
}

}  // namespace

foundation::Result<std::vector<Image>> decodeImages(const QByteArray& data,
                                                    const DecodeOptions& options) {
  const QByteArray key = cacheKey(data, options);
  DecodedFiles& all = decodedFiles();
  {
    const QMutexLocker lock(&all.mutex);
    if (const auto* found = all.files.object(key)) return *found;
  }
  auto images = decoded(data, options);
  if (images) {
    const QMutexLocker lock(&all.mutex);
    all.files.insert(key, new std::vector<Image>(*images), cost(*images));
  }
  return images;
}

}  // namespace runtime::image
