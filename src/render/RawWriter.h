#pragma once

#include "render/FrameWriter.h"

namespace render {

/// Raw RGBA frames, one after the other, on a file descriptor (standard output by default).
class RawWriter : public FrameWriter {
 public:
  explicit RawWriter(Alpha alpha, int descriptor = 1);
  [[nodiscard]] foundation::Result<QByteArray> encode(QImage& frame, const QRect& drawn) override;
  [[nodiscard]] foundation::Result<void> deliver(const QImage& frame, const QByteArray& bytes,
                                                 qint64 number) override;

 private:
  Alpha m_alpha;
  int m_descriptor;
};

}  // namespace render
