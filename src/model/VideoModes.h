#pragma once

#include <QList>
#include <QString>
#include <functional>

#include "foundation/Timecode.h"

namespace model {

/// Frame rates by the codes that documents and formats use.
enum class FrameRateCode : qint32 {
  Rate23_98 = 0,
  Rate24 = 1,
  Rate25 = 2,
  Rate29_97 = 3,
  Rate30 = 4,
  Rate50 = 5,
  Rate59_94 = 6,
  Rate60 = 7,
  Unknown = 8
};

/// 25 a second for the unknown rate.
[[nodiscard]] foundation::TimecodeRate timecodeRate(FrameRateCode code);

/// One format that video hardware can play.
struct VideoMode {
  static constexpr quint32 rgba = 0x72676261;  ///< the characters r, g, b, a

  QString name;
  QString group;  ///< formats listed together in menus
  FrameRateCode frameRate = FrameRateCode::Unknown;
  quint32 pixelFormat = rgba;
  qint64 scan = 0;  ///< 0 progressive, 1 interlaced
  qint32 width = 0;
  qint32 height = 0;
};

/// The formats that the system offers, in the order of its menus.
class VideoModes {
 public:
  explicit VideoModes(QList<VideoMode> modes) : m_modes(std::move(modes)) {}
  /// SD to UHD.
  [[nodiscard]] static const VideoModes& standard();

  /// The mode of that exact name, or none.
  [[nodiscard]] const VideoMode* supportedModeForName(const QString& name) const;
  /// Calls the visitor for each mode until it sets the stop flag.
  void enumerateSupportedModes(
      const std::function<void(const VideoMode& mode, bool& stop)>& visitor) const;

 private:
  QList<VideoMode> m_modes;
};

}  // namespace model
