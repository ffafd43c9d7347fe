#pragma once

#include <QStringList>

#include "model/AttributeLabel.h"
#include "model/AttributeValueCodec.h"
#include "model/KeyFrames.h"
#include "store/ManagedObject.h"

namespace runtime {
class CompositionRenderer;
struct PortAttributes;
}  // namespace runtime

namespace model {

class AbstractComponent;

/// The stored codes of attribute types; 10 is read like a file path and never assigned.
enum class AttributeType : qint32 {
  String = 0,
  Index = 1,
  Number = 2,
  Boolean = 3,
  IndexWithMenu = 4,
  Color = 5,
  Image = 6,
  Font = 7,
  RichText = 8,
  File = 9,
  OtherFile = 10,
  VideoInput = 11,
  RichFont = 12
};

/// One editable input of a component: a published input of its composition, or one of the standard
/// attributes such as "originX". Static, or animated by key frames (times in seconds). Its
/// component owns it.
class Attribute : public store::ManagedObject {
 public:
  enum class Feeds { Composition, Nothing };
  /// Which key frames an operation is about.
  enum class Moved { All, OnlySelected };

  struct Declaration : store::Entity {
    Declaration();
    store::Property<QString> key = property<QString>("key");
    store::Property<QString> label = property<QString>("label");
    store::Property<bool> quartzAttribute = property<bool>("quartzAttribute", true);
    store::Property<bool> animateable = property<bool>("animateable");
    store::Property<qint64> permissionToChange = property<qint64>("permissionToChange");
    store::Property<qint64> type = property<qint64>("type");
    store::Property<QStringList> possibleValues = property<QStringList>("possibleValues");
    store::Property<KeyFrames> values = property<KeyFrames>("values");
    store::Property<QList<double>> selectedTimepoints =
        transient<QList<double>>("selectedTimepoints");
    store::ToOne<AbstractComponent> component = toOne<AbstractComponent>("component", "attributes");
  };
  [[nodiscard]] static const Declaration& declaration();

  /// From a published input.
  Attribute(const runtime::PortAttributes& info, AttributeValue value);
  /// A standard attribute.
  Attribute(const QString& key, const QString& label, AttributeType type, AttributeValue value,
            Feeds feeds = Feeds::Composition);
  /// From the form that dictionaryWithData() gives.
  explicit Attribute(const foundation::PropertyDictionary& dictionaryData);

  /// None before the attribute was given to one.
  [[nodiscard]] AbstractComponent* component() const;
  void setComponent(AbstractComponent* component);
  [[nodiscard]] const QString& key() const { return get(declaration().key); }
  [[nodiscard]] const QString& label() const { return get(declaration().label); }
  [[nodiscard]] const QString& title() const { return label(); }
  [[nodiscard]] bool titleEditable() const { return true; }
  [[nodiscard]] bool isLeaf() const { return true; }
  /// Both are read from the file's label and are not stored; empty, and AttributeLabel::noPosition,
  /// where it says nothing.
  [[nodiscard]] const QString& category() const { return m_category; }
  [[nodiscard]] quint64 position() const { return m_position; }
  void setPosition(quint64 position) { m_position = position; }
  /// Takes category and position from the label of the published input that the attribute is for.
  void readLabelOfPort(const QString& label);
  [[nodiscard]] AttributeType type() const {
    return static_cast<AttributeType>(get(declaration().type));
  }
  /// Whether the value is the path of a file.
  [[nodiscard]] bool isFilePath() const {
    return type() == AttributeType::File || type() == AttributeType::OtherFile;
  }
  /// Menu titles of an index with a menu.
  [[nodiscard]] const QStringList& possibleValues() const {
    return get(declaration().possibleValues);
  }
  /// Whether the value is an input of the composition.
  [[nodiscard]] bool quartzAttribute() const { return get(declaration().quartzAttribute); }
  /// Whether users of the template may change it.
  [[nodiscard]] bool permissionToChange() const {
    return get(declaration().permissionToChange) == 1;
  }
  void setPermissionToChange(bool permission) {
    set(declaration().permissionToChange, qint64{permission});
  }
  [[nodiscard]] bool animateable() const { return get(declaration().animateable); }
  /// Switching drops all key frames; switching off keeps the current value, switching on takes away
  /// the permission to change.
  void setAnimateable(bool animateable);
  /// Since it was animated: it was a field of the template and is none any more.
  [[nodiscard]] bool lostPermissionToAnimation() const {
    return animateable() && m_lostPermissionToAnimation && !permissionToChange();
  }
  /// Types that can be animated, less the keys that never are.
  [[nodiscard]] bool animationPossible() const;

