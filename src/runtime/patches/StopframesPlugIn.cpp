#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/PortHelpers.h"
#include "runtime/patches/StopframeClock.h"

namespace runtime::patches {

namespace {

/// The time that a plug-in runs by: its time base, or the "_time" that a file gives it without
/// saying so.
double plugInTime(const Execution& x) {
  if (x.node().timeInput >= 0) return x.time();
  const int input = x.inputIndex(QStringLiteral("_time"));
  return input >= 0 ? x.number(input) : x.time();
}

class PatchTimeEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override { x.setOutput(0, plugInTime(x)); }
};

StopframeClock clockOf(const NodeDescription& node) {
  const foundation::PropertyDictionary& settings = node.state.value(u"plugInState").dictionary();
  std::vector<double> stops;
  if (settings.value(u"enableStopframesInBRVApps").toBool())
    for (const foundation::PropertyValue& stop : settings.value(u"stopframes").array())
      stops.push_back(stop.dictionary().value(u"time").toDouble());
  return {std::move(stops), settings.value(u"compositionDuration").toDouble()};
}

/// Drives a graphic's time lines: runs, waits at stop frames, ends.
class StopframesEvaluator : public PatchEvaluator {
 public:
  explicit StopframesEvaluator(const NodeDescription& node) : m_clock(clockOf(node)) {}

  void execute(Execution& x) override {
    const StopframeClock::Reading now = m_clock.advance(plugInTime(x), x.boolean(0));
    x.setOutput(0, now.time);
    x.setOutput(1, now.isWaiting);
    x.setOutput(2, now.isActive);
  }
  [[nodiscard]] bool standsStill() const override { return m_clock.standsStill(); }

 private:
  StopframeClock m_clock;
};

}  // namespace

void registerStopframesPlugIn(PatchRegistry& registry) {
  registry.add({.className = QStringLiteral("QCPlugInPatch"),
                .identifier = QStringLiteral("BRVPatchTimePlugIn"),
                .title = QStringLiteral("Stop Frame Timer"),
                .kind = PatchClass::Kind::Provider,
                .timeMode = PatchClass::TimeMode::TimeBase,
                .ports = {{}, {numberOutput("outputTime", "Time")}},
                .make = makeEvaluator<PatchTimeEvaluator>});
  registry.add({.className = QStringLiteral("QCPlugInPatch"),
                .identifier = QStringLiteral("BRVStopframesPlugIn"),
                .title = QStringLiteral("Stop Frames"),
                .timeMode = PatchClass::TimeMode::TimeBase,
                .memory = PatchClass::Memory::Shared,
                .ports = {{booleanPort("inputTrigger", false, "Trigger")},
                          {numberOutput("outputTime", "Time"),
                           booleanOutput("outputWaitingForTrigger", "Waiting for Trigger"),
                           booleanOutput("outputActive", "Active")}},
                .make = makeFromNode<StopframesEvaluator>});
}

}  // namespace runtime::patches
