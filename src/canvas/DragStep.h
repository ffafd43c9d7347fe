#pragma once

#include <memory>

#include "store/ObjectContext.h"

namespace canvas {

/// The undo step of a drag: opened by its first change, kept until the drag ends, taken back unless
/// the drag was finished.
class DragStep {
 public:
  ~DragStep() { cancel(); }
  DragStep() = default;
  DragStep(const DragStep&) = delete;
  DragStep& operator=(const DragStep&) = delete;

  [[nodiscard]] bool isOpen() const { return m_step != nullptr; }
  void open(store::ObjectContext& context, const QString& name) {
    if (!m_step) m_step = std::make_unique<store::UndoStep>(context, name);
  }
  void continuePrevious() { m_step->continuePrevious(); }
  void finish() { m_step.reset(); }
  void cancel() {
    if (m_step) m_step->cancel();
    m_step.reset();
  }

 private:
  std::unique_ptr<store::UndoStep> m_step;
};

}  // namespace canvas
