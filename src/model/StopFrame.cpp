#include "model/StopFrame.h"

#include "model/Composition.h"

namespace model {

const StopFrame::Declaration& StopFrame::declaration() {
  static const Declaration declaration;
  return declaration;
}

StopFrame::StopFrame(double timepoint, const QString& triggerInformation)
    : ManagedObject(declaration()) {
  setTimepoint(timepoint);
  setTriggerInformation(triggerInformation);
}

Composition* StopFrame::composition() const {
  return get(declaration().composition);
}

void StopFrame::setComposition(Composition* composition) {
  set(declaration().composition, composition);
}

void StopFrame::valueDidChange(const QString& key) {
  if (composition() && key == QLatin1String("timepoint"))
    composition()->announce(QStringLiteral("stopFrames"));
}

}  // namespace model
