#pragma once

#include <QImage>
#include <memory>

#include "cli/OutputName.h"
#include "cli/PixelFormat.h"

namespace cli {

/// Where rendered frames go. `encode` is called from several threads at once and may use the image
/// up; `deliver` is called with its results in the order of the frames, from one thread.
class FrameWriter {
 public:
  virtual ~FrameWriter() = default;
  FrameWriter() = default;
  FrameWriter(const FrameWriter&) = delete;
  FrameWriter& operator=(const FrameWriter&) = delete;

  /// Turns a premultiplied frame into what will be written, in place or as bytes. Outside `drawn`
  /// the frame is transparent black.
  [[nodiscard]] virtual foundation::Result<QByteArray> encode(QImage& frame,
                                                              const QRect& drawn) = 0;
  [[nodiscard]] virtual foundation::Result<void> deliver(const QImage& frame,
                                                         const QByteArray& bytes,
                                                         qint64 number) = 0;

  /// The writer for the name. Makes the folder of pictures.
  [[nodiscard]] static foundation::Result<std::unique_ptr<FrameWriter>> forOutput(
      const OutputName& output, Alpha alpha);
};

}  // namespace cli
