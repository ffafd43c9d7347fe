#include "model/export/PublishedKeys.h"

#include "model/Composition.h"

namespace model {

PublishedKeys::Name PublishedKeys::unusedName(const QString& wanted,
                                              const QString& separator) const {
  const auto cleaned = &Composition::stringByTrimmingInvalidKeyCharacters;
  Name name{cleaned(wanted), wanted};
  for (int counter = 1; m_used.contains(name.key); ++counter) {
    name.label = wanted + separator + QString::number(counter);
    name.key = cleaned(name.label);
  }
  return name;
}

}  // namespace model
