#include "quartz/TiffEncoder.h"

#include <QDataStream>
#include <QIODevice>

namespace quartz {

namespace {

constexpr quint16 shortType = 3;
constexpr quint16 longType = 4;
constexpr quint32 headerSize = 8;
constexpr quint16 samples = 4;

void writeShortEntry(QDataStream& out, quint16 tag, quint16 value) {
  out << tag << shortType << quint32(1) << value << quint16(0);
}

void writeLongEntry(QDataStream& out, quint16 tag, quint32 value) {
  out << tag << longType << quint32(1) << value;
}

/// The directory of the one picture; it stands behind the pixels.
void writeDirectory(QDataStream& out, const QImage& image, quint32 pixelBytes) {
  constexpr quint16 entryCount = 11;
  constexpr quint32 directorySize = 2 + entryCount * 12 + 4;
  const quint32 bitsOffset = headerSize + pixelBytes + directorySize;
  out << entryCount;
  writeLongEntry(out, 256, static_cast<quint32>(image.width()));
  writeLongEntry(out, 257, static_cast<quint32>(image.height()));
  out << quint16(258) << shortType << quint32(samples) << bitsOffset;  // bits of each sample
  writeShortEntry(out, 259, 1);                                        // no compression
  writeShortEntry(out, 262, 2);                                        // RGB
  writeLongEntry(out, 273, headerSize);                                // where the strip begins
  writeShortEntry(out, 277, samples);
  writeLongEntry(out, 278, static_cast<quint32>(image.height()));
  writeLongEntry(out, 279, pixelBytes);
  writeShortEntry(out, 284, 1);  // samples of a pixel stand together
  writeShortEntry(out, 338, 2);  // the extra sample is straight alpha
  out << quint32(0);             // no further picture
  for (int i = 0; i < samples; ++i) out << quint16(8);
}

}  // namespace

QByteArray tiffData(const QImage& image) {
  if (image.isNull()) return {};
  const QImage pixels = image.convertToFormat(QImage::Format_RGBA8888);
  const int row = pixels.width() * samples;
  const auto pixelBytes = static_cast<quint32>(row) * static_cast<quint32>(pixels.height());
  QByteArray bytes;
  bytes.reserve(static_cast<qsizetype>(headerSize + pixelBytes) + 160);
  QDataStream out(&bytes, QIODevice::WriteOnly);
  out.writeRawData("MM", 2);
  out << quint16(42) << quint32(headerSize + pixelBytes);
  for (int y = 0; y < pixels.height(); ++y)
    out.writeRawData(reinterpret_cast<const char*>(pixels.constScanLine(y)), row);
  writeDirectory(out, pixels, pixelBytes);
  return bytes;
}

}  // namespace quartz
