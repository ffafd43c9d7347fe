#include "cli/edit/TimeText.h"

#include <cmath>

#include "foundation/Timecode.h"
#include "model/Composition.h"

namespace cli {

using foundation::Timecode;
using foundation::TimecodeRate;

namespace {
constexpr double longestTime =
    999'999;  ///< eleven days; single precision still tells seconds apart
}

std::optional<double> secondsFromText(const QString& text, double framesPerSecond) {
  bool isNumber = false;
  double seconds = text.toDouble(&isNumber);
  if (!isNumber) {
    const int nominal = static_cast<int>(std::lround(framesPerSecond));
    const bool isRelative = text.startsWith(u'+') || text.startsWith(u'-');
    if (nominal < 1 || isRelative) return {};
    const bool isWhole = std::abs(framesPerSecond - nominal) < 1e-3;
    const auto code = Timecode::fromString(
        text, isWhole ? TimecodeRate::whole(nominal) : TimecodeRate::slowed(nominal));
    if (!code) return {};
    seconds = code->seconds();
  }
  return seconds >= 0 && seconds <= longestTime ? std::optional(seconds) : std::nullopt;
}

std::optional<double> secondsFromText(const QString& text, const model::Composition& composition) {
  return secondsFromText(text, composition.videoResolution().framesPerSecond());
}

}  // namespace cli
