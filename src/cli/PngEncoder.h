#pragma once

#include <QByteArray>
#include <QImage>

namespace cli {

/// Writes PNG for sequences: one pass of fast compression, no row filters. One encoder a thread.
class PngEncoder {
 public:
  PngEncoder();
  ~PngEncoder();
  PngEncoder(const PngEncoder&) = delete;
  PngEncoder& operator=(const PngEncoder&) = delete;

  /// The file's bytes for rows of straight RGBA (4 bytes a pixel, top row first). Empty when memory
  /// runs out.
  [[nodiscard]] QByteArray encode(const uchar* rgba, qsizetype bytesPerLine, const QSize& size);

 private:
  struct Compressor;
  std::unique_ptr<Compressor> m_compressor;
  QByteArray m_rows;
};

}  // namespace cli
