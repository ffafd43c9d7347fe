#pragma once

#include <QtEndian>
#include <cstring>
#include <vector>

namespace foundation::detail {

/// Where a binary property list keeps its objects. Filled by checkPlistBinary().
struct PlistBinaryLayout {
  /// Bytes behind everything that number() reads, so that it may always load eight.
  static constexpr size_t kTrailerSize = 32;

  const uchar* bytes = nullptr;
  size_t size = 0;
  size_t table = 0;  ///< offset of the offset table
  unsigned offsetWidth = 0;
  unsigned referenceWidth = 0;
  quint64 root = 0;
  /// By object: whether it is used more than once.
  std::vector<quint8> shared;

  /// A big-endian number of 1 to 8 bytes that lies before the trailer.
  [[nodiscard]] quint64 number(size_t at, unsigned width) const {
    return qFromBigEndian<quint64>(bytes + at) >> (64 - 8 * width);
  }
  [[nodiscard]] quint64 offsetOf(quint64 object) const {
    return number(table + static_cast<size_t>(object) * offsetWidth, offsetWidth);
  }
  /// The count of a string, data or container whose header is inside; body is then its first byte.
  [[nodiscard]] quint64 length(size_t at, size_t& body) const {
    const unsigned low = bytes[at] & 0xF;
    body = at + 1;
    if (low != 0xF) return low;
    const unsigned width = 1U << (bytes[body] & 0xF);
    const quint64 value = number(body + 1, width);
    body += 1 + width;
    return value;
  }
};

}  // namespace foundation::detail
