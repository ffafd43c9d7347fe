#pragma once

#include <QString>
#include <optional>

#include "foundation/Timecode.h"

namespace model {
class Composition;
}

namespace cli {

/// Seconds from "0.8", or from a time code such as "0:20", "1:02:00" or "12f" at that many frames a
/// second. Nothing for negative times, for a million seconds and more, and for other texts.
[[nodiscard]] std::optional<double> secondsFromText(const QString& text,
                                                    const foundation::TimecodeRate& rate);
/// At the rate of the graphic.
[[nodiscard]] std::optional<double> secondsFromText(const QString& text,
                                                    const model::Composition& composition);

}  // namespace cli
