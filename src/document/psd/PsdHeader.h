#pragma once

#include <QSize>

#include "document/psd/PsdReader.h"
#include "foundation/Result.h"

namespace document {

/// What a layered image file says about itself in its first bytes.
struct PsdHeader {
  enum class Mode : quint16 { Gray = 1, Rgb = 3 };

  QSize size;        ///< of the canvas, pixels
  int channels = 0;  ///< of the flattened picture
  int depth = 8;     ///< bits a channel: 8 or 16
  Mode mode = Mode::Rgb;
  bool large = false;  ///< the variant for large pictures

  [[nodiscard]] int colorChannels() const { return mode == Mode::Gray ? 1 : 3; }
  /// Bytes of an entry in a table of packed rows.
  [[nodiscard]] int rowLengthSize() const { return large ? 4 : 2; }

  /// Sets the reader to the variant of the file. Fails for other files and for kinds of pictures
  /// that are not read.
  [[nodiscard]] static foundation::Result<PsdHeader> read(PsdReader& reader);
};

/// Width and height of no canvas, layer or mask go beyond this.
inline constexpr int kLargestPsdSide = 30'000;
/// Neither the canvas nor all layers together may have more pixels.
inline constexpr qint64 kMostPsdPixels = 300'000'000;

}  // namespace document
