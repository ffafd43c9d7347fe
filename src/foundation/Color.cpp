#include "foundation/Color.h"

namespace foundation {

namespace {
// The comparison order makes NaN come out as 0.
float unit(double v) { return v > 0 ? (v < 1 ? static_cast<float>(v) : 1.0F) : 0.0F; }
}  // namespace

QColor Color::toQColor() const {
  return QColor::fromRgbF(unit(red), unit(green), unit(blue), unit(alpha));
}

}  // namespace foundation
