#pragma once

#include <memory>
#include <optional>

#include "canvas/CompositionLayer.h"
#include "canvas/DrawingAreaLayer.h"
#include "canvas/RubberBandLayer.h"
#include "canvas/SafeAreasLayer.h"
#include "canvas/SelectionOverlay.h"
#include "canvas/Snapping.h"

namespace canvas {

/// The layers of the canvas over one another, painted into any painter. Knows of no window.
class CanvasScene {
 public:
  /// What stands over the layers for a moment.
  struct Transient {
    Snap snap;
    bool isDropTarget = false;
    QString timecode;  ///< empty: none
  };

  explicit CanvasScene(model::Composition& composition, CompositionLayer::Clocks clocks = {});

  [[nodiscard]] CompositionLayer& componentsLayer() { return m_components; }
  [[nodiscard]] const CompositionLayer& componentsLayer() const { return m_components; }
  [[nodiscard]] RubberBandLayer& rubberBandLayer() { return m_rubberBand; }
  [[nodiscard]] Transient& transient() { return m_transient; }
  [[nodiscard]] bool backgroundChanged() { return std::exchange(m_backgroundChanged, false); }

  /// Brings the layers up to date for a part of a view (logical pixels). Returns what of the view
  /// looks different.
  [[nodiscard]] QRegion display(const CanvasGeometry& geometry, const QRect& part,
                                double devicePixelRatio);
  /// The lowest layer is painted anew at the next display.
  void dropGround() { m_ground = {}; }
  /// Whether the last display was for exactly that.
  [[nodiscard]] bool isDisplayed(const CanvasGeometry& geometry, const QRect& part,
                                 double devicePixelRatio) const;
  /// What was displayed last, in the view's logical pixels.
  void paint(QPainter& painter) const;
  [[nodiscard]] QRect timecodePlace() const;
  /// Why the component cannot be drawn; empty when it can.
  [[nodiscard]] QString problemOf(const model::QuartzComponent& component) const;
  /// Why the topmost component at the view's point cannot be drawn; empty where all is well.
  [[nodiscard]] QString problemAt(const QPointF& viewPoint) const;

 private:
  void paintGround();
  [[nodiscard]] QRegion overlayRegion() const;
  void paintBrokenMarks(QPainter& painter) const;
  void paintSnap(QPainter& painter) const;
  void paintDropTarget(QPainter& painter) const;

  model::Composition& m_composition;
  CompositionLayer m_components;
  bool m_backgroundChanged = false;
  DrawingAreaLayer m_drawingArea;
  SafeAreasLayer m_safeAreas;
  RubberBandLayer m_rubberBand;
  Transient m_transient;
  CanvasGeometry m_geometry;
  QRect m_part;
  double m_ratio = 0;
  QImage m_ground;
  std::vector<SelectionOverlay> m_overlays;
  QRegion m_overlayRegion;
  QList<BrokenMark> m_brokenMarks;
  bool m_isEmpty = false;
};

}  // namespace canvas
