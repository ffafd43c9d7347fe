#pragma once

#include "timeline/TimelineScene.h"

class QPainter;

namespace timeline {

/// Paints the title column beside the rows: disclosure, titles, eyes.
class TitlePainter {
 public:
  /// What can be hit in a row of the column.
  enum class Part { Disclosure, Title, Eye };

  /// The painter works in pixels of the column, which begins at the first seen row's upper edge.
  static void drawRuler(QPainter& painter, const TimelineScene& scene, const QRectF& exposed);

  // In the row's own coordinates, from its upper left corner.
  [[nodiscard]] static QRectF disclosureRect();
  [[nodiscard]] static QRectF eyeRect(double componentsWidth);
  [[nodiscard]] static QRectF textBox(const TimelineRow& row, double componentsWidth);
  /// The title where it has no room in the column; else nothing.
  [[nodiscard]] static QString fullTitle(const TimelineRow& row, double componentsWidth);
  [[nodiscard]] static Part partAt(const TimelineRow& row, const QPointF& point,
                                   double componentsWidth);

 private:
  static void drawRow(QPainter& painter, const TimelineScene& scene, const TimelineRow& row,
                      int index, const QRectF& rect);
};

}  // namespace timeline
