#include "render/movie/MovieWriter.h"

namespace render {

using foundation::Result;

Result<std::unique_ptr<FrameWriter>> MovieWriter::create(const QString& path,
                                                         const runtime::movie::MovieFormat& format,
                                                         Alpha alpha) {
  auto encoder = runtime::movie::MovieEncoder::create(path, format);
  if (!encoder) return tl::unexpected(encoder.error());
  // Premultiplied colours are what the frame looks like on black.
  const Alpha written = runtime::movie::keepsAlpha(format.codec) ? alpha : Alpha::Premultiplied;
  return std::make_unique<MovieWriter>(std::move(*encoder), written);
}

Result<QByteArray> MovieWriter::encode(QImage& frame, const QRect& drawn) {
  convertToRgba(frame, m_alpha, drawn);
  return m_encoder->convert(frame.constBits(), frame.bytesPerLine());
}

Result<void> MovieWriter::deliver(const QImage&, const QByteArray& bytes, qint64) {
  return m_encoder->add(bytes);
}

Result<void> MovieWriter::finish() {
  return m_encoder->finish();
}

}  // namespace render
