#include "model/Attribute.h"

#include <cmath>

#include "foundation/UserDefaults.h"
#include "model/AbstractComponent.h"
#include "model/KeyFrameCurves.h"
#include "model/RichFontValue.h"
#include "model/VideoInputPoster.h"
#include "runtime/CompositionRenderer.h"
#include "store/ObjectContext.h"

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

/// One undo step, or nothing for an attribute that is in no context yet.
class StepOf {
 public:
  explicit StepOf(Attribute& attribute) {
    if (attribute.context()) m_step.emplace(*attribute.context());
  }

 private:
  std::optional<store::UndoStep> m_step;
};

}  // namespace

Attribute::Declaration::Declaration() : Entity(QStringLiteral("Attribute")) {
  derive("title", {"label"});
  derive("currentValue", {"values", "animateable"}, [](const store::ManagedObject& object) {
    return QVariant::fromValue(static_cast<const Attribute&>(object).currentValue());
  });
}

const Attribute::Declaration& Attribute::declaration() {
  static const Declaration declaration;
  return declaration;
}

Attribute::Attribute(const runtime::PortAttributes& info, AttributeValue value)
    : ManagedObject(declaration()) {
  const AttributeLabel label = AttributeLabel::parse(info.label);
  set(declaration().key, info.key);
  set(declaration().label, label.text);
  m_category = label.category;
  m_position = label.position;
  assignType(info, value);
  setDefaultCurrentValue(std::move(value));
  commonInitialisation();
}

Attribute::Attribute(const QString& key, const QString& label, AttributeType type,
                     AttributeValue value, Feeds feeds)
    : ManagedObject(declaration()) {
  set(declaration().key, key);
  set(declaration().label, label);
  set(declaration().type, static_cast<qint64>(type));
  set(declaration().quartzAttribute, feeds == Feeds::Composition);
  setDefaultCurrentValue(std::move(value));
  commonInitialisation();
}

Attribute::Attribute(const PropertyDictionary& dictionaryData) : ManagedObject(declaration()) {
  for (const auto& [key, value] : dictionaryData) setStoredValue(value, key);
  m_category = dictionaryData.value(u"category").toString();
  m_position =
      static_cast<quint64>(dictionaryData.value(u"position").toInteger(AttributeLabel::noPosition));
  if (type() == AttributeType::Boolean) {
    // Clipboards know booleans as small integers.
    KeyFrames flags = values();
    for (const double time : sortedKeyFrames())
      if (const AttributeValue value = valueForTimepoint(time); value.as<qint64>())
        flags.set(time, value.toNumber() != 0);
    setValues(std::move(flags));
  }
  commonInitialisation();
}

AbstractComponent* Attribute::component() const {
  return get(declaration().component);
}

void Attribute::setComponent(AbstractComponent* component) {
  set(declaration().component, component);
}

void Attribute::readLabelOfPort(const QString& label) {
  const AttributeLabel parsed = AttributeLabel::parse(label);
  m_category = parsed.category;
  m_position = parsed.position;
}

void Attribute::assignType(const runtime::PortAttributes& info, AttributeValue& value) {
  AttributeType type = typeOfPort(info);
  if (key().contains(QLatin1String("RTF"))) type = AttributeType::RichText;
  if (key().contains(QLatin1String("Path")) || key().contains(QLatin1String("File")))
    type = AttributeType::File;
  if (key().contains(QLatin1String("Rich_Font_Name"))) {
    type = AttributeType::RichFont;
    set(declaration().label, QStringLiteral("Rich Font"));
  } else if (key().contains(fontName)) {
    type = AttributeType::Font;
    set(declaration().label, QStringLiteral("Font"));
  }
  if (type == AttributeType::VideoInput) {
    const QImage poster = videoInputPosterImage(foundation::UserDefaults::standard());
    value = poster.isNull() ? AttributeValue() : AttributeValue(poster);
  }
  set(declaration().type, static_cast<qint64>(type));
  if (type == AttributeType::IndexWithMenu) set(declaration().possibleValues, info.menu);
}

