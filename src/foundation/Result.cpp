#include "foundation/Result.h"

namespace foundation {

QString Error::text() const {
  QString out = file.isEmpty() ? message : file + QStringLiteral(": ") + message;
  if (!detail.isEmpty()) out += QStringLiteral(" (") + detail + QLatin1Char(')');
  return out;
}

}  // namespace foundation
