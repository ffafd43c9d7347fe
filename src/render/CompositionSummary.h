#pragma once

#include <QJsonObject>
#include <QStringList>

#include "runtime/CompositionRenderer.h"

namespace render {

/// What a composition file says of itself: the facts that `tessary info` shows and that rendering
/// takes its defaults from.
struct CompositionSummary {
  struct StopFrame {
    QString name;
    double time = 0;  ///< seconds
  };

  std::optional<QSize> size;       ///< pixels
  std::optional<double> duration;  ///< seconds, of exported files
  std::vector<StopFrame> stopFrames;
  QStringList components;  ///< titles, lowest layer first

  [[nodiscard]] static CompositionSummary of(const quartz::QuartzComposition& composition);
};

}  // namespace render
