#include "model/KeyFrameCurves.h"

namespace model {

using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::PropertyValue;

namespace {

PropertyValue single(double value) {
  return PropertyValue::fromFloat(static_cast<float>(value));
}

PropertyDictionary controlPoint(double time) {
  return {{QStringLiteral("time"), single(time)}, {QStringLiteral("value"), 0}};
}

}  // namespace

PropertyDictionary keyFrameInfoForTime(double time, const PropertyValue& value, double leftControl,
                                       double rightControl) {
  PropertyDictionary keyFrame{{QStringLiteral("time"), single(time)}};
  if (!value.isNull()) keyFrame.insert(QStringLiteral("value"), value);
  return {{QStringLiteral("fixedControls"), true},
          {QStringLiteral("kf"), std::move(keyFrame)},
          {QStringLiteral("lc"), controlPoint(leftControl)},
          {QStringLiteral("rc"), controlPoint(rightControl)}};
}

PropertyArray smoothCurve(const QList<CurvePoint>& points) {
  PropertyArray curve;
  if (!points.isEmpty() && points.first().time > 0)
    curve.append(keyFrameInfoForTime(0, points.first().value, 0, 0));
  double previous = 0;
  for (qsizetype i = 0; i < points.size(); ++i) {
    const double time = points[i].time;
    const double next = i + 1 < points.size() ? points[i + 1].time : 0;
    const double right = next > 0 ? (next - time) * 0.5 : 0;
    curve.append(keyFrameInfoForTime(time, points[i].value, (previous - time) * 0.5, right));
    previous = time;
  }
  return curve;
}

PropertyArray heldCurve(const QList<CurvePoint>& points) {
  PropertyArray curve;
  if (points.isEmpty()) return curve;
  curve.append(keyFrameInfoForTime(0, points.first().value, 0, 0));
  PropertyValue previous;
  for (const CurvePoint& point : points) {
    if (point.value != previous) curve.append(keyFrameInfoForTime(point.time, previous, 0, 0));
    curve.append(keyFrameInfoForTime(point.time, point.value, 0, 0));
    previous = point.value;
  }
  return curve;
}

PropertyArray ordinalCurve(const QList<CurvePoint>& points) {
  PropertyArray curve;
  if (points.isEmpty()) return curve;
  curve.append(keyFrameInfoForTime(0, single(0), 0, 0));
  for (qsizetype n = 0; n < points.size(); ++n) {
    const double time = points[n].time;
    const auto ordinal = static_cast<double>(n);
    if (n > 0) curve.append(keyFrameInfoForTime(time, single(ordinal - 1), 0, 0));
    curve.append(keyFrameInfoForTime(time, single(ordinal), 0, 0));
  }
  return curve;
}

}  // namespace model
