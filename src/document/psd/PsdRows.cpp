#include "document/psd/PsdRows.h"

#include <zlib.h>

#include <QtEndian>
#include <cstring>

namespace document {

namespace {

class RawRows : public PsdRows {
 public:
  RawRows(QByteArrayView data, qint64 rowBytes) : m_data(data), m_rowBytes(rowBytes) {}
  bool next(quint8* row) override {
    if (m_data.size() < m_rowBytes) return false;
    std::memcpy(row, m_data.data(), static_cast<size_t>(m_rowBytes));
    m_data = m_data.sliced(m_rowBytes);
    return true;
  }

 private:
  QByteArrayView m_data;
  qint64 m_rowBytes;
};

/// Runs and literals, each behind a byte that tells which and how many.
bool unpackRow(QByteArrayView packed, quint8* row, qint64 size) {
  const auto* in = reinterpret_cast<const quint8*>(packed.data());
  const quint8* const end = in + packed.size();
  quint8* const rowEnd = row + size;
  while (row < rowEnd && in < end) {
    const int control = static_cast<qint8>(*in++);
    if (control == -128) continue;  // nothing, by definition
    const qint64 count = std::min<qint64>(control < 0 ? 1 - control : control + 1, rowEnd - row);
    if (control < 0) {
      if (in == end) return false;
      std::memset(row, *in++, static_cast<size_t>(count));
    } else {
      if (end - in < count) return false;
      std::memcpy(row, in, static_cast<size_t>(count));
      in += count;
    }
    row += count;
  }
  return row == rowEnd;
}

class RunLengthRows : public PsdRows {
 public:
  RunLengthRows(QByteArrayView table, QByteArrayView data, qint64 rowBytes, int rows)
      : m_table(table), m_data(data), m_rowBytes(rowBytes), m_entry(table.size() / rows) {}
  bool next(quint8* row) override {
    if (m_table.size() < m_entry) return false;
    const qint64 length = m_entry == 4 ? qFromBigEndian<quint32>(m_table.data())
                                       : qFromBigEndian<quint16>(m_table.data());
    if (m_data.size() < length || !unpackRow(m_data.first(length), row, m_rowBytes)) return false;
    m_table = m_table.sliced(m_entry);
    m_data = m_data.sliced(length);
    return true;
  }

 private:
  QByteArrayView m_table;
  QByteArrayView m_data;
  qint64 m_rowBytes;
  qint64 m_entry;
};

class ZipRows : public PsdRows {
 public:
  ZipRows(QByteArrayView data, qint64 rowBytes) : m_rowBytes(rowBytes) {
    m_stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.data()));
    m_stream.avail_in = static_cast<uInt>(std::min<qint64>(data.size(), 0xFFFFFFFFLL));
    m_ready = inflateInit(&m_stream) == Z_OK;
  }
  ~ZipRows() override {
    if (m_ready) inflateEnd(&m_stream);
  }
  ZipRows(const ZipRows&) = delete;
  ZipRows& operator=(const ZipRows&) = delete;
  bool next(quint8* row) override {
    if (!m_ready) return false;
    m_stream.next_out = row;
    m_stream.avail_out = static_cast<uInt>(m_rowBytes);
    const int status = inflate(&m_stream, Z_SYNC_FLUSH);
    return (status == Z_OK || status == Z_STREAM_END) && m_stream.avail_out == 0;
  }

 private:
  z_stream m_stream = {};
  qint64 m_rowBytes;
  bool m_ready = false;
};

/// The samples of a row are stored as differences from their left neighbours.
class PredictedRows : public ZipRows {
 public:
  PredictedRows(QByteArrayView data, qint64 rowBytes, bool wide)
      : ZipRows(data, rowBytes), m_size(rowBytes), m_wide(wide) {}
  bool next(quint8* row) override {
    if (!ZipRows::next(row)) return false;
    if (!m_wide) {
      for (qint64 i = 1; i < m_size; ++i) row[i] = static_cast<quint8>(row[i] + row[i - 1]);
      return true;
    }
    quint16 sample = 0;
    for (qint64 i = 0; i + 1 < m_size; i += 2) {
      sample = static_cast<quint16>(sample + qFromBigEndian<quint16>(row + i));
      qToBigEndian(sample, row + i);
    }
    return true;
  }

 private:
  qint64 m_size;
  bool m_wide;
};

}  // namespace

std::unique_ptr<PsdRows> PsdRows::create(PsdCompression compression, QByteArrayView table,
                                         QByteArrayView data, qint64 rowBytes, int rows,
                                         int depth) {
  constexpr qint64 kBestZipRatio = 1032;
  constexpr qint64 kLongestRun = 128;
  switch (compression) {
    case PsdCompression::Raw:
      if (data.size() < rowBytes * rows) return {};
      return std::make_unique<RawRows>(data, rowBytes);
    case PsdCompression::RunLength:
      if (data.size() < (rowBytes + kLongestRun - 1) / kLongestRun * 2 * rows) return {};
      return std::make_unique<RunLengthRows>(table, data, rowBytes, rows);
    case PsdCompression::Zip:
      if (data.size() * kBestZipRatio < rowBytes * rows) return {};
      return std::make_unique<ZipRows>(data, rowBytes);
    case PsdCompression::ZipWithPrediction:
      if (data.size() * kBestZipRatio < rowBytes * rows) return {};
      return std::make_unique<PredictedRows>(data, rowBytes, depth == 16);
  }
  return {};
}

}  // namespace document
