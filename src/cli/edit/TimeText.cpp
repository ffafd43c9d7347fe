#include "cli/edit/TimeText.h"

#include "model/Composition.h"

namespace cli {

namespace {
constexpr double longestTime =
    999'999;  ///< eleven days; single precision still tells seconds apart
}

std::optional<double> secondsFromText(const QString& text, const foundation::TimecodeRate& rate) {
  bool isNumber = false;
  double seconds = text.toDouble(&isNumber);
  if (!isNumber) {
    if (text.startsWith(u'+') || text.startsWith(u'-')) return {};
    const auto code = foundation::Timecode::fromString(text, rate);
    if (!code) return {};
    seconds = code->seconds();
  }
  return seconds >= 0 && seconds <= longestTime ? std::optional(seconds) : std::nullopt;
}

std::optional<double> secondsFromText(const QString& text, const model::Composition& composition) {
  return secondsFromText(text, composition.videoResolution().timecodeRate());
}

}  // namespace cli
