#include "timeline/AttributeCurve.h"

#include <limits>

#include "model/Attribute.h"
#include "runtime/TimeLineCurve.h"
#include "timeline/KeyFrameSelection.h"

namespace timeline {

using model::Attribute;
using model::AttributeType;
using runtime::TimeLineCurve;

namespace {

constexpr int samplesBetweenKeyFrames = 10;

double lightness(double red, double green, double blue) {
  return 0.2126 * red + 0.7152 * green + 0.0722 * blue;
}

double measureOf(const model::AttributeValue& value) {
  const auto* color = value.as<foundation::Color>();
  return color ? lightness(color->red, color->green, color->blue) : value.toNumber();
}

bool hasOrder(AttributeType type) {
  return type == AttributeType::Index || type == AttributeType::Number ||
         type == AttributeType::Boolean || type == AttributeType::IndexWithMenu ||
         type == AttributeType::Color;
}

bool isBlended(AttributeType type) {
  return type == AttributeType::Number || type == AttributeType::Color;
}

}  // namespace

AttributeCurve::AttributeCurve(const Attribute& attribute) {
  const QList<double> times = KeyFrameSelection::timesOf(attribute);
  if (times.size() < 2 || !hasOrder(attribute.type())) return;
  sampleEditor(attribute, times);
  // Values that are held are played as they are edited.
  if (isBlended(attribute.type())) samplePlayout(attribute, times);
  normalize();
}

void AttributeCurve::sampleEditor(const Attribute& attribute, const QList<double>& times) {
  for (const double time : times) {
    const double value = measureOf(attribute.valueForTimepoint(time));
    if (!isBlended(attribute.type()) && !m_inEditor.isEmpty())
      m_inEditor.append({time, m_inEditor.last().y()});
    m_inEditor.append({time, value});
  }
}

void AttributeCurve::samplePlayout(const Attribute& attribute, const QList<double>& times) {
  const foundation::PropertyArray stored = attribute.keyFrameInformation();
  std::vector<TimeLineCurve> curves;
  if (attribute.type() == AttributeType::Color)
    for (const foundation::PropertyValue& channel : stored)
      curves.push_back(TimeLineCurve::fromProperty(channel.array()));
  else
    curves.push_back(TimeLineCurve::fromProperty(stored));
  // Origins are exported less their margin, which is no difference that can be seen.
  const double margin = attribute.valueForTimepoint(times.first()).toNumber() -
                        attribute.marginAdjustedValueForTimepoint(times.first()).toNumber();
  const auto valueAt = [&](double time) {
    return curves.size() == 3 ? lightness(curves[0].valueAt(time), curves[1].valueAt(time),
                                          curves[2].valueAt(time))
                              : curves[0].valueAt(time) + margin;
  };
  for (qsizetype i = 0; i + 1 < times.size(); ++i)
    for (int step = 0; step < samplesBetweenKeyFrames; ++step) {
      const double share = static_cast<double>(step) / samplesBetweenKeyFrames;
      const double time = times[i] + share * (times[i + 1] - times[i]);
      m_inPlayout.append({time, valueAt(time)});
    }
  m_inPlayout.append({times.last(), valueAt(times.last())});
}

void AttributeCurve::normalize() {
  double least = std::numeric_limits<double>::max();
  double most = std::numeric_limits<double>::lowest();
  for (const QList<QPointF>* curve : {&m_inEditor, &m_inPlayout})
    for (const QPointF& point : *curve) {
      least = std::min(least, point.y());
      most = std::max(most, point.y());
    }
  if (!(most > least)) {
    m_inEditor.clear();
    m_inPlayout.clear();
    return;
  }
  for (QList<QPointF>* curve : {&m_inEditor, &m_inPlayout})
    for (QPointF& point : *curve) point.setY((point.y() - least) / (most - least));
}

}  // namespace timeline
