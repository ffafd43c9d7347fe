#pragma once

#include "model/KeyFrames.h"
#include "store/ManagedObject.h"

namespace model {

class Composition;

/// A time (seconds) at which playback halts until it is triggered. Its composition owns it.
class StopFrame : public store::ManagedObject {
 public:
  struct Declaration : store::Entity {
    Declaration() : Entity(QStringLiteral("StopFrame")) {}
    store::Property<double> timepoint = property<double>("timepoint");
    store::Property<QString> triggerInformation = property<QString>("triggerInformation");
    store::ToOne<Composition> composition = toOne<Composition>("composition", "stopFrames");
  };
  [[nodiscard]] static const Declaration& declaration();

  explicit StopFrame(double timepoint = 0, const QString& triggerInformation = {});

  [[nodiscard]] Composition* composition() const;
  void setComposition(Composition* composition);
  [[nodiscard]] double timepoint() const { return get(declaration().timepoint); }
  void setTimepoint(double timepoint) { set(declaration().timepoint, timepoint); }
  [[nodiscard]] const QString& triggerInformation() const {
    return get(declaration().triggerInformation);
  }
  void setTriggerInformation(const QString& text) { set(declaration().triggerInformation, text); }
  /// To the hundredth of a second.
  [[nodiscard]] bool isTimepoint(double timepoint) const {
    return compareTimeInterval(this->timepoint(), timepoint) == 0;
  }

 protected:
  void valueDidChange(const QString& key) override;
};

}  // namespace model
