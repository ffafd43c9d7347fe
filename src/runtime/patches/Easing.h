#pragma once

#include <QStringList>

namespace runtime::patches {

/// The curves of the Interpolation menu, Linear (0) to Sinusoidal In-Out (12).
[[nodiscard]] QStringList easingTitles();

/// Maps the progress (clamped to 0…1, NaN counts as 0) to the eased progress. Starts at 0 and ends
/// at 1 for every curve; an unknown code is linear.
[[nodiscard]] double eased(quint64 curve, double progress);

}  // namespace runtime::patches
