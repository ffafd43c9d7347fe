#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/PortHelpers.h"

namespace runtime::patches {

namespace {

/// Graphics neither send to nor hear from the network: their pictures would not be reproducible.
class OfflineEvaluator : public PatchEvaluator {
 public:
  void execute(Execution&) override {}
};

/// Writes its value among the findings when it changes.
class LogEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    if (x.changed(0) && m_lines++ < maximumLines)
      x.report(QStringLiteral("logs %1").arg(x.string(0).left(1000)));
  }

 private:
  static constexpr int maximumLines = 100;
  int m_lines = 0;
};

PatchClass offline(const char* className, const char* title, PatchClass::Kind kind,
                   QList<Port> inputs, QList<Port> outputs) {
  PatchClass patch;
  patch.className = QString::fromLatin1(className);
  patch.title = QString::fromLatin1(title);
  patch.kind = kind;
  patch.ports = {std::move(inputs), std::move(outputs)};
  patch.status = QStringLiteral("no network: nothing is sent, found or received");
  patch.make = makeEvaluator<OfflineEvaluator>;
  return patch;
}

}  // namespace

void registerNetworkPatches(PatchRegistry& registry) {
  using K = PatchClass::Kind;
  const QList<Port> received{stringOutput("outputString", "Received String"),
                             numberOutput("outputTimestamp", "Received Timestamp"),
                             booleanOutput("outputSignal", "Received Signal")};
  const QList<Port> broadcast{stringPort("inputString", "", "Broadcast String")};
  registry.add(offline("QCNetworkBroadcaster", "Network Broadcaster", K::Consumer, broadcast, {}));
  registry.add(offline("QCNetworkReceiver", "Network Receiver", K::Provider, {}, received));
  registry.add(
      offline("QCNetworkSynchronizer", "Network Synchronizer", K::Provider, broadcast,
              QList<Port>{booleanOutput("outputBroadcasting", "Broadcasting")} + received));
  registry.add(offline("QCBonjourServices", "Bonjour Services", K::Provider, {},
                       {portOf(PortType::Structure, "outputServices", "Service List")}));
  registry.add(offline(
      "QCSpotlight", "Spotlight", K::Provider,
      {stringPort("inputQuery", "", "Query"), booleanPort("inputSignal", false, "Search Signal")},
      {portOf(PortType::Structure, "outputFiles", "File List"),
       booleanOutput("outputSignal", "Done Signal")}));
  PatchClass log =
      offline("QCLog", "Log", K::Consumer, {portOf(PortType::Virtual, "inputValue", "Value")}, {});
  log.status = QStringLiteral("the log is the renderer's findings, each text once");
  log.make = makeEvaluator<LogEvaluator>;
  registry.add(std::move(log));
  PatchClass display =
      offline("QCFPSDisplay", "FPS Display", K::Consumer,
              {menuPort("inputMode", 0, "FPS Mode",
                        {"Weighted Average", "Last Second Average", "Last Second Minimum"})},
              {});
  display.status = QStringLiteral("draws nothing: a frame must not depend on the machine's speed");
  registry.add(std::move(display));
}

}  // namespace runtime::patches
