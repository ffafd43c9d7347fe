#pragma once

#include "canvas/CanvasStage.h"
#include "canvas/Gesture.h"

namespace canvas {

/// Drags the view itself.
class PanGesture : public Gesture {
 public:
  PanGesture(CanvasStage& stage, const Pointer& start) : m_stage(stage), m_last(start.screen) {
    stage.showCursor(Qt::ClosedHandCursor);
  }

  void update(const Pointer& pointer) override {
    m_stage.scrollBy(m_last - pointer.screen);
    m_last = pointer.screen;
  }
  void finish(const Pointer& pointer) override { update(pointer); }
  void cancel() override {}

 private:
  CanvasStage& m_stage;
  QPointF m_last;
};

}  // namespace canvas
