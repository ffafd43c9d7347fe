#pragma once

#include <QImage>
#include <memory>

#include "cli/PixelFormat.h"
#include "foundation/Result.h"

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

  /// Chooses by the output's name: "-" raw RGBA on standard output, a name with a number place such
  /// as "name_%05d.png" or a folder a sequence, else one picture. Fails for unknown formats.
  [[nodiscard]] static foundation::Result<std::unique_ptr<FrameWriter>> forOutput(
      const QString& output, Alpha alpha);
  /// The output names one picture, not a sequence or a stream.
  [[nodiscard]] static bool isSinglePicture(const QString& output);
};

}  // namespace cli
