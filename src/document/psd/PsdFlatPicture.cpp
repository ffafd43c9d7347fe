#include "document/psd/PsdFlatPicture.h"

#include "document/psd/PsdLayerDecoder.h"

namespace document {

namespace {

/// The packed bytes of as many rows as the table has entries.
quint64 packedSize(QByteArrayView table, bool large) {
  PsdReader lengths(table, large);
  quint64 sum = 0;
  while (lengths.remaining() > 0) sum += large ? lengths.u32() : lengths.u16();
  return sum;
}

}  // namespace

std::optional<QImage> readPsdFlatPicture(const PsdHeader& header, PsdReader reader) {
  const auto compression = static_cast<PsdCompression>(reader.u16());
  const int height = header.size.height();
  const qint64 rowBytes = qint64(header.size.width()) * (header.depth / 8);
  const quint64 tableSize = quint64(height) * quint64(header.rowLengthSize());
  PsdReader tables;
  if (compression == PsdCompression::RunLength)
    tables = reader.section(tableSize * quint64(header.channels));
  else if (compression != PsdCompression::Raw)
    return {};
  std::vector<std::optional<PsdChannelDecoder>> channels;
  for (int i = 0; i < header.colorChannels(); ++i) {
    const bool packed = compression == PsdCompression::RunLength;
    const QByteArrayView table = packed ? tables.take(tableSize) : QByteArrayView();
    const QByteArrayView data =
        reader.take(packed ? packedSize(table, header.large) : quint64(rowBytes) * quint64(height));
    auto rows = reader.isOk()
                    ? PsdRows::create(compression, table, data, rowBytes, height, header.depth)
                    : nullptr;
    if (!rows) return {};
    channels.emplace_back(PsdChannelDecoder(std::move(rows), header.size.width(), header.depth));
  }
  channels.emplace_back();
  return PsdLayerDecoder(header).assemble(channels, {}, header.size, {});
}

}  // namespace document
