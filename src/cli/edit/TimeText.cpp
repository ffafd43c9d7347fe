#include "cli/edit/TimeText.h"

#include <QStringList>
#include <cmath>

namespace cli {

std::optional<double> secondsFromText(const QString& text, double framesPerSecond) {
  bool ok = false;
  if (!text.contains(u':')) {
    const double seconds = text.toDouble(&ok);
    return ok && std::isfinite(seconds) && seconds >= 0 ? std::optional(seconds) : std::nullopt;
  }
  const QStringList parts = text.split(u':');
  if (parts.size() > 4 || framesPerSecond <= 0) return {};
  double whole = 0;
  for (qsizetype i = 0; i < parts.size(); ++i) {
    const uint part = parts[i].toUInt(&ok);
    const double limit = i + 1 == parts.size() ? std::ceil(framesPerSecond) : 60;
    if (!ok || (i > 0 && part >= limit)) return {};
    if (i + 1 == parts.size()) return whole + part / framesPerSecond;
    whole = whole * 60 + part;
  }
  return {};
}

}  // namespace cli
