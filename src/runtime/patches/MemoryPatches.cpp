#include <deque>

#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/Edge.h"
#include "runtime/patches/PortHelpers.h"

namespace runtime::patches {

namespace {

constexpr size_t maximumQueue = 100'000;

class SampleHoldEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    enum { Source, Sampling, Reset };
    const bool resets = m_reset.rises(x.boolean(Reset));
    if (x.boolean(Sampling) || resets) x.setOutput(0, x.value(Source));
  }

 private:
  Edge m_reset;
};

/// The last values that its input had, oldest first.
class QueueEvaluator : public PatchEvaluator {
 public:
  explicit QueueEvaluator(const NodeDescription& node)
      : m_continuous(node.state.value(u"continuous").toBool(true)) {}

  void execute(Execution& x) override {
    enum { Source, Size, Filling, Reset };
    const bool isNewFrame = x.frameNumber() != m_frame;
    m_frame = x.frameNumber();
    const size_t held = m_values.size();
    bool touched = x.firstExecution();
    if (m_reset.rises(x.boolean(Reset)) || x.timeStep() < 0) {
      m_values.clear();
      touched = touched || held > 0;
    }
    const bool appends = m_continuous ? isNewFrame : x.changed(Source);
    if (x.boolean(Filling) && appends) {
      m_values.push_back(x.value(Source));
      touched = true;
    }
    const size_t size = std::min<size_t>(x.index(Size), maximumQueue);
    while (m_values.size() > size) {
      m_values.pop_front();
      touched = true;
    }
    if (touched) x.setOutput(0, Structure::fromValues({m_values.begin(), m_values.end()}));
  }

 private:
  bool m_continuous;
  quint64 m_frame = 0;
  Edge m_reset;
  std::deque<Value> m_values;
};

class CounterEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const bool restarts = x.timeStep() < 0;
    const bool up = m_up.rises(x.boolean(0));
    const bool down = m_down.rises(x.boolean(1));
    const bool resets = m_reset.rises(x.boolean(2));
    if (restarts) m_count = 0;
    if (up) ++m_count;
    if (down && m_count > 0) --m_count;
    if (resets) m_count = 0;
    x.setOutput(0, Value::index(m_count));
  }

 private:
  Edge m_up, m_down, m_reset;
  quint64 m_count = 0;
};

class PulseEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const bool now = x.boolean(0);
    const bool rises = now && !m_before;
    const bool falls = !now && m_before;
    m_before = now;
    switch (x.index(1)) {
      case 0:
        m_on = rises;
        break;
      case 1:
        m_on = falls;
        break;
      default:
        m_on = rises || falls;
    }
    x.setOutput(0, m_on);
  }
  [[nodiscard]] bool wantsNextFrame() const override { return m_on; }

 private:
  bool m_before = false;
  bool m_on = false;
};

/// True for the frame in which its input has changed.
class WatcherEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override { x.setOutput(0, !x.firstExecution() && x.changed(0)); }
};

void addWatcherPorts(const NodeDescription& node, PatchPorts& ports) {
  ports.inputs.append(
      portOf(portTypeForClass(node.state.value(u"portClass").toString()), "input", "Input"));
}

}  // namespace

void registerMemoryPatches(PatchRegistry& registry) {
  using K = PatchClass::Kind;
  using T = PatchClass::TimeMode;
  registry.add({.className = QStringLiteral("QCSampleHold"),
                .title = QStringLiteral("Sample & Hold"),
                .kind = K::Processor,
                .timeMode = T::TimeBase,
                .ports = {{portOf(PortType::Virtual, "inputSampleValue", "Value"),
                           booleanPort("inputSampling", false, "Sampling"),
                           booleanPort("inputResetSignal", false, "Reset Signal")},
                          {portOf(PortType::Virtual, "outputValue", "Value")}},
                .make = makeEvaluator<SampleHoldEvaluator>});
  registry.add({.className = QStringLiteral("QCQueue"),
                .title = QStringLiteral("Queue"),
                .timeMode = T::Idle,
                .memory = PatchClass::Memory::Shared,
                .ports = {{portOf(PortType::Virtual, "inputValue", "Value"),
                           indexPort("inputSize", 10, "Queue Size"),
                           booleanPort("inputFilling", true, "Filling"),
                           booleanPort("inputResetSignal", false, "Reset Signal")},
                          {portOf(PortType::Structure, "outputQueue", "Queue")}},
                .make = makeFromNode<QueueEvaluator>});
  registry.add({.className = QStringLiteral("QCCounter"),
                .title = QStringLiteral("Counter"),
                .timeMode = T::TimeBase,
                .ports = {{booleanPort("inputSignal", false, "Increasing Signal"),
                           booleanPort("inputSignalDown", false, "Decreasing Signal"),
                           booleanPort("inputSignalReset", false, "Reset Signal")},
                          {indexOutput("outputCount", "Count")}},
                .make = makeEvaluator<CounterEvaluator>});
  registry.add({.className = QStringLiteral("QCPulse"),
                .title = QStringLiteral("Pulse"),
                .timeMode = T::TimeBase,
                .ports = {{booleanPort("inputSignal", false, "Input Signal"),
                           menuPort("inputMode", 0, "Detection Mode",
                                    {"Leading Edge", "Trailing Edge", "Both"})},
                          {booleanOutput("outputSignal", "Pulse")}},
                .make = makeEvaluator<PulseEvaluator>});
  registry.add({.className = QStringLiteral("QCWatcher"),
                .title = QStringLiteral("Watcher"),
                .timeMode = T::Idle,
                .ports = {{}, {booleanOutput("outputSignal", "Updating Signal")}},
                .dynamicPorts = QStringLiteral("input of portClass"),
                .addPorts = addWatcherPorts,
                .make = makeEvaluator<WatcherEvaluator>});
}

}  // namespace runtime::patches
