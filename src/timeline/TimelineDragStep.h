#pragma once

#include <memory>

#include "store/ObjectContext.h"

namespace timeline {

/// The undo step of a drag. Every change starts from how everything was before the drag, so that
/// nothing adds up and what is only passed over stays. Taken back unless the drag was finished.
class TimelineDragStep {
 public:
  ~TimelineDragStep() { cancel(); }
  TimelineDragStep() = default;
  TimelineDragStep(const TimelineDragStep&) = delete;
  TimelineDragStep& operator=(const TimelineDragStep&) = delete;

  /// Takes back the last change of the drag; what follows replaces it.
  void restart(store::ObjectContext& context, const QString& name) {
    if (!m_step) m_step = std::make_unique<store::UndoStep>(context, name);
    if (m_change) m_change->cancel();
    m_change.reset();
    m_change = std::make_unique<store::UndoStep>(context);
  }
  void finish() {
    m_change.reset();
    m_step.reset();
  }
  void cancel() {
    if (m_change) m_change->cancel();
    m_change.reset();
    if (m_step) m_step->cancel();
    m_step.reset();
  }

 private:
  std::unique_ptr<store::UndoStep> m_step;
  std::unique_ptr<store::UndoStep> m_change;  // ends before the step that it is part of
};

}  // namespace timeline
