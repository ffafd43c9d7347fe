#pragma once

#include <QByteArrayView>
#include <QtEndian>
#include <algorithm>

namespace document {

/// Reads big-endian numbers from bytes that it does not own. Past the end it gives zeros and
/// remembers that (`isOk`), so a structure can be read in one go and judged afterwards.
class PsdReader {
 public:
  explicit PsdReader(QByteArrayView bytes = {}, bool large = false)
      : m_bytes(bytes), m_large(large) {}

  [[nodiscard]] bool isOk() const { return m_ok; }
  [[nodiscard]] qint64 remaining() const { return m_bytes.size() - m_position; }
  /// Whether the file is of the variant for large pictures, whose lengths have 64 bits.
  [[nodiscard]] bool isLarge() const { return m_large; }
  void setLarge(bool large) { m_large = large; }

  quint8 u8() { return number<quint8>(); }
  quint16 u16() { return number<quint16>(); }
  qint16 i16() { return number<qint16>(); }
  quint32 u32() { return number<quint32>(); }
  qint32 i32() { return number<qint32>(); }
  /// A length of 32 bits, or of 64 in the large variant.
  quint64 length() { return m_large ? number<quint64>() : u32(); }

  /// The next bytes; fewer when the data ends before.
  QByteArrayView take(quint64 count) {
    const auto taken = static_cast<qint64>(std::min<quint64>(count, remaining()));
    if (static_cast<quint64>(taken) < count) m_ok = false;
    m_position += taken;
    return m_bytes.sliced(m_position - taken, taken);
  }
  void skip(quint64 count) { (void)take(count); }
  /// A reader of the next bytes alone, or of fewer when the data ends before: then this reader is
  /// not ok any more, but the new one is until it gets there.
  PsdReader section(quint64 count) { return PsdReader(take(count), m_large); }
  /// What comes next, without going on; empty when there are not as many bytes.
  [[nodiscard]] QByteArrayView peek(qint64 count) const {
    return count <= remaining() ? m_bytes.sliced(m_position, count) : QByteArrayView();
  }

 private:
  template <typename T>
  T number() {
    const QByteArrayView bytes = take(sizeof(T));
    return bytes.size() == sizeof(T) ? qFromBigEndian<T>(bytes.data()) : T(0);
  }
  QByteArrayView m_bytes;
  qint64 m_position = 0;
  bool m_large;
  bool m_ok = true;
};

}  // namespace document
