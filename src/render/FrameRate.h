#pragma once

#include <QString>
#include <optional>

#include "model/VideoModes.h"

namespace render {

/// A frame rate as an exact fraction, so that frame times do not drift.
struct FrameRate {
  qint64 numerator = 25;
  qint64 denominator = 1;
  /// Seconds from the first frame to frame `index`.
  [[nodiscard]] double timeOf(qint64 index) const {
    return static_cast<double>(index * denominator) / static_cast<double>(numerator);
  }
  [[nodiscard]] qint64 framesIn(double seconds) const;
  /// "25", "29.97" (30000/1001), "60000/1001". Nothing for other texts and rates out of 0…1000.
  [[nodiscard]] static std::optional<FrameRate> fromText(const QString& text);
};

/// The rate of a video format; 25 where it is unknown.
[[nodiscard]] FrameRate frameRate(model::FrameRateCode code);

}  // namespace render
