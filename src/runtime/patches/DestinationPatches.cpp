#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"

namespace runtime::patches {

namespace {

class ScreenInfoEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const Destination& d = x.destination();
    x.setOutput(0, 2.0);
    x.setOutput(1, d.height());
    x.setOutput(2, Value::index(static_cast<quint64>(d.pixelsWide)));
    x.setOutput(3, Value::index(static_cast<quint64>(d.pixelsHigh)));
    x.setOutput(4, d.aspect());
    x.setOutput(5, d.pixelsPerUnit());
  }
};

}  // namespace

void registerDestinationPatches(PatchRegistry& registry) {
  const auto number = [](const QString& key, const QString& label) {
    return Port(key, PortType::Number, {}, label);
  };
  const auto index = [](const QString& key, const QString& label) {
    return Port(key, PortType::Index, {}, label);
  };
  registry.add(
      {.className = QStringLiteral("QCScreenInfo"),
       .title = QStringLiteral("Rendering Destination Dimensions"),
       .ports = {{},
                 {number(QStringLiteral("outputWidth"), QStringLiteral("Width")),
                  number(QStringLiteral("outputHeight"), QStringLiteral("Height")),
                  index(QStringLiteral("outputPixelsWide"), QStringLiteral("Pixels Wide")),
                  index(QStringLiteral("outputPixelsHigh"), QStringLiteral("Pixels High")),
                  number(QStringLiteral("outputRatio"), QStringLiteral("Aspect Ratio")),
                  number(QStringLiteral("outputResolution"), QStringLiteral("Resolution"))}},
       .make = makeEvaluator<ScreenInfoEvaluator>});
}

}  // namespace runtime::patches
