#pragma once

#include <QByteArray>
#include <vector>

#include "foundation/Result.h"
#include "runtime/Image.h"

namespace runtime::image {

struct DecodeOptions {
  bool allImages = false;       ///< every image of the file instead of the first
  bool fillBackground = false;  ///< white behind transparent pixels
  bool colorMatched = true;     ///< convert an embedded colour space to sRGB
  qint64 largestPixels = 64'000'000;
};

/// The images of an encoded file (PNG, JPEG, GIF, BMP; TIFF where the plug-in is installed).
/// Orientation flags are ignored. Results are kept for as long as memory for them lasts, so the
/// same data gives the same images. Thread-safe. Fails with a reason for the person; never gives an
/// empty list.
[[nodiscard]] foundation::Result<std::vector<Image>> decodeImages(
    const QByteArray& data, const DecodeOptions& options = {});

}  // namespace runtime::image
