#pragma once

namespace runtime {

class Execution;

/// The running part of one patch: reads its inputs, sets its outputs or appends to the draw list.
/// It may keep memory between executions; inside an iterator each iteration has an evaluator of its
/// own unless the class shares its memory.
class PatchEvaluator {
 public:
  PatchEvaluator() = default;
  PatchEvaluator(const PatchEvaluator&) = delete;
  PatchEvaluator& operator=(const PatchEvaluator&) = delete;
  virtual ~PatchEvaluator() = default;

  /// Brings up to date the inputs that the execution will read. By default all of them; a patch
  /// that reads only some of its sources pulls just those.
  virtual void pullInputs(Execution& x);
  virtual void execute(Execution& x) = 0;
  /// True when the patch must run in the next frame even if nothing that it reads changes.
  [[nodiscard]] virtual bool wantsNextFrame() const { return false; }
  /// True when its outputs stay what they are, however its time goes on, until another input
  /// changes. Asked after an execution.
  [[nodiscard]] virtual bool standsStill() const { return false; }
  /// Of a provider: true when its outputs follow from its inputs and its time, and from nothing
  /// else that differs from frame to frame.
  [[nodiscard]] virtual bool followsTimeAndInputs() const { return false; }
};

}  // namespace runtime