void Attribute::commonInitialisation() {
  if (!animateable() || type() != AttributeType::Font) return;
  // Fonts are never animated; older documents may hold one that is.
  const QList<double> times = sortedKeyFrames();
  AttributeValue value = currentValue();
  if (value.isEmpty() && !times.isEmpty()) value = values().value(times.first());
  set(declaration().animateable, false);
  KeyFrames single;
  single.set(noTimepoint, std::move(value));
  setValues(std::move(single));
}

void Attribute::valueDidChange(const QString& key) {
  AbstractComponent* owner = component();
  if (owner && (key == QLatin1String("values") || key == QLatin1String("animateable")))
    owner->attributeDidChange(*this);
}

void Attribute::setAnimateable(bool animateable) {
  if (animateable == this->animateable()) return;
  const StepOf step(*this);
  AttributeValue value = currentValue();
  set(declaration().animateable, animateable);
  KeyFrames kept;
  if (!animateable) kept.set(noTimepoint, std::move(value));
  setValues(std::move(kept));
  if (animateable) {
    m_lostPermissionToAnimation = permissionToChange();
    setPermissionToChange(false);
  }
  if (component()) component()->attributeValueChanged();
}

bool Attribute::animationPossible() const {
  static const QStringList never{QStringLiteral("marginX"), QStringLiteral("marginY"),
                                 QStringLiteral("visibleInCompositionEditor")};
  return type() <= AttributeType::Color && !never.contains(key());
}

AttributeValue Attribute::currentValue() const {
  return valueAtTimepoint(component() ? component()->renderTimepoint() : 0);
}

AttributeValue Attribute::valueAtTimepoint(double timepoint) const {
  const KeyFrames& stored = values();
  if (!animateable()) return stored.value(noTimepoint);
  const double time = roundedTimepoint(timepoint);
  if (AttributeValue exact = stored.value(time); !exact.isEmpty()) return exact;
  const double previous = stored.previousTimePoint(time);
  const double next = stored.nextTimePoint(time);
  if (previous == noTimepoint) return stored.value(next);
  if (next == noTimepoint) return stored.value(previous);
  return interpolateValueForStartTime(previous, next, time);
}

void Attribute::setCurrentValue(AttributeValue value) {
  if (!animateable()) {
    setDefaultCurrentValue(std::move(value));
    return;
  }
  setValueForTimepoint(std::move(value), component() ? component()->renderTimepoint() : 0);
  if (component()) component()->attributeValueChanged();
}

std::optional<AttributeValue> Attribute::valueFromVariant(const QVariant& value) const {
  if (value.metaType() == QMetaType::fromType<AttributeValue>())
    return value.value<AttributeValue>();
  if (!value.isValid()) return AttributeValue();
  const auto number = [&](auto convert) -> std::optional<AttributeValue> {
    bool fits = false;
    const double converted = value.toDouble(&fits);
    if (!fits || !std::isfinite(converted)) return {};
    return convert(converted);
  };
  switch (type()) {
    case AttributeType::Number:
      return number([](double converted) { return AttributeValue(converted); });
    case AttributeType::Boolean:
      return number([](double converted) { return AttributeValue(converted != 0); });
    case AttributeType::Index:
    case AttributeType::IndexWithMenu:
      return number([](double converted) {
        return AttributeValue(static_cast<qint64>(std::clamp(converted, 0.0, 1e15)));
      });
    case AttributeType::Color:
      if (!value.canConvert<QColor>() || !value.value<QColor>().isValid()) return {};
      return AttributeValue(Color::fromQColor(value.value<QColor>()));
    case AttributeType::Image:
    case AttributeType::VideoInput:
      if (!value.canConvert<QImage>()) return {};
      return AttributeValue(value.value<QImage>());
    case AttributeType::String:
    case AttributeType::RichText:
    case AttributeType::File:
    case AttributeType::OtherFile:
      if (!value.canConvert<QString>()) return {};
      return AttributeValue(value.toString());
    case AttributeType::Font:
    case AttributeType::RichFont:
      return {};
  }
  return {};
}

