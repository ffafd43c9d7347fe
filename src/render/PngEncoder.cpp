#include "render/PngEncoder.h"

#include <zlib.h>

#include <QtEndian>
#include <map>

namespace render {

namespace {

/// Appends a chunk's length and type; the data follows; closeChunk fills in length and checksum.
void openChunk(QByteArray& out, const char* type) {
  out.append(4, '\0');
  out.append(type, 4);
}

void appendBigEndian(QByteArray& out, quint32 value) {
  char bytes[4];
  qToBigEndian(value, bytes);
  out.append(bytes, 4);
}

void closeChunk(QByteArray& out, qsizetype start) {
  const qsizetype length = out.size() - start - 8;
  qToBigEndian(static_cast<quint32>(length), out.data() + start);
  const auto* checked = reinterpret_cast<const Bytef*>(out.constData() + start + 4);
  appendBigEndian(out, static_cast<quint32>(crc32(0, checked, static_cast<uInt>(length + 4))));
}

void appendHeader(QByteArray& out, const QSize& size) {
  out.append("\x89PNG\r\n\x1a\n", 8);
  const qsizetype start = out.size();
  openChunk(out, "IHDR");
  appendBigEndian(out, static_cast<quint32>(size.width()));
  appendBigEndian(out, static_cast<quint32>(size.height()));
  out.append("\x08\x06\x00\x00\x00", 5);  // 8 bits, RGBA, no interlace
  closeChunk(out, start);
}

/// The checksum after `count` more zero bytes.
quint32 adlerOfZeros(quint32 adler, quint64 count) {
  constexpr quint64 base = 65521;
  const quint64 a = adler & 0xffffU;
  const quint64 b = ((adler >> 16) + (count % base) * a) % base;
  return static_cast<quint32>((b << 16) | a);
}

}  // namespace

/// A zlib stream made of pieces, each of which stands for itself: compression starts afresh after
/// every piece, so that a finished piece can be put in as often as it is needed.
class PngEncoder::Stream {
 public:
  Stream() { m_ok = deflateInit2(&m_z, 1, Z_DEFLATED, -15, 9, Z_DEFAULT_STRATEGY) == Z_OK; }
  ~Stream() { deflateEnd(&m_z); }
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;

  void begin(QByteArray& out) {
    m_adler = static_cast<quint32>(adler32(0, nullptr, 0));
    out.append("\x78\x01", 2);
  }
  bool appendRows(QByteArray& out, const uchar* rgba, qsizetype bytesPerLine, qsizetype row,
                  int count) {
    m_rows.resize((row + 1) * count);
    char* to = m_rows.data();
    for (int y = 0; y < count; ++y) {
      *to++ = 0;  // filter type: none
      std::memcpy(to, rgba + y * bytesPerLine, static_cast<size_t>(row));
      to += row;
    }
    m_adler =
        static_cast<quint32>(adler32(m_adler, reinterpret_cast<const Bytef*>(m_rows.constData()),
                                     static_cast<uInt>(m_rows.size())));
    return append(out, m_rows);
  }
  bool appendEmptyRows(QByteArray& out, qsizetype row, int count) {
    m_adler = adlerOfZeros(m_adler, static_cast<quint64>(row + 1) * static_cast<quint64>(count));
    QByteArray& piece = m_empty[{row, count}];
    if (piece.isEmpty()) {
      if (m_empty.size() > 256) m_empty.clear();  // a bound that moving graphics may well reach
      QByteArray fresh;
      if (!append(fresh, QByteArray((row + 1) * count, '\0'))) return false;
      m_empty[{row, count}] = fresh;
      out.append(fresh);
      return true;
    }
    out.append(piece);
    return true;
  }
  void end(QByteArray& out) {
    out.append("\x03\x00", 2);  // an empty last block
    appendBigEndian(out, m_adler);
  }

 private:
  bool append(QByteArray& out, const QByteArray& bytes) {
    if (!m_ok || bytes.isEmpty()) return m_ok;
    const qsizetype start = out.size();
    out.resize(start +
               static_cast<qsizetype>(deflateBound(&m_z, static_cast<uLong>(bytes.size()))) + 16);
    m_z.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.constData()));
    m_z.avail_in = static_cast<uInt>(bytes.size());
    m_z.next_out = reinterpret_cast<Bytef*>(out.data() + start);
    m_z.avail_out = static_cast<uInt>(out.size() - start);
    const bool done = deflate(&m_z, Z_FULL_FLUSH) == Z_OK && m_z.avail_in == 0;
    out.resize(out.size() - static_cast<qsizetype>(m_z.avail_out));
    return done;
  }

  z_stream m_z{};
  bool m_ok = false;
  quint32 m_adler = 1;
  QByteArray m_rows;
  std::map<std::pair<qsizetype, int>, QByteArray> m_empty;
};

PngEncoder::PngEncoder() : m_stream(std::make_unique<Stream>()) {}
PngEncoder::~PngEncoder() = default;

QByteArray PngEncoder::encode(const uchar* rgba, qsizetype bytesPerLine, const QSize& size,
                              const QRect& drawn) {
  const qsizetype row = qsizetype{size.width()} * 4;
  const QRect inside = drawn & QRect(QPoint(), size);
  const int first = inside.isEmpty() ? 0 : inside.top();
  const int count = inside.isEmpty() ? 0 : inside.height();
  const int after = size.height() - first - count;
  QByteArray out;
  appendHeader(out, size);
  const qsizetype data = out.size();
  openChunk(out, "IDAT");
  m_stream->begin(out);
  const bool done = (first == 0 || m_stream->appendEmptyRows(out, row, first)) &&
                    (count == 0 || m_stream->appendRows(out, rgba + first * bytesPerLine,
                                                        bytesPerLine, row, count)) &&
                    (after == 0 || m_stream->appendEmptyRows(out, row, after));
  if (!done) return {};
  m_stream->end(out);
  closeChunk(out, data);
  const qsizetype end = out.size();
  openChunk(out, "IEND");
  closeChunk(out, end);
  return out;
}

}  // namespace render
