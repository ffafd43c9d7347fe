#pragma once

#include <QList>
#include <QSet>
#include <optional>

namespace model {
class Composition;
class QuartzComponent;
}  // namespace model

namespace timeline {

class TYTimelineGeometry;

/// Times that drags are drawn to: the editor time, stop frames, the edges of components, beginning
/// and end of the composition.
class TimeSnapping {
 public:
  static constexpr double reach = 6;  ///< logical pixels

  explicit TimeSnapping(QList<double> targets);
  /// What is dragged itself must not be a target.
  struct LeftOut {
    QSet<const model::QuartzComponent*> components = {};
    bool stopFrames = false;  ///< where they would replace each other
    bool end = false;
    bool editorTime = false;
  };
  [[nodiscard]] static TimeSnapping ofComposition(const model::Composition& composition,
                                                  const LeftOut& leftOut);

  struct Snap {
    double delta = 0;                ///< seconds, in place of the one that was proposed
    std::optional<double> target{};  ///< where something came to lie, if it did
  };
  /// For times that are moved together by a delta (seconds).
  [[nodiscard]] Snap snapped(const QList<double>& times, double delta,
                             const TYTimelineGeometry& geometry) const;

 private:
  QList<double> m_targets;  ///< ascending
};

}  // namespace timeline
