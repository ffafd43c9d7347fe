#include "quartz/ArchivedColor.h"

#include "foundation/archive/NonKeyedArchive.h"

namespace quartz {

QByteArray archivedColor(const foundation::Color& color) {
  return foundation::NonKeyedArchive::write(color).value_or(QByteArray());
}

}  // namespace quartz
