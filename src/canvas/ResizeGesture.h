#pragma once

#include <QCoreApplication>

#include "canvas/CanvasStage.h"
#include "canvas/DragStep.h"
#include "canvas/Gesture.h"

namespace model {
class QuartzComponent;
}

namespace canvas {

/// Resizes a component by one of its handles: Shift inverts whether proportions are kept, Alt
/// resizes from the centre, Ctrl switches guides off.
class ResizeGesture : public Gesture {
  Q_DECLARE_TR_FUNCTIONS(ResizeGesture)

 public:
  ResizeGesture(CanvasStage& stage, model::QuartzComponent& component, int handle,
                const Pointer& start);

  void update(const Pointer& pointer) override;
  void finish(const Pointer& pointer) override;
  void cancel() override;

 private:
  /// Gives an axis on which the pointer is back where it began its size back: the model leaves an
  /// axis alone on which nothing is to change.
  void restoreUnmovedAxes(const QPointF& point);

  CanvasStage& m_stage;
  model::QuartzComponent& m_component;
  int m_handle;
  QRectF m_startFrame;
  QPointF m_start;  ///< of the pointer; a click without a drag resizes nothing
  DragStep m_step;
};

}  // namespace canvas
