#pragma once

#include <QMutex>
#include <vector>

#include "render/FrameWriter.h"
#include "render/PngEncoder.h"

namespace render {

/// Writes each frame as a picture file, at once and from the thread that drew it. JPEG has no
/// alpha: frames lie on black.
class PictureWriter : public FrameWriter {
 public:
  PictureWriter(PictureName name, PictureFormat format, Alpha alpha);
  [[nodiscard]] foundation::Result<QByteArray> encode(QImage& frame, const QRect& drawn) override;
  [[nodiscard]] foundation::Result<void> deliver(const QImage& frame, const QByteArray& bytes,
                                                 qint64 number) override;

 private:
  [[nodiscard]] std::unique_ptr<PngEncoder> takeEncoder();
  void giveBack(std::unique_ptr<PngEncoder> encoder);
  PictureName m_name;
  PictureFormat m_format;
  Alpha m_alpha;
  QMutex m_mutex;
  std::vector<std::unique_ptr<PngEncoder>> m_encoders;
};

}  // namespace render
