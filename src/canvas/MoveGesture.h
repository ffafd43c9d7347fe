#pragma once

#include <QCoreApplication>
#include <QList>

#include "canvas/CanvasStage.h"
#include "canvas/DragStep.h"
#include "canvas/DragTracking.h"
#include "canvas/Gesture.h"

namespace model {
class QuartzComponent;
}

namespace canvas {

/// Moves the selected components, or copies of them: nothing within the dead zone, along one axis
/// with Shift, onto guides unless Ctrl is held.
class MoveGesture : public Gesture {
  Q_DECLARE_TR_FUNCTIONS(MoveGesture)

 public:
  enum class Moves { Components, Copies };
  MoveGesture(CanvasStage& stage, const Pointer& start, Moves moves = Moves::Components);
  /// What moving these is called: by the title of the only one or by their number.
  [[nodiscard]] static QString stepName(const QList<model::QuartzComponent*>& components);

  void update(const Pointer& pointer) override;
  void finish(const Pointer& pointer) override;
  void cancel() override;

 private:
  struct Moved {
    model::QuartzComponent* component;
    QRectF frame;  ///< when the drag began
  };
  /// Puts copies in the place of what is moved.
  void makeCopies();
  [[nodiscard]] QPointF offsetFor(const Pointer& pointer);

  CanvasStage& m_stage;
  QPointF m_start;
  Moves m_moves;
  QList<Moved> m_moved;
  QList<model::QuartzComponent*> m_originals;  ///< once there are copies
  QRectF m_union;
  DeadZone m_deadZone;
  AxisLock m_axisLock;
  DragStep m_step;
};

}  // namespace canvas
