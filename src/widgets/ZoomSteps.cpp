#include "widgets/ZoomSteps.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace widgets {

namespace {

constexpr std::array<qint32, 11> steps{10, 25, 33, 50, 75, 100, 150, 200, 300, 400, 800};
/// A factor this near to a step stands on it.
constexpr double tolerance = 0.5;

}  // namespace

qint32 ZoomSteps::above(double zoomFactor) {
  const double percent = zoomFactor * 100;
  for (const qint32 step : steps)
    if (step > percent + tolerance) return step;
  return steps.back();
}

qint32 ZoomSteps::below(double zoomFactor) {
  const double percent = zoomFactor * 100;
  for (auto step = steps.rbegin(); step != steps.rend(); ++step)
    if (*step < percent - tolerance) return *step;
  return steps.front();
}

qint32 ZoomSteps::nearest(double zoomFactor) {
  const double percent = std::round(zoomFactor * 100);
  return static_cast<qint32>(std::clamp<double>(percent, steps.front(), steps.back()));
}

}  // namespace widgets
