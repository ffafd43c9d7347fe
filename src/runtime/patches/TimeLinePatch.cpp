#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/TimeLineCurve.h"
#include "runtime/patches/AllPatches.h"

namespace runtime::patches {

namespace {

/// Files hold the curves as an array, or as a dictionary around that array.
const foundation::PropertyArray& curvesOf(const NodeDescription& node) {
  const foundation::PropertyValue& stored = node.state.value(u"timeLines");
  return stored.isDictionary() ? stored.dictionary().value(u"timeLines").array() : stored.array();
}

void addTimeLinePorts(const NodeDescription& node, PatchPorts& ports) {
  qint64 next = 0;
  for (const foundation::PropertyValue& curve : curvesOf(node)) {
    const foundation::PropertyDictionary& d = curve.dictionary();
    const qint64 number = d.value(u"portNumber").toInteger(next);
    ports.outputs.append(Port(QStringLiteral("output_%1").arg(number), PortType::Number, {},
                              d.value(u"identifier").toString()));
    next = number + 1;
  }
}

class TimeLineEvaluator : public PatchEvaluator {
 public:
  explicit TimeLineEvaluator(const NodeDescription& node) {
    for (const foundation::PropertyValue& curve : curvesOf(node))
      m_curves.push_back(
          TimeLineCurve::fromProperty(curve.dictionary().value(u"keyFrames").array()));
  }
  void execute(Execution& x) override {
    for (size_t i = 0; i < m_curves.size(); ++i)
      x.setOutput(static_cast<int>(i), m_curves[i].valueAt(x.time()));
  }
  [[nodiscard]] bool followsTimeAndInputs() const override { return true; }

 private:
  std::vector<TimeLineCurve> m_curves;
};

}  // namespace

void registerTimeLinePatch(PatchRegistry& registry) {
  registry.add({.className = QStringLiteral("QCTimeLine"),
                .title = QStringLiteral("Timeline"),
                .kind = PatchClass::Kind::Provider,
                .timeMode = PatchClass::TimeMode::TimeBase,
                .memory = PatchClass::Memory::Shared,
                .dynamicPorts = QStringLiteral("output_<portNumber> for each curve"),
                .addPorts = addTimeLinePorts,
                .make = makeFromNode<TimeLineEvaluator>});
}

}  // namespace runtime::patches
