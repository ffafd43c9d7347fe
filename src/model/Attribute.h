#pragma once

#include <QSet>
#include <QStringList>

#include "foundation/PropertyValue.h"
#include "model/AttributeLabel.h"
#include "model/KeyFrames.h"

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
  VideoInput = 11,
  RichFont = 12
};

/// One editable input of a component: a published input of its composition, or one of the standard
/// attributes such as "originX". Static, or animated by key frames (times in seconds).
class Attribute {
 public:
  enum class Feeds { Composition, Nothing };

  /// From a published input. The component must outlive the attribute.
  Attribute(AbstractComponent* component, const runtime::PortAttributes& info,
            AttributeValue value);
  /// A standard attribute.
  Attribute(AbstractComponent* component, QString key, QString label, AttributeType type,
            AttributeValue value, Feeds feeds = Feeds::Composition);

  [[nodiscard]] AbstractComponent* component() const { return m_component; }
  [[nodiscard]] const QString& key() const { return m_key; }
  [[nodiscard]] const QString& label() const { return m_label.text; }
  [[nodiscard]] const QString& title() const { return m_label.text; }
  [[nodiscard]] const QString& category() const { return m_label.category; }
  [[nodiscard]] quint64 position() const { return m_label.position; }
  void setPosition(quint64 position) { m_label.position = position; }
  [[nodiscard]] AttributeType type() const { return m_type; }
  /// Menu titles of an index with a menu.
  [[nodiscard]] const QStringList& possibleValues() const { return m_possibleValues; }
  /// Whether the value is an input of the composition.
  [[nodiscard]] bool quartzAttribute() const { return m_quartzAttribute; }
  /// Whether users of the template may change it.
  [[nodiscard]] bool permissionToChange() const { return m_permissionToChange; }
  void setPermissionToChange(bool permission) { m_permissionToChange = permission; }
  [[nodiscard]] bool animateable() const { return m_animateable; }
  /// Switching drops all key frames and keeps the current value; switching on takes away the
  /// permission to change.
  void setAnimateable(bool animateable);
  /// Types that can be animated, less the keys that never are.
  [[nodiscard]] bool animationPossible() const;

  [[nodiscard]] const KeyFrames& values() const { return m_values; }
  /// At the component's render timepoint.
  [[nodiscard]] AttributeValue currentValue() const;
  [[nodiscard]] AttributeValue valueAtTimepoint(double timepoint) const;
  /// A key frame at the render timepoint, or the static value. Goes to the renderer too.
  void setCurrentValue(AttributeValue value);
  void setDefaultCurrentValue(AttributeValue value) { m_values.set(noTimepoint, std::move(value)); }
  /// The stored entry or nothing.
  [[nodiscard]] AttributeValue valueForTimepoint(double timepoint) const {
    return m_values.value(timepoint);
  }
  void setValueForTimepoint(AttributeValue value, double timepoint) {
    m_values.set(timepoint, std::move(value));
  }
  /// A key frame; the attribute becomes animated.
  void addTimepoint(double timepoint, AttributeValue value);
  [[nodiscard]] bool hasKeyframeAtTimePoint(double timepoint) const {
    return m_values.timepointNear(timepoint).has_value();
  }
  /// With the last key frame gone the attribute is static with its value.
  void deleteTimepoint(double timepoint);
  [[nodiscard]] AttributeValue interpolateValueForStartTime(double startTime, double endTime,
                                                            double time) const;
  /// The stored value, for origins less the component's margin on that axis when it is above 0.
  [[nodiscard]] AttributeValue marginAdjustedValueForTimepoint(double timepoint) const;

  /// Does nothing for attributes that are no inputs.
  void setValueOnRenderer(runtime::CompositionRenderer& renderer) const;
  /// For the export: input key → value, or → key-frame information while animated.
  [[nodiscard]] foundation::PropertyDictionary quartzValues() const;
  /// The curve of a time line; for a colour three curves: red, green, blue.
  [[nodiscard]] foundation::PropertyArray keyFrameInformation() const;
  /// The values that a curve of ordinal numbers picks from; none for types with curves of their
  /// own.
  [[nodiscard]] foundation::PropertyArray keyFrameValuesForMultiplexer() const;

 private:
  void assignType(const runtime::PortAttributes& info);

  AbstractComponent* m_component;
  QString m_key;
  AttributeLabel m_label;
  AttributeType m_type = AttributeType::String;
  QStringList m_possibleValues;
  KeyFrames m_values;
  bool m_quartzAttribute = true;
  bool m_animateable = false;
  bool m_permissionToChange = false;
};

}  // namespace model
