#pragma once

#include <QVariantHash>

namespace model {

/// What components are told of the clip that they run in, by the names of playout's event
/// parameters.
class PlayoutArguments {
 public:
  static constexpr double clipDuration = 5;  ///< seconds

  /// As if the time (seconds) lay in a clip that repeats; standing still, at its beginning.
  [[nodiscard]] static QVariantHash argumentsAtTime(double time, bool playing);
};

}  // namespace model
