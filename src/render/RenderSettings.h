#pragma once

#include <QDateTime>
#include <QSize>
#include <optional>
#include <vector>

#include "render/FrameTarget.h"

namespace render {

/// How a graphic is played into files.
struct RenderSettings {
  OutputName output = {};
  std::optional<QSize> size = {};         ///< pixels; none: as the file says
  std::optional<FrameRate> rate = {};     ///< none: the document's
  std::optional<bool> isInterlaced = {};  ///< as the format named says; none named: the document's
  bool fields = false;                    ///< draw each field at its own time
  std::optional<runtime::movie::MovieCodec> codec = {};  ///< none: the container's usual one
  double from = 0;                      ///< seconds; what comes before is played, not written
  std::optional<double> duration = {};  ///< seconds
  std::optional<qint64> frames = {};    ///< none, and no duration: until the graphic is over
  std::vector<double> triggers = {};    ///< seconds, ascending
  /// Times are those of the editor's time line: nothing waits at stops. Of documents only.
  bool passesStops = false;
  bool automaticTrigger = false;  ///< presses the trigger at every stop
  double stopHold = 0;      ///< seconds that every stop stands before it is pressed automatically
  QDateTime clock = {};     ///< the wall clock at time 0; invalid: now
  bool background = false;  ///< on the document's background; compositions lie on black
  Alpha alpha = Alpha::Straight;
  int threads = 0;  ///< that draw; 0: one a core

  /// No side above 16384 pixels and no more than 134 million (16384 x 8192) in all, which is half a
  /// gigabyte a canvas.
  [[nodiscard]] static bool isDrawable(const QSize& size);
};

}  // namespace render