  [[nodiscard]] const KeyFrames& values() const { return get(declaration().values); }
  /// At the component's render timepoint.
  [[nodiscard]] AttributeValue currentValue() const;
  [[nodiscard]] AttributeValue valueAtTimepoint(double timepoint) const;
  /// A key frame at the render timepoint, or the static value.
  void setCurrentValue(AttributeValue value);
  /// A value of this attribute's type from an AttributeValue or from what controls hold: numbers,
  /// texts, booleans, colours, images. Nothing when it does not fit; an invalid one is missing.
  [[nodiscard]] std::optional<AttributeValue> valueFromVariant(const QVariant& value) const;
  void setDefaultCurrentValue(AttributeValue value) {
    setValueForTimepoint(std::move(value), noTimepoint);
  }
  /// The stored entry or nothing.
  [[nodiscard]] AttributeValue valueForTimepoint(double timepoint) const {
    return values().value(timepoint);
  }
  void setValueForTimepoint(AttributeValue value, double timepoint);
  [[nodiscard]] AttributeValue interpolateValueForStartTime(double startTime, double endTime,
                                                            double time) const;
  /// Between two values at two times (seconds), in double precision; the result in single.
  [[nodiscard]] static double interpolateFloatStartValue(double startValue, double startTime,
                                                         double endValue, double endTime,
                                                         double currentTime);

  /// A key frame; the attribute becomes animated.
  void addTimepoint(double timepoint, AttributeValue value);
  [[nodiscard]] bool hasKeyframeAtTimePoint(double timepoint) const {
    return values().timepointNear(timepoint).has_value();
  }
  /// The key frame that equals the time to the hundredth of a second. With the last one gone the
  /// attribute is static with its value.
  void deleteTimepoint(double timepoint);
  void deleteSelectedTimepoints();
  /// Moves key frames by as much of the delta (seconds) as keeps them within the component's times;
  /// those that do not move are replaced where others land on them. Returns the new time of the
  /// first moved one, 0 when there is none.
  double adjustTimepointsBy(double delta, Moved moved);
  [[nodiscard]] QList<double> sortedKeyFrames() const { return values().sortedKeyFrames(); }
  [[nodiscard]] double previousTimePoint(double timepoint) const {
    return values().previousTimePoint(timepoint);
  }
  [[nodiscard]] double nextTimePoint(double timepoint) const {
    return values().nextTimePoint(timepoint);
  }
  /// The selection of key frames is not stored and not undone.
  [[nodiscard]] const QList<double>& selectedTimepoints() const {
    return get(declaration().selectedTimepoints);
  }
  [[nodiscard]] bool isTimePointSelected(double timepoint) const;
  void setTimePointSelected(double timepoint, bool selected);
  void deselectAllTimePoints() { set(declaration().selectedTimepoints, QList<double>()); }

  /// The stored value, for origins less the component's margin on that axis when it is above 0.
  [[nodiscard]] AttributeValue marginAdjustedValueForTimepoint(double timepoint) const;
  /// Does nothing for attributes that are no inputs.
  void setValueOnRenderer(runtime::CompositionRenderer& renderer) const;
  /// Whether the export plays it from a curve.
  [[nodiscard]] bool isAnimatedInExport() const { return animateable() && animationPossible(); }
  /// For the export: input key → value, or → key-frame information while animated.
  [[nodiscard]] foundation::PropertyDictionary quartzValues() const;
  /// The curve of a time line; for a colour three curves: red, green, blue.
  [[nodiscard]] foundation::PropertyArray keyFrameInformation() const;
  /// The values that a curve of ordinal numbers picks from; none for types with curves of their
  /// own.
  [[nodiscard]] foundation::PropertyArray keyFrameValuesForMultiplexer() const;

  /// The form in which components are copied, everything included.
  [[nodiscard]] foundation::PropertyDictionary dictionaryWithData() const;
  /// What file browsers are told: label, key, permission, animated or not.
  [[nodiscard]] foundation::PropertyDictionary componentInfo() const;

  [[nodiscard]] bool positionComparator(const Attribute& other) const {
    return position() < other.position();
  }
  [[nodiscard]] bool titleComparator(const Attribute& other) const {
    return title().compare(other.title()) < 0;
  }

 protected:
  void valueDidChange(const QString& key) override;

 private:
  void assignType(const runtime::PortAttributes& info, AttributeValue& value);
  void commonInitialisation();
  void setValues(KeyFrames values) { set(declaration().values, std::move(values)); }
  [[nodiscard]] QList<double> timepointsToMove(Moved moved) const;

  QString m_category;
  quint64 m_position = AttributeLabel::noPosition;
  bool m_lostPermissionToAnimation = false;
};

}  // namespace model
