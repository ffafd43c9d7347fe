#pragma once

#include <optional>

#include "document/psd/PsdReader.h"

namespace document {

/// A block of data with a key of four letters, as they follow layer records and the list of layers.
struct PsdTaggedBlock {
  QByteArrayView key;
  PsdReader data;

  [[nodiscard]] bool is(const char (&other)[5]) const { return key == QByteArrayView(other, 4); }

  /// The next block; nothing at the end and where there is none.
  [[nodiscard]] static std::optional<PsdTaggedBlock> next(PsdReader& reader);
};

}  // namespace document
