#pragma once

#include <Qt>

#include "timeline/KeyFrameSelection.h"

namespace model {
class QuartzComponent;
}

namespace timeline {

class TimelineRows;

/// What clicks select. Command is Ctrl, as everywhere here.
class RowSelecting {
 public:
  /// The row of the component that was selected by a click last, -1 for none.
  [[nodiscard]] int componentLastSelected() const { return m_componentLastSelected; }
  void forgetLast() { m_componentLastSelected = -1; }

  /// Selects the component; with Shift all components from the last clicked row to this one as
  /// well, with Ctrl in addition to the others or, when it was selected, no more.
  void selectComponent(model::Composition& composition, const TimelineRows& rows,
                       model::QuartzComponent& component, Qt::KeyboardModifiers modifiers);
  /// A click on a key frame.
  void selectKeyFrame(model::Composition& composition, const TimelineRows& rows,
                      const KeyFrameReference& keyFrame, Qt::KeyboardModifiers modifiers);
  /// A click on nothing.
  static void clear(model::Composition& composition);

 private:
  int m_componentLastSelected = -1;
};

}  // namespace timeline
