#include "document/psd/PsdChannelDecoder.h"

namespace document {

PsdChannelDecoder::PsdChannelDecoder(std::unique_ptr<PsdRows> rows, int width, int depth)
    : m_rows(std::move(rows)), m_width(width) {
  if (depth == 16) m_wide.resize(static_cast<size_t>(width));
}

bool PsdChannelDecoder::nextRow(quint8* samples) {
  if (m_wide.empty()) return m_rows->next(samples);
  if (!m_rows->next(reinterpret_cast<quint8*>(m_wide.data()))) return false;
  const quint16* wide = m_wide.data();
  // Exactly sample × 255 / 65535, rounded.
  for (int i = 0; i < m_width; ++i)
    samples[i] = static_cast<quint8>((qFromBigEndian(wide[i]) * 255u + 32895u) >> 16);
  return true;
}

std::optional<PsdChannelDecoder> PsdChannelDecoder::create(const PsdChannel& channel, QSize size,
                                                           const PsdHeader& header) {
  PsdReader reader(channel.bytes, header.large);
  const auto compression = static_cast<PsdCompression>(reader.u16());
  QByteArrayView table;
  if (compression == PsdCompression::RunLength)
    table = reader.take(quint64(header.rowLengthSize()) * quint64(size.height()));
  if (!reader.isOk()) return {};
  auto rows =
      PsdRows::create(compression, table, reader.take(quint64(reader.remaining())),
                      qint64(size.width()) * (header.depth / 8), size.height(), header.depth);
  if (!rows) return {};
  return PsdChannelDecoder(std::move(rows), size.width(), header.depth);
}

}  // namespace document
