#pragma once

#include <QPixmap>
#include <array>

#include "timeline/TimelineScene.h"

class QPainter;

namespace timeline {

/// What lies behind the contents of rows: ground, grid and the shade beyond the end. Painted once
/// for each kind of row and copied for every row that is seen, since grids have hundreds of lines.
class GroundStrips {
 public:
  enum Kind { Even, Odd, Selected };

  /// Brings the strips up to date for a window of that width onto the rows.
  void update(const TimelineScene& scene, double width, double scale);
  /// The painter works in the space of the rows.
  void draw(QPainter& painter, int row, Kind kind, double fromX, double toX) const;

 private:
  /// What the strips depend on.
  struct Key {
    double left = 0;
    double width = 0;
    double scale = 0;
    double unitWidth = 0;
    double duration = -1;
    quint64 ticks = 0;
    std::array<QRgb, 4> colours{};
    friend bool operator==(const Key&, const Key&) = default;
  };
  [[nodiscard]] QPixmap painted(const TimelineScene& scene, Kind kind) const;

  Key m_key;
  std::array<QPixmap, 3> m_strips;
};

}  // namespace timeline
