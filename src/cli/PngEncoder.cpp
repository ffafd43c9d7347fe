#include "cli/PngEncoder.h"

#include <libdeflate.h>

#include <QtEndian>
#include <cstring>

namespace cli {

namespace {

/// Appends a chunk's length and type; the data follows; closeChunk fills in length and checksum.
void openChunk(QByteArray& out, const char* type) {
  out.append(4, '\0');
  out.append(type, 4);
}

void closeChunk(QByteArray& out, qsizetype start) {
  const qsizetype length = out.size() - start - 8;
  qToBigEndian(static_cast<quint32>(length), out.data() + start);
  const quint32 sum =
      libdeflate_crc32(0, out.constData() + start + 4, static_cast<size_t>(length) + 4);
  char bytes[4];
  qToBigEndian(sum, bytes);
  out.append(bytes, 4);
}

void appendHeader(QByteArray& out, const QSize& size) {
  out.append("\x89PNG\r\n\x1a\n", 8);
  const qsizetype start = out.size();
  openChunk(out, "IHDR");
  char fields[13] = {0, 0, 0, 0, 0, 0, 0, 0, 8, 6, 0, 0, 0};  // 8 bits, RGBA
  qToBigEndian(static_cast<quint32>(size.width()), fields);
  qToBigEndian(static_cast<quint32>(size.height()), fields + 4);
  out.append(fields, sizeof fields);
  closeChunk(out, start);
}

}  // namespace

struct PngEncoder::Compressor {
  libdeflate_compressor* handle = libdeflate_alloc_compressor(1);
  Compressor() = default;
  Compressor(const Compressor&) = delete;
  Compressor& operator=(const Compressor&) = delete;
  ~Compressor() { libdeflate_free_compressor(handle); }
};

PngEncoder::PngEncoder() : m_compressor(std::make_unique<Compressor>()) {}
PngEncoder::~PngEncoder() = default;

QByteArray PngEncoder::encode(const uchar* rgba, qsizetype bytesPerLine, const QSize& size) {
  const qsizetype row = qsizetype{size.width()} * 4;
  m_rows.resize((row + 1) * size.height());
  char* to = m_rows.data();
  for (int y = 0; y < size.height(); ++y) {
    *to++ = 0;  // filter type: none
    std::memcpy(to, rgba + y * bytesPerLine, static_cast<size_t>(row));
    to += row;
  }
  const auto bound =
      libdeflate_zlib_compress_bound(m_compressor->handle, static_cast<size_t>(m_rows.size()));
  QByteArray out;
  out.reserve(static_cast<qsizetype>(bound) + 64);
  appendHeader(out, size);
  const qsizetype start = out.size();
  openChunk(out, "IDAT");
  const qsizetype data = out.size();
  out.resize(data + static_cast<qsizetype>(bound));
  const size_t used =
      libdeflate_zlib_compress(m_compressor->handle, m_rows.constData(),
                               static_cast<size_t>(m_rows.size()), out.data() + data, bound);
  if (used == 0) return {};
  out.resize(data + static_cast<qsizetype>(used));
  closeChunk(out, start);
  const qsizetype end = out.size();
  openChunk(out, "IEND");
  closeChunk(out, end);
  return out;
}

}  // namespace cli
