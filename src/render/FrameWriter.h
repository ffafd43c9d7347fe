#pragma once

#include <QImage>
#include <memory>

#include "foundation/Result.h"
#include "render/FrameTarget.h"

namespace render {

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
  /// After the last frame. Without it the output counts as given up: what has no name of its own
  /// for each frame leaves nothing behind.
  [[nodiscard]] virtual foundation::Result<void> finish() { return {}; }

  /// The writer for the target. Makes the folder of its files.
  [[nodiscard]] static foundation::Result<std::unique_ptr<FrameWriter>> forOutput(
      const FrameTarget& target);
};

}  // namespace render
