#pragma once

#include <QByteArray>
#include <QImage>

namespace quartz {

/// The image as a baseline TIFF file: one uncompressed strip of straight 8-bit RGBA, big-endian.
/// The same pixels always give the same bytes. Empty for a null image.
[[nodiscard]] QByteArray tiffData(const QImage& image);

}  // namespace quartz
