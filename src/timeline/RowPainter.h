#pragma once

#include <QHash>

#include "timeline/AttributeCurve.h"
#include "timeline/TimelineGlyphs.h"
#include "timeline/TimelineScene.h"

namespace timeline {

/// Paints the contents of rows: bars, key frames and curves. Works in the space of the rows; keeps
/// what it made for rows that are seen.
class RowPainter {
 public:
  /// The ground of a row: selected, odd or even.
  static void fillComponent(QPainter& painter, const model::QuartzComponent* component,
                            const QRectF& rect, int row);
  /// Only what lies between the two x is painted.
  void drawRow(QPainter& painter, const TimelineScene& scene, const TimelineRow& row, int index,
               double fromX, double toX);
  /// The attribute has other values now.
  void forgetCurve(const model::Attribute& attribute) { m_curves.remove(&attribute); }
  void forgetAllCurves() { m_curves.clear(); }
  /// Forgets those of all other attributes.
  void keepOnly(const QList<model::Attribute*>& attributes);
  /// Colours are others now.
  void forgetStamps() { m_stamps.clear(); }
  [[nodiscard]] qsizetype keptCurves() const { return m_curves.size(); }

 private:
  void drawBar(QPainter& painter, const TimelineScene& scene,
               const model::QuartzComponent& component, int row, double toX);
  void drawKeyFrames(QPainter& painter, const TimelineScene& scene,
                     const model::Attribute& attribute, int row, double fromX, double toX);
  void drawCurve(QPainter& painter, const TYTimelineGeometry& geometry,
                 const model::Attribute& attribute, int row, double fromX, double toX);
  const AttributeCurve& curveOf(const model::Attribute& attribute);

  QHash<const model::Attribute*, AttributeCurve> m_curves;
  DiamondStamps m_stamps;
};

/// Whether the component's file is missing or cannot be loaded.
[[nodiscard]] bool isBroken(const model::QuartzComponent& component);

}  // namespace timeline
