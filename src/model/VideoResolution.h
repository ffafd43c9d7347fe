#pragma once

#include <QString>

#include "model/VideoModes.h"

namespace foundation {
class UserDefaults;
}

namespace model {

/// A broadcast video format: the size of the canvas and of the exported composition in pixels, and
/// a frame-rate code. Immutable. A name that nothing knows gives an empty title and zeros.
class VideoResolution {
 public:
  /// By name: as the table has it, else the table's first mode that matches what the name says.
  explicit VideoResolution(const QString& broadcastMode,
                           const VideoModes& modes = VideoModes::standard());
  [[nodiscard]] static VideoResolution videoResolutionForBroadcastMode(
      const QString& broadcastMode) {
    return VideoResolution(broadcastMode);
  }
  /// The format of new documents: the default "defaultDocumentMode".
  [[nodiscard]] static VideoResolution defaultVideoResolution(
      const foundation::UserDefaults& defaults);

  [[nodiscard]] const QString& title() const { return m_title; }
  [[nodiscard]] FrameRateCode frameRate() const { return m_frameRate; }
  /// Frames per second; 0 when unknown.
  [[nodiscard]] double framesPerSecond() const;
  /// Whether a frame is two fields, of its even and its odd lines.
  [[nodiscard]] bool isInterlaced() const { return m_isInterlaced; }
  /// How its frames are counted.
  [[nodiscard]] foundation::TimecodeRate timecodeRate() const {
    return model::timecodeRate(m_frameRate);
  }
  [[nodiscard]] qint32 width() const { return m_width; }
  [[nodiscard]] qint32 height() const { return m_height; }
  [[nodiscard]] qint32 compositionWidth() const { return m_width; }
  [[nodiscard]] qint32 compositionHeight() const { return m_height; }
  /// Pixels are square in every format, SD included.
  [[nodiscard]] double aspectRatio() const { return 1.0; }

 private:
  void take(const VideoMode& mode, const QString& title);

  QString m_title;
  FrameRateCode m_frameRate = FrameRateCode::Unknown;
  bool m_isInterlaced = false;
  qint32 m_width = 0;
  qint32 m_height = 0;
};

}  // namespace model