void Attribute::setValueForTimepoint(AttributeValue value, double timepoint) {
  KeyFrames changed = values();
  changed.set(timepoint, std::move(value));
  setValues(std::move(changed));
}

AttributeValue Attribute::interpolateValueForStartTime(double startTime, double endTime,
                                                       double time) const {
  const AttributeValue start = valueForTimepoint(startTime);
  const AttributeValue end = valueForTimepoint(endTime);
  if (start.isEmpty() || end.isEmpty()) return {};
  const auto between = [&](double from, double to) {
    return interpolateFloatStartValue(from, startTime, to, endTime, time);
  };
  if (type() == AttributeType::Number) return between(start.toNumber(), end.toNumber());
  const auto* first = start.as<Color>();
  const auto* second = end.as<Color>();
  if (type() == AttributeType::Color && first && second)
    return Color{between(first->red, second->red), between(first->green, second->green),
                 between(first->blue, second->blue), between(first->alpha, second->alpha)};
  return start;
}

double Attribute::interpolateFloatStartValue(double startValue, double startTime, double endValue,
                                             double endTime, double currentTime) {
  const double start = roundedTimepoint(startTime);
  const double slope = (endValue - startValue) / (roundedTimepoint(endTime) - start);
  return static_cast<double>(
      static_cast<float>(startValue + (roundedTimepoint(currentTime) - start) * slope));
}

void Attribute::addTimepoint(double timepoint, AttributeValue value) {
  const StepOf step(*this);
  setAnimateable(true);
  setValueForTimepoint(std::move(value), timepoint);
}

void Attribute::deleteTimepoint(double timepoint) {
  const std::optional<double> found = values().timepointNear(timepoint);
  if (!found) return;
  const StepOf step(*this);
  AttributeValue value = valueForTimepoint(*found);
  KeyFrames changed = values();
  changed.remove(*found);
  const bool wasLast = changed.isEmpty();
  setValues(std::move(changed));
  setTimePointSelected(timepoint, false);
  setTimePointSelected(*found, false);
  if (!wasLast) return;
  setDefaultCurrentValue(value);
  setAnimateable(false);
  setCurrentValue(std::move(value));
}

void Attribute::deleteSelectedTimepoints() {
  const StepOf step(*this);
  const QList<double> selected = selectedTimepoints();
  for (const double timepoint : selected) deleteTimepoint(timepoint);
}

QList<double> Attribute::timepointsToMove(Moved moved) const {
  QList<double> times = sortedKeyFrames();
  times.removeAll(noTimepoint);  // a static value stands at no time
  if (moved == Moved::OnlySelected)
    times.removeIf([this](double time) { return !isTimePointSelected(time); });
  return times;
}

double Attribute::adjustTimepointsBy(double delta, Moved moved) {
  const QList<double> times = timepointsToMove(moved);
  if (times.isEmpty() || !std::isfinite(delta)) return times.value(0);
  if (const AbstractComponent* owner = component()) {
    if (times.first() + delta < owner->startTime())
      delta = owner->startTime() - times.first();
    else if (times.last() + delta > owner->endTime())
      delta = owner->endTime() - times.last();
  }
  if (delta != 0) {
    const StepOf step(*this);
    QList<double> selection;
    for (const double time : times)
      if (isTimePointSelected(time)) selection.append(roundedTimepoint(time + delta));
    setAlong(declaration().selectedTimepoints, std::move(selection));
    setValues(values().moved(times, delta));
  }
  const QList<double> afterwards = timepointsToMove(moved);
  return afterwards.isEmpty() ? 0 : afterwards.first();
}

