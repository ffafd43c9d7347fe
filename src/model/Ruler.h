#pragma once

#include "store/ManagedObject.h"

namespace model {

class Composition;

/// A guide line on the canvas. Its composition owns it.
class Ruler : public store::ManagedObject {
 public:
  struct Declaration : store::Entity {
    Declaration() : Entity(QStringLiteral("Ruler")) {}
    store::Property<double> position = property<double>("position");
    store::Property<bool> horizontal = property<bool>("horizontal");
    store::ToOne<Composition> composition = toOne<Composition>("composition", "rulers");
  };
  [[nodiscard]] static const Declaration& declaration();

  explicit Ruler(double position = 0, bool horizontal = false);

  [[nodiscard]] Composition* composition() const;
  void setComposition(Composition* composition);
  /// In pixels of the picture, from the left or from below; single precision.
  [[nodiscard]] double position() const { return get(declaration().position); }
  void setPosition(double position) {
    set(declaration().position, static_cast<double>(static_cast<float>(position)));
  }
  [[nodiscard]] bool horizontal() const { return get(declaration().horizontal); }
  void setHorizontal(bool horizontal) { set(declaration().horizontal, horizontal); }
};

}  // namespace model
