#pragma once

#include <QVariantHash>
#include <map>

#include "runtime/Execution.h"

namespace runtime {

/// The state of one node, or of one node in one iteration.
struct NodeMemory {
  std::unique_ptr<PatchEvaluator> evaluator;
  std::vector<Value> inputs;
  std::vector<quint64> inputVersions;  ///< version of the source when it was last taken over
  std::vector<bool> changed;           ///< inputs that differ from the last execution
  std::vector<Value> outputs;
  std::vector<quint64> outputVersions;
  Destination destination;  ///< at the last execution
  double time = 0;          ///< at the last execution
  double timeStep = 0;
  quint64 checkedPass = 0;
  quint64 frame = 0;  ///< of the last execution
  quint64 hostEpoch = 0;
  bool executed = false;
  bool anyChanged = false;
  bool mayChange = false;      ///< in a later frame, without the host
  bool timeMayChange = false;  ///< its time; what that means for its outputs is in mayChange
};

/// A running copy of a compiled composition: port values, patch memories and the clock. Not
/// thread-safe; what it yields (draw lists) is.
class CompositionInstance {
 public:
  explicit CompositionInstance(std::shared_ptr<const CompiledComposition> compiled);
  ~CompositionInstance();

  [[nodiscard]] const CompiledComposition& compiled() const { return *m_compiled; }
  [[nodiscard]] const std::shared_ptr<const CompiledComposition>& sharedProgram() const {
    return m_compiled;
  }

  /// Sets the constant of an input; applies from the next frame.
  void setInput(int node, int input, const Value& value);
  [[nodiscard]] Value inputValue(int node, int input) const;
  /// The value that the output had after the last frame.
  [[nodiscard]] Value outputValue(int node, int output) const;

  /// Runs the graph once at the time (seconds, clamped to 0) and returns what it drew.
  [[nodiscard]] DrawList evaluate(double time, const Destination& destination,
                                  const FrameArguments& arguments = {});
  /// The last frame was ended before it was through; what it drew is a part.
  [[nodiscard]] bool wasInterrupted() const { return m_interrupted; }
  /// False when a further frame at another time is certain to look the same.
  [[nodiscard]] bool isAnimated() const { return m_animated; }
  /// Facts reported by patches (missing files, scripts with errors …), each once.
  [[nodiscard]] const QStringList& findings() const { return m_findings; }
  [[nodiscard]] QVariantHash& userInfo() { return m_userInfo; }

 private:
  friend class Execution;
  struct NodeState {
    std::vector<Value> constants;
    std::vector<quint64> constantVersions;
    std::vector<std::unique_ptr<NodeMemory>> memories;
    bool running = false;
    quint64 lastUsedFrame = 0;
    double localStart = 0;
  };
  struct ScopeState {
    ContentContext context;
    size_t slot = 0;  ///< which memory the nodes use
    qint64 iterationIndex = 0;
    qint64 iterationCount = 0;
    std::map<std::pair<size_t, qint64>, size_t> slots;  ///< (outer slot, index) → slot, iterators
    quint64 pass = 0;  ///< the run of its content that is going on: what is up to date
    quint64 lastRunFrame = 0;
    quint64 timePass = 0;
    double time = 0;
    std::optional<double> forcedTime;
    quint64 lastUsedFrame = 0;
    double localStart = 0;
    std::map<std::pair<QString, size_t>, Value> fedBack;
  };

  [[nodiscard]] const CompiledNode& node(int index) const {
    return m_compiled->nodes()[static_cast<size_t>(index)];
  }
  NodeMemory& memory(int node);
  void pull(int node);
  void pullInput(int node, NodeMemory& memory, int input);
  /// Before and after a node looks at its inputs: whether it may change by itself.
  void beginLook(int node, NodeMemory& memory);
  void endLook(NodeMemory& memory) const;
  /// Whether a time that follows the base may differ in a later frame.
  [[nodiscard]] bool timeRuns(TimeBase base, int scope, const Link* external);
  void run(int node, NodeMemory& memory);
  void runConsumer(int node);
  void runScope(int scope, const ContentContext& context);
  bool enterIteration(int scope, qint64 index, qint64 count);
  void leaveIterations(int scope);
  /// The nodes' memory serves several iterations of one frame.
  [[nodiscard]] bool isSharedSlot(int scope) const {
    return m_sharedSlots.contains(m_scopes[static_cast<size_t>(scope)].slot);
  }
  void setSlot(int scope, size_t slot, quint64 pass);
  void keepFeedback(int scope);
  [[nodiscard]] bool isRunning(int scope) const;
  [[nodiscard]] bool shallEnd();
  [[nodiscard]] double scopeTime(int scope);
  [[nodiscard]] double nodeTime(int node, NodeMemory& memory);
  [[nodiscard]] double basedTime(TimeBase base, double parent, const NodeMemory* memory,
                                 int timeInput, quint64& lastUsedFrame, double& localStart);
  [[nodiscard]] const ContentContext& contextOf(int scope) const;
  void report(int node, const QString& text);

  std::shared_ptr<const CompiledComposition> m_compiled;
  std::map<std::type_index, std::shared_ptr<void>> m_shared;  // outlives the nodes
  std::vector<NodeState> m_nodes;
  std::vector<ScopeState> m_scopes;
  FrameArguments m_arguments;
  QVariantHash m_userInfo;
  QStringList m_findings;
  double m_time = 0;
  quint64 m_frame = 1;      ///< number of the frame; the first is 2, so that 0 means never
  quint64 m_pass = 0;       ///< grows with every frame and iteration
  quint64 m_version = 0;    ///< grows with every change of a value
  quint64 m_hostEpoch = 0;  ///< grows when the host sets an input
  qint64 m_iterations = 0;
  qint64 m_drawItems = 0;
  size_t m_slotCount = 1;
  QSet<size_t> m_sharedSlots;
  bool m_animated = false;
  bool m_interrupted = false;
};

}  // namespace runtime