bool Attribute::isTimePointSelected(double timepoint) const {
  return selectedTimepoints().contains(roundedTimepoint(timepoint));
}

void Attribute::setTimePointSelected(double timepoint, bool selected) {
  const double time = roundedTimepoint(timepoint);
  QList<double> selection = selectedTimepoints();
  if (selected == selection.contains(time)) return;
  if (selected)
    selection.append(time);
  else
    selection.removeAll(time);
  set(declaration().selectedTimepoints, std::move(selection));
}

AttributeValue Attribute::marginAdjustedValueForTimepoint(double timepoint) const {
  AttributeValue value = valueForTimepoint(timepoint);
  if (type() != AttributeType::Number || value.isEmpty() || !component()) return value;
  QString marginKey;
  if (key() == QLatin1String("originX")) marginKey = QStringLiteral("marginX");
  if (key() == QLatin1String("originY")) marginKey = QStringLiteral("marginY");
  const Attribute* margin = marginKey.isEmpty() ? nullptr : component()->attributeForKey(marginKey);
  const double amount = margin ? margin->currentValue().toNumber() : 0;
  return amount > 0 ? AttributeValue(value.toNumber() - amount) : value;
}

void Attribute::setValueOnRenderer(runtime::CompositionRenderer& renderer) const {
  if (!quartzAttribute()) return;
  const AttributeValue value = currentValue();
  if (const auto* font = value.as<FontValue>()) {
    renderer.setValueForInputKey(font->name, key());
    renderer.setValueForInputKey(font->size, QString(key()).replace(fontName, fontSize));
  } else if (const auto* rich = value.as<RichFont>(); rich && *rich) {
    const auto& inputs = (*rich)->renderAttributes();
    for (auto it = inputs.cbegin(); it != inputs.cend(); ++it)
      renderer.setValueForInputKey(it.value().runtimeValue(), it.key());
  } else {
    renderer.setValueForInputKey(value.runtimeValue(), key());
  }
}

PropertyDictionary Attribute::quartzValues() const {
  if (isAnimatedInExport()) return {{key(), keyFrameInformation()}};
  const AttributeValue value = currentValue();
  if (const auto* rich = value.as<RichFont>(); rich && *rich) return (*rich)->quartzValues();
  if (const auto* font = value.as<FontValue>())
    return {{key(), font->name}, {QString(key()).replace(fontName, fontSize), font->size}};
  PropertyValue stored = value.quartzValue();
  return stored.isNull() ? PropertyDictionary() : PropertyDictionary{{key(), std::move(stored)}};
}

PropertyArray Attribute::keyFrameInformation() const {
  QList<CurvePoint> points;
  for (const double time : sortedKeyFrames())
    points.append({time, marginAdjustedValueForTimepoint(time).quartzValue()});
  switch (type()) {
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
  PropertyArray list;
  switch (type()) {
    case AttributeType::Index:
    case AttributeType::Number:
    case AttributeType::IndexWithMenu:
    case AttributeType::Color:
      return list;
    default:
      for (const double time : sortedKeyFrames())
        list.append(valueForTimepoint(time).quartzValue());
      return list;
  }
}

PropertyDictionary Attribute::dictionaryWithData() const {
  PropertyDictionary dictionary;
  for (const store::PropertyDescription& property : entity().properties())
    if (property.codec) dictionary.insert(property.key, storedValue(property.key));
  dictionary.insert(QStringLiteral("category"), m_category);
  dictionary.insert(QStringLiteral("position"), static_cast<qint64>(m_position));
  return dictionary;
}

PropertyDictionary Attribute::componentInfo() const {
  return {{QStringLiteral("label"), label()},
          {QStringLiteral("key"), key()},
          {QStringLiteral("permissionToChange"), permissionToChange()},
          {QStringLiteral("animateable"), animateable()}};
}

}  // namespace model
