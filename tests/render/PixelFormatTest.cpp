#include "render/PixelFormat.h"

#include <gtest/gtest.h>

#include "render/PngEncoder.h"

namespace {

/// Every premultiplied grey with every alpha, and runs of clear and opaque pixels.
QImage sampleImage() {
  QImage image(300, 256, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  for (int a = 0; a < 256; ++a)
    for (int x = 0; x < 300; ++x) {
      const int c = std::min(x, a);
      if (x < 256) image.setPixel(x, a, qRgba(c, c / 2, a - c, a));
      if (x >= 270) image.setPixel(x, a, qRgba(a, 10, 20, 255));
    }
  return image;
}

TEST(PixelFormat, StraightAlphaAgreesWithTheToolkit) {
  QImage image = sampleImage();
  const QImage expected = image.convertToFormat(QImage::Format_RGBA8888);
  render::convertToRgba(image, render::Alpha::Straight, image.rect());
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width() * 4; ++x)
      ASSERT_NEAR(image.constScanLine(y)[x], expected.constScanLine(y)[x], 1) << x << ' ' << y;
}

TEST(PixelFormat, PremultipliedOnlySwapsComponents) {
  QImage image = sampleImage();
  const QImage expected = image.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
  render::convertToRgba(image, render::Alpha::Premultiplied, image.rect());
  for (int y = 0; y < image.height(); ++y)
    ASSERT_EQ(0, std::memcmp(image.constScanLine(y), expected.constScanLine(y),
                             static_cast<size_t>(image.width()) * 4));
}

TEST(PngEncoder, PicturesReadBackUnchanged) {
  render::PngEncoder encoder;
  const std::pair<QSize, QRect> cases[] = {{QSize(1, 1), QRect(0, 0, 1, 1)},
                                           {QSize(300, 256), QRect(0, 0, 300, 256)},
                                           {QSize(300, 256), QRect(10, 40, 20, 1)},
                                           {QSize(300, 256), QRect()},
                                           {QSize(7, 3), QRect(0, 2, 7, 900)}};
  for (const auto& [size, drawn] : cases) {
    QImage image = sampleImage().copy(QRect(QPoint(), size));
    for (int y = 0; y < size.height(); ++y)
      if (y < drawn.top() || y > drawn.bottom())
        std::memset(image.scanLine(y), 0, static_cast<size_t>(image.bytesPerLine()));
    render::convertToRgba(image, render::Alpha::Straight, image.rect());
    const QByteArray bytes = encoder.encode(image.constBits(), image.bytesPerLine(), size, drawn);
    const QImage read = QImage::fromData(bytes, "PNG").convertToFormat(QImage::Format_RGBA8888);
    ASSERT_EQ(read.size(), size);
    for (int y = 0; y < size.height(); ++y)
      ASSERT_EQ(0, std::memcmp(image.constScanLine(y), read.constScanLine(y),
                               static_cast<size_t>(size.width()) * 4));
  }
}

}  // namespace
