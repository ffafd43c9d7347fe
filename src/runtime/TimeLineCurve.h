#pragma once

#include <vector>

#include "foundation/PropertyValue.h"

namespace runtime {

/// One curve of a Timeline patch: key frames (seconds, value) joined by cubic Bézier segments.
class TimeLineCurve {
 public:
  struct Point {
    double time = 0;
    double value = 0;
  };
  struct KeyFrame {
    Point place;
    Point left;   ///< handle towards the key frame before, relative to the place
    Point right;  ///< handle towards the next one, relative to the place
  };

  /// Key frames in any order; of several at one time the later ones in the list hold from there on.
  /// Times that are not finite are left out.
  explicit TimeLineCurve(std::vector<KeyFrame> keyFrames);
  /// Reads the stored "keyFrames" array.
  [[nodiscard]] static TimeLineCurve fromProperty(const foundation::PropertyArray& keyFrames);

  /// The value at a time: that of the first key frame before it, of the last one after it, 0 for an
  /// empty curve.
  [[nodiscard]] double valueAt(double time) const;

 private:
  struct Segment {
    double start = 0;
    double duration = 0;
    double t1 = 0, t2 = 1;                  ///< inner control times as fractions of the duration
    double v0 = 0, d1 = 0, d2 = 0, d3 = 0;  ///< first value, and the others relative to it
    bool isStraight = false;
  };
  [[nodiscard]] static Segment between(const KeyFrame& first, const KeyFrame& second);
  [[nodiscard]] static double parameterAt(const Segment& segment, double fraction);

  std::vector<KeyFrame> m_keyFrames;
  std::vector<Segment> m_segments;  ///< one for each key frame but the last
};

}  // namespace runtime
