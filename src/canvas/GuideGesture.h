#pragma once

#include <QCoreApplication>

#include "canvas/CanvasStage.h"
#include "canvas/DragStep.h"
#include "canvas/Gesture.h"

namespace model {
class Ruler;
}

namespace canvas {

/// Moves a guide, by whole pixels of the picture, or pulls a new one out of a ruler. One that is
/// let go outside the picture or on its ruler is removed, or was never there.
class GuideGesture : public Gesture {
  Q_DECLARE_TR_FUNCTIONS(GuideGesture)

 public:
  GuideGesture(CanvasStage& stage, model::Ruler& guide);
  GuideGesture(CanvasStage& stage, Qt::Orientation orientation);

  /// The guide that is nearer to the point of the picture than the reach, or none.
  [[nodiscard]] static model::Ruler* guideAt(const model::Composition& composition,
                                             const QPointF& point, double reach = Snapping::grab);

  void update(const Pointer& pointer) override;
  void finish(const Pointer& pointer) override;
  void cancel() override;

 private:
  [[nodiscard]] double coordinateOf(const QPointF& point) const;
  /// Outside the picture or back on the ruler: where a guide is let go to be removed.
  [[nodiscard]] bool isOutside(const Pointer& pointer) const;
  void begin(double position);

  CanvasStage& m_stage;
  model::Ruler* m_guide;  ///< none before a pulled one is over the canvas
  bool m_isNew;
  bool m_horizontal;
  DragStep m_step;
};

}  // namespace canvas
