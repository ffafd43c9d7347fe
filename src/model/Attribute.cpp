#include "model/Attribute.h"

#include "model/AbstractComponent.h"
#include "model/KeyFrameCurves.h"
#include "model/RichFontValue.h"
#include "runtime/CompositionRenderer.h"

namespace model {

using foundation::Color;
using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::PropertyValue;
using RichFont = std::shared_ptr<const RichFontValue>;

namespace {

const QString fontName = QStringLiteral("Font_Name");
const QString fontSize = QStringLiteral("Font_Size");

AttributeType typeOfPort(const runtime::PortAttributes& info) {
  switch (info.type) {
    case runtime::PortType::Index:
      return info.menu.isEmpty() ? AttributeType::Index : AttributeType::IndexWithMenu;
    case runtime::PortType::Number:
      return AttributeType::Number;
    case runtime::PortType::Boolean:
      return AttributeType::Boolean;
    case runtime::PortType::Color:
      return AttributeType::Color;
    case runtime::PortType::Image:
      return info.key == QLatin1String("videoInput") ? AttributeType::VideoInput
                                                     : AttributeType::Image;
    default:
      return AttributeType::String;
  }
}

double blend(double start, double startTime, double end, double endTime, double time) {
  return start + (time - startTime) * ((end - start) / (endTime - startTime));
}

double single(double value) {
  return static_cast<double>(static_cast<float>(value));
}

}  // namespace

Attribute::Attribute(AbstractComponent* component, const runtime::PortAttributes& info,
                     AttributeValue value)
    : m_component(component), m_key(info.key), m_label(AttributeLabel::parse(info.label)) {
  assignType(info);
  setDefaultCurrentValue(std::move(value));
}

Attribute::Attribute(AbstractComponent* component, QString key, QString label, AttributeType type,
                     AttributeValue value, Feeds feeds)
    : m_component(component),
      m_key(std::move(key)),
      m_label{std::move(label), {}, AttributeLabel::noPosition},
      m_type(type),
      m_quartzAttribute(feeds == Feeds::Composition) {
  setDefaultCurrentValue(std::move(value));
}

void Attribute::assignType(const runtime::PortAttributes& info) {
  m_type = typeOfPort(info);
  if (m_key.contains(QLatin1String("RTF"))) m_type = AttributeType::RichText;
  if (m_key.contains(QLatin1String("Path")) || m_key.contains(QLatin1String("File")))
    m_type = AttributeType::File;
  if (m_key.contains(QLatin1String("Rich_Font_Name"))) {
    m_type = AttributeType::RichFont;
    m_label.text = QStringLiteral("Rich Font");
  } else if (m_key.contains(fontName)) {
    m_type = AttributeType::Font;
    m_label.text = QStringLiteral("Font");
  }
  if (m_type == AttributeType::IndexWithMenu) m_possibleValues = info.menu;
}

void Attribute::setAnimateable(bool animateable) {
  if (animateable == m_animateable) return;
  AttributeValue value = currentValue();
  m_animateable = animateable;
  m_values.clear();
  if (animateable)
    m_permissionToChange = false;
  else
    setDefaultCurrentValue(std::move(value));
}

bool Attribute::animationPossible() const {
  static const QStringList never{QStringLiteral("marginX"), QStringLiteral("marginY"),
                                 QStringLiteral("visibleInCompositionEditor")};
  return !never.contains(m_key) && m_type <= AttributeType::Color;
}

AttributeValue Attribute::currentValue() const {
  return valueAtTimepoint(m_component->renderTimepoint());
}

AttributeValue Attribute::valueAtTimepoint(double timepoint) const {
  if (!m_animateable) return m_values.value(noTimepoint);
  const double time = roundedTimepoint(timepoint);
  if (AttributeValue exact = m_values.value(time); !exact.isEmpty()) return exact;
  const double previous = m_values.previousTimePoint(time);
  const double next = m_values.nextTimePoint(time);
  if (previous == noTimepoint) return m_values.value(next);
  if (next == noTimepoint) return m_values.value(previous);
  return interpolateValueForStartTime(previous, next, time);
}

void Attribute::setCurrentValue(AttributeValue value) {
  m_values.set(m_animateable ? m_component->renderTimepoint() : noTimepoint, std::move(value));
  if (runtime::CompositionRenderer* renderer = m_component->renderer())
    setValueOnRenderer(*renderer);
}

void Attribute::addTimepoint(double timepoint, AttributeValue value) {
  setAnimateable(true);
  m_values.set(timepoint, std::move(value));
}

void Attribute::deleteTimepoint(double timepoint) {
  const std::optional<double> found = m_values.timepointNear(timepoint);
  if (!found) return;
  AttributeValue value = m_values.value(*found);
  m_values.remove(*found);
  if (!m_values.isEmpty()) return;
  setDefaultCurrentValue(value);
  setAnimateable(false);
  setCurrentValue(std::move(value));
}

AttributeValue Attribute::interpolateValueForStartTime(double startTime, double endTime,
                                                       double time) const {
  const AttributeValue start = m_values.value(startTime);
  const AttributeValue end = m_values.value(endTime);
  if (start.isEmpty() || end.isEmpty()) return {};
  const auto between = [&](double from, double to) {
    return single(blend(from, roundedTimepoint(startTime), to, roundedTimepoint(endTime),
                        roundedTimepoint(time)));
  };
  if (m_type == AttributeType::Number) return between(start.toNumber(), end.toNumber());
  const auto* first = start.as<Color>();
  const auto* second = end.as<Color>();
  if (m_type == AttributeType::Color && first && second)
    return Color{between(first->red, second->red), between(first->green, second->green),
                 between(first->blue, second->blue), between(first->alpha, second->alpha)};
  return start;
}

AttributeValue Attribute::marginAdjustedValueForTimepoint(double timepoint) const {
  AttributeValue value = m_values.value(timepoint);
  if (m_type != AttributeType::Number || value.isEmpty()) return value;
  QString marginKey;
  if (m_key == QLatin1String("originX")) marginKey = QStringLiteral("marginX");
  if (m_key == QLatin1String("originY")) marginKey = QStringLiteral("marginY");
  const Attribute* margin = marginKey.isEmpty() ? nullptr : m_component->attributeForKey(marginKey);
  const double amount = margin ? margin->currentValue().toNumber() : 0;
  return amount > 0 ? AttributeValue(value.toNumber() - amount) : value;
}

void Attribute::setValueOnRenderer(runtime::CompositionRenderer& renderer) const {
  if (!m_quartzAttribute) return;
  const AttributeValue value = currentValue();
  if (const auto* font = value.as<FontValue>()) {
    renderer.setValueForInputKey(font->name, m_key);
    renderer.setValueForInputKey(font->size, QString(m_key).replace(fontName, fontSize));
  } else if (const auto* rich = value.as<RichFont>(); rich && *rich) {
    const auto& inputs = (*rich)->renderAttributes();
    for (auto it = inputs.cbegin(); it != inputs.cend(); ++it)
      renderer.setValueForInputKey(it.value().runtimeValue(), it.key());
  } else {
    renderer.setValueForInputKey(value.runtimeValue(), m_key);
  }
}

PropertyDictionary Attribute::quartzValues() const {
  if (m_animateable && animationPossible()) return {{m_key, keyFrameInformation()}};
  const AttributeValue value = currentValue();
  if (const auto* rich = value.as<RichFont>(); rich && *rich) return (*rich)->quartzValues();
  if (const auto* font = value.as<FontValue>())
    return {{m_key, font->name}, {QString(m_key).replace(fontName, fontSize), font->size}};
  PropertyValue stored = value.quartzValue();
  return stored.isNull() ? PropertyDictionary() : PropertyDictionary{{m_key, std::move(stored)}};
}

PropertyArray Attribute::keyFrameInformation() const {
  QList<CurvePoint> points;
  for (const double time : m_values.sortedKeyFrames())
    points.append({time, marginAdjustedValueForTimepoint(time).quartzValue()});
  switch (m_type) {
    case AttributeType::Number:
      return smoothCurve(points);
    case AttributeType::Color: {
      PropertyArray curves;
      for (const char16_t* channel : {u"red", u"green", u"blue"}) {
        QList<CurvePoint> single = points;
        for (CurvePoint& point : single)
          point.value = PropertyValue(point.value.dictionary()[channel]);
        curves.append(PropertyValue(smoothCurve(single)));  // as one element
      }
      return curves;
    }
    case AttributeType::Index:
    case AttributeType::IndexWithMenu:
      return heldCurve(points);
    default:
      return ordinalCurve(points);
  }
}

PropertyArray Attribute::keyFrameValuesForMultiplexer() const {
  PropertyArray values;
  switch (m_type) {
    case AttributeType::Index:
    case AttributeType::Number:
    case AttributeType::IndexWithMenu:
    case AttributeType::Color:
      return values;
    default:
      for (const double time : m_values.sortedKeyFrames())
        values.append(m_values.value(time).quartzValue());
      return values;
  }
}

}  // namespace model
