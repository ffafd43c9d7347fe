#pragma once

#include "foundation/Result.h"
#include "foundation/archive/ArchiveGraph.h"
#include "foundation/archive/ArchiveValue.h"

namespace foundation {

/// Archives whose fields have an order but no names ("typedstream"), of either byte order.
///
/// decode() and encode() are lossless. read() and write() speak of the meaning: strings, numbers,
/// points, sizes, rectangles, colours, data, arrays and dictionaries; objects of other classes are
/// read as ArchiveObject with their class only. Refused: truncated archives, unknown value types,
/// objects nested deeper than 200, and, by read(), cycles and shared objects that expand beyond a
/// million values.
class NonKeyedArchive {
 public:
  [[nodiscard]] static Result<ArchiveGraph> decode(const QByteArray& bytes);
  [[nodiscard]] static Result<QByteArray> encode(const ArchiveGraph& graph);

  /// The archive's first object.
  [[nodiscard]] static Result<ArchiveValue> read(const QByteArray& bytes);
  /// Little-endian. Containers are written as mutable ones, colours as calibrated RGB. Fails for
  /// images and objects, and for integers of more than 32 bits.
  [[nodiscard]] static Result<QByteArray> write(const ArchiveValue& value);
};

}  // namespace foundation
