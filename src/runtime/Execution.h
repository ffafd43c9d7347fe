#pragma once

#include <QMatrix4x4>
#include <memory>
#include <typeindex>

#include "runtime/CompiledComposition.h"
#include "runtime/Host.h"
#include "runtime/Value.h"
#include "runtime/draw/DrawList.h"

namespace runtime {

class CompositionInstance;
struct NodeMemory;

/// Where the content of a macro is drawn and under which transformation.
struct ContentContext {
  Destination destination;
  QMatrix4x4 transform;
  DrawState state;           ///< eye distance, lighting, colour mask
  DrawList* list = nullptr;  ///< none: nothing is drawn
};

/// One run of one patch: its inputs, outputs and surroundings. Ports are named by their index in
/// the order in which the class declares them, dynamic ports after the built-in ones.
class Execution {
 public:
  Execution(CompositionInstance& instance, int node, NodeMemory& memory)
      : m_instance(instance), m_node(node), m_memory(memory) {}

  [[nodiscard]] const CompiledNode& node() const;
  [[nodiscard]] int inputCount() const;
  [[nodiscard]] int outputCount() const;
  /// The index of a port by its key; −1 when the node has none of that key.
  [[nodiscard]] int inputIndex(const QString& key) const { return node().input(key); }
  [[nodiscard]] int outputIndex(const QString& key) const { return node().output(key); }

  /// Brings one input up to date (only of use in pullInputs).
  void pull(int input);
  void pullAll();

  /// Inputs hold values of their declared type; one that does not exist reads as zero.
  [[nodiscard]] const Value& value(int input) const;
  [[nodiscard]] double number(int input) const;
  [[nodiscard]] quint64 index(int input) const;
  [[nodiscard]] bool boolean(int input) const;
  [[nodiscard]] QString string(int input) const;
  [[nodiscard]] foundation::Color color(int input) const;
  [[nodiscard]] Image image(int input) const;
  [[nodiscard]] Structure structure(int input) const;
  /// The input's value differs from the one at the last execution (all do at the first).
  [[nodiscard]] bool changed(int input) const;
  [[nodiscard]] bool isConnected(int input) const;
  [[nodiscard]] bool firstExecution() const;

  /// Converted to the output's type; setting an equal value is no change.
  void setOutput(int output, Value value);
  [[nodiscard]] const Value& output(int output) const;

  /// Seconds in the patch's time base, never negative.
  [[nodiscard]] double time() const;
  /// Seconds since the frame in which the patch last executed; 0 at the first, negative when time
  /// ran backwards.
  [[nodiscard]] double timeStep() const;
  [[nodiscard]] quint64 frameNumber() const;

  /// The surface around the patch, the current transformation and where to draw.
  [[nodiscard]] const ContentContext& context() const;
  [[nodiscard]] const Destination& destination() const { return context().destination; }
  void draw(DrawItem item);

  /// Index and count of the innermost iteration; 0 of 0 outside any.
  [[nodiscard]] qint64 iterationIndex() const;
  [[nodiscard]] qint64 iterationCount() const;

  [[nodiscard]] const FrameArguments& arguments() const;
  [[nodiscard]] const Budget& budget() const;
  [[nodiscard]] QVariantHash& userInfo();
  /// The one object of the type that the running composition has, made when first asked for. It
  /// outlives all evaluators; costly things that several patches can share live here.
  template <typename T>
  [[nodiscard]] T& shared() {
    std::shared_ptr<void>& place = sharedPlace(typeid(T));
    if (!place) place = std::make_shared<T>();
    return *static_cast<T*>(place.get());
  }
  /// A path, "~" path or file: URL as a local path; relative ones start at the composition's
  /// folder.
  [[nodiscard]] QString resolvePath(const QString& location) const;
  /// Reports a fact of interest to the person once per node and text.
  void report(const QString& finding);

  // For macros only.
  /// Runs the consumers of the content in layer order.
  void runContent(const ContentContext& context);
  /// Runs the content once as iteration `index` of `count`.
  void runIteration(const ContentContext& context, qint64 index, qint64 count);
  /// Runs the content at another time (seconds), as copy `index` with a memory of its own.
  void runContentAtTime(const ContentContext& context, double time, qint64 index);
  /// Ends iteration: the content's outputs are those of the last pass.
  void endIterations();
  /// Value of an output that the content publishes at the end of the previous frame; used by
  /// feedback. The key is a published output of the macro around this node.
  [[nodiscard]] Value previousPublishedValue(const QString& key) const;

 private:
  [[nodiscard]] std::shared_ptr<void>& sharedPlace(std::type_index type);

  CompositionInstance& m_instance;
  int m_node;
  NodeMemory& m_memory;
};

}  // namespace runtime
