#pragma once

namespace model {
class QuartzComponent;
}

namespace timeline {

/// How bars are moved and stretched. All values are seconds.
class ComponentTiming {
 public:
  enum class Duration { Keep, Change };
  struct Times {
    double start = 0;
    double end = 0;
    double keyFrames = 0;  ///< how far key frames have been moved
    friend bool operator==(const Times&, const Times&) = default;
  };

  /// Moves the start. With the duration kept the bar stops at the composition's end; otherwise the
  /// start stays before the end. It stops at 0, unless a bar longer than the composition was just
  /// pulled back from the end. Key frames move by the delta that was asked for, not by what the
  /// start could follow.
  [[nodiscard]] static Times withStartMoved(const Times& times, double delta, Duration duration,
                                            double compositionDuration);
  /// The end stays behind the start and may leave the composition; key frames stay.
  [[nodiscard]] static Times withEndMoved(const Times& times, double delta);

  [[nodiscard]] static Times of(const model::QuartzComponent& component);
  /// Gives a component these times and moves all its key frames. Times that did not change are not
  /// set.
  static void apply(model::QuartzComponent& component, const Times& times);
  /// The move of one component as one call.
  static void adjustStartTime(model::QuartzComponent& component, Duration duration, double delta);
};

}  // namespace timeline
