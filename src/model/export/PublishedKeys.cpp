#include "model/export/PublishedKeys.h"

#include "model/Composition.h"

namespace model {

PublishedKeys::Name PublishedKeys::unusedName(const QString& wanted, const QString& separator) {
  const auto cleaned = &Composition::stringByTrimmingInvalidKeyCharacters;
  Name name{cleaned(wanted), wanted};
  if (!m_used.contains(name.key)) return name;
  int& counter = m_counters[wanted + separator];
  for (counter = std::max(counter, 1);; ++counter) {
    name.label = wanted + separator + QString::number(counter);
    name.key = cleaned(name.label);
    if (!m_used.contains(name.key)) return name;
  }
}

}  // namespace model
