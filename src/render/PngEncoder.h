#pragma once

#include <QByteArray>
#include <QRect>
#include <memory>

namespace render {

/// Writes PNG for sequences: one pass of fast compression, no row filters. Rows in which nothing
/// was drawn, most of a typical graphic, are not compressed at all: their compressed form is known.
/// One encoder a thread.
class PngEncoder {
 public:
  PngEncoder();
  ~PngEncoder();
  PngEncoder(const PngEncoder&) = delete;
  PngEncoder& operator=(const PngEncoder&) = delete;

  /// The file's bytes for rows of straight RGBA (4 bytes a pixel, top row first). Rows above and
  /// below `drawn` must be transparent black. Empty when memory runs out.
  [[nodiscard]] QByteArray encode(const uchar* rgba, qsizetype bytesPerLine, const QSize& size,
                                  const QRect& drawn);

 private:
  class Stream;
  std::unique_ptr<Stream> m_stream;
};

}  // namespace render
