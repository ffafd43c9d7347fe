#pragma once

#include <QString>
#include <optional>

namespace cli {

/// Seconds from "0.8", or from a time code of frames at the end: "0:20", "1:02:00", "0:00:02:13".
/// Nothing for negative times and other texts.
[[nodiscard]] std::optional<double> secondsFromText(const QString& text, double framesPerSecond);

}  // namespace cli
