#pragma once

#include "canvas/CanvasStage.h"
#include "canvas/Gesture.h"

namespace canvas {

/// Selects what a dragged rectangle touches; with Shift, held from the beginning, inverts it.
class RubberBandGesture : public Gesture {
 public:
  RubberBandGesture(CanvasStage& stage, const Pointer& start);

  void update(const Pointer& pointer) override;
  void finish(const Pointer& pointer) override;
  void cancel() override;

 private:
  [[nodiscard]] QRectF rectTo(const QPointF& viewPoint) const;
  void select(const QRectF& rect);

  CanvasStage& m_stage;
  QPointF m_start;  ///< in the view
  bool m_inverts;
};

}  // namespace canvas
