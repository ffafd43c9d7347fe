#include "model/Ruler.h"

#include "model/Composition.h"

namespace model {

const Ruler::Declaration& Ruler::declaration() {
  static const Declaration declaration;
  return declaration;
}

Ruler::Ruler(double position, bool horizontal) : ManagedObject(declaration()) {
  setPosition(position);
  setHorizontal(horizontal);
}

Composition* Ruler::composition() const {
  return get(declaration().composition);
}

void Ruler::setComposition(Composition* composition) {
  set(declaration().composition, composition);
}

}  // namespace model
