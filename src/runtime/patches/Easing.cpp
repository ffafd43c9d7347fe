#include "runtime/patches/Easing.h"

#include <cmath>
#include <numbers>

namespace runtime::patches {

namespace {

double powerIn(double p, int exponent) {
  return exponent == 2 ? p * p : p * p * p;
}

double exponentialIn(double p) {
  return p <= 0 ? 0 : std::exp2(10 * (p - 1));
}

double sinusoidalIn(double p) {
  return 1 - std::cos(std::numbers::pi * p / 2);
}

enum class Direction { In, Out, InOut };

/// Out is In turned by half a turn; In-Out is both, each in half the time.
template <typename Curve>
double directed(Direction direction, double p, Curve in) {
  switch (direction) {
    case Direction::In:
      return in(p);
    case Direction::Out:
      return 1 - in(1 - p);
    default:
      return p < 0.5 ? in(2 * p) / 2 : 1 - in(2 - 2 * p) / 2;
  }
}

}  // namespace

QStringList easingTitles() {
  return {QStringLiteral("Linear"),           QStringLiteral("Quadratic In"),
          QStringLiteral("Quadratic Out"),    QStringLiteral("Quadratic In-Out"),
          QStringLiteral("Cubic In"),         QStringLiteral("Cubic Out"),
          QStringLiteral("Cubic In-Out"),     QStringLiteral("Exponential In"),
          QStringLiteral("Exponential Out"),  QStringLiteral("Exponential In-Out"),
          QStringLiteral("Sinusoidal In"),    QStringLiteral("Sinusoidal Out"),
          QStringLiteral("Sinusoidal In-Out")};
}

double eased(quint64 curve, double progress) {
  if (!(progress > 0)) return 0;
  if (progress >= 1) return 1;
  if (curve == 0 || curve > 12) return progress;
  const auto direction = static_cast<Direction>((curve - 1) % 3);
  switch ((curve - 1) / 3) {
    case 0:
      return directed(direction, progress, [](double p) { return powerIn(p, 2); });
    case 1:
      return directed(direction, progress, [](double p) { return powerIn(p, 3); });
    case 2:
      return directed(direction, progress, exponentialIn);
    default:
      return directed(direction, progress, sinusoidalIn);
  }
}

}  // namespace runtime::patches
