#pragma once

#include <QCoreApplication>
#include <vector>

#include "timeline/ComponentTiming.h"
#include "timeline/RowGesture.h"
#include "timeline/TimeSnapping.h"
#include "timeline/TimelineDragStep.h"

namespace timeline {

/// Moves the bars of the selected components, or their starts or ends. Ctrl lets go of what bars
/// snap to.
class ComponentGesture : public RowGesture {
  Q_DECLARE_TR_FUNCTIONS(ComponentGesture)

 public:
  ComponentGesture(TimelineStage& stage, const TimelineHit& hit, const TimelinePointer& start);

  /// What the undo step of such a change is called; at least one component.
  [[nodiscard]] static QString stepName(TimelineHit::Part part,
                                        const QList<model::QuartzComponent*>& components);

 protected:
  void drag(const TimelinePointer& pointer) override;
  void finishDrag() override;
  void cancelDrag() override { m_step.cancel(); }

 private:
  struct Moved {
    model::QuartzComponent* component;
    ComponentTiming::Times before;
    ComponentTiming::Times now;
  };
  void begin();
  [[nodiscard]] double deltaFor(const TimelinePointer& pointer);
  [[nodiscard]] QList<double> edges() const;
  [[nodiscard]] ComponentTiming::Times moved(const ComponentTiming::Times& times,
                                             double delta) const;
  void apply();
  void show();

  TimelineDragStep m_step;
  std::vector<Moved> m_moved;
  std::optional<TimeSnapping> m_snapping;
  TimelineMarks m_marks;
  bool m_isSnapped = false;
};

}  // namespace timeline
