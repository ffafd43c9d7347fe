#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include "runtime/movie/MovieEncoder.h"

namespace support {

/// A picture that tells its number: eight bars from the left, white for a bit that is set, over a
/// ground of the colour.
inline QImage numberedPicture(int number, const QSize& size, const QColor& ground = Qt::black) {
  QImage image(size, QImage::Format_ARGB32);
  image.fill(ground);
  for (int bit = 0; bit < 8; ++bit) {
    if ((number & (1 << bit)) == 0) continue;
    for (int y = 0; y < size.height() / 2; ++y)
      for (int x = bit * size.width() / 8; x < (bit + 1) * size.width() / 8; ++x)
        image.setPixel(x, y, qRgb(255, 255, 255));
  }
  return image;
}

inline int numberIn(const QImage& image) {
  int number = 0;
  for (int bit = 0; bit < 8; ++bit) {
    const QPoint middle((2 * bit + 1) * image.width() / 16, image.height() / 4);
    if (qGreen(image.pixel(middle)) > 128) number |= 1 << bit;
  }
  return number;
}

/// Writes straight-alpha pictures as a movie; false, with a failed test, when that goes wrong.
inline bool writeMovie(const QString& path, const runtime::movie::MovieFormat& format, int frames,
                       const std::function<QImage(int)>& picture) {
  auto encoder = runtime::movie::MovieEncoder::create(path, format);
  for (int i = 0; encoder && i < frames; ++i) {
    const QImage rgba = picture(i).convertToFormat(QImage::Format_RGBA8888);
    const auto converted = (*encoder)->convert(rgba.constBits(), rgba.bytesPerLine());
    auto added = converted ? (*encoder)->add(*converted)
                           : foundation::Result<void>(tl::unexpected(converted.error()));
    if (!added) encoder = tl::unexpected(added.error());
  }
  if (encoder)
    if (auto done = (*encoder)->finish(); !done) encoder = tl::unexpected(done.error());
  if (!encoder) ADD_FAILURE() << encoder.error().text().toStdString();
  return encoder.has_value();
}

/// A movie whose every picture tells its number.
inline bool writeNumberedMovie(const QString& path, runtime::movie::MovieCodec codec, int frames,
                               qint64 numerator = 25, qint64 denominator = 1,
                               const QSize& size = {64, 48}) {
  const auto container = runtime::movie::containerOf(path);
  return writeMovie(path,
                    {.container = *container,
                     .codec = codec,
                     .size = size,
                     .rateNumerator = numerator,
                     .rateDenominator = denominator,
                     .threads = 1},
                    frames, [&](int i) { return numberedPicture(i, size); });
}

}  // namespace support
