#pragma once

#include "render/FrameWriter.h"
#include "runtime/movie/MovieEncoder.h"

namespace render {

/// Writes frames as a movie: converted by the threads that draw, encoded by the one that delivers.
/// A codec without alpha shows the frames on black.
class MovieWriter : public FrameWriter {
 public:
  [[nodiscard]] static foundation::Result<std::unique_ptr<FrameWriter>> create(
      const QString& path, const runtime::movie::MovieFormat& format, Alpha alpha);
  MovieWriter(std::unique_ptr<runtime::movie::MovieEncoder> encoder, Alpha alpha)
      : m_encoder(std::move(encoder)), m_alpha(alpha) {}

  [[nodiscard]] foundation::Result<QByteArray> encode(QImage& frame, const QRect& drawn) override;
  [[nodiscard]] foundation::Result<void> deliver(const QImage& frame, const QByteArray& bytes,
                                                 qint64 number) override;
  [[nodiscard]] foundation::Result<void> finish() override;

 private:
  std::unique_ptr<runtime::movie::MovieEncoder> m_encoder;
  Alpha m_alpha;
};

}  // namespace render
