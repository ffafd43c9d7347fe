#pragma once

#include <QList>

#include "foundation/PropertyValue.h"

namespace model {

/// A key frame with its value as composition files hold it; null when there is none.
struct CurvePoint {
  double time = 0;  ///< seconds
  foundation::PropertyValue value;
};

/// One key frame of a time line; offsets of the control points are seconds from the key frame.
[[nodiscard]] foundation::PropertyDictionary keyFrameInfoForTime(
    double time, const foundation::PropertyValue& value, double leftControl, double rightControl);

/// Eases from point to point, the control points half-way; defined from time 0.
[[nodiscard]] foundation::PropertyArray smoothCurve(const QList<CurvePoint>& points);
/// Jumps from value to value. Before the first jump stands a point without a value.
[[nodiscard]] foundation::PropertyArray heldCurve(const QList<CurvePoint>& points);
/// Jumps from ordinal number to ordinal number: 0 up to the first point, which is number 0.
[[nodiscard]] foundation::PropertyArray ordinalCurve(const QList<CurvePoint>& points);

}  // namespace model
