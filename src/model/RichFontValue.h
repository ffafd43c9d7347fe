#pragma once

#include <QMap>

#include "model/AttributeValue.h"

namespace runtime {
class CompositionRenderer;
}

namespace model {

/// The value of a group of inputs that together style a text: they share a prefix and end in fixed
/// suffixes, the first of which is "Rich_Font_Name".
class RichFontValue {
 public:
  /// The suffixes of the group, the name's first.
  [[nodiscard]] static const QStringList& suffixes();
  /// The group of the name input's key with the renderer's current values.
  RichFontValue(const QString& inputKey, const runtime::CompositionRenderer& renderer);
  /// From its parts: the key pattern and the values by full input key.
  RichFontValue(QString keyPattern, QMap<QString, AttributeValue> attributes)
      : m_attributes(std::move(attributes)), m_keyPattern(std::move(keyPattern)) {}

  /// The name input's key with "%@" in place of the suffix.
  [[nodiscard]] const QString& keyPattern() const { return m_keyPattern; }
  [[nodiscard]] QString inputKeyForSuffix(const QString& suffix) const;
  [[nodiscard]] AttributeValue valueForInputKey(const QString& suffix) const;
  [[nodiscard]] FontValue font() const;
  void setFont(const FontValue& font);
  [[nodiscard]] AttributeValue color() const;
  void setColor(const foundation::Color& color);

  /// Whether the full input key belongs to the group.
  [[nodiscard]] bool contains(const QString& inputKey) const {
    return m_attributes.contains(inputKey);
  }
  void setValueForFullKey(const AttributeValue& value, const QString& inputKey);
  /// All values as composition files hold them, by full input key.
  [[nodiscard]] foundation::PropertyDictionary quartzValues() const;
  /// All values by full input key, as the renderer takes them.
  [[nodiscard]] const QMap<QString, AttributeValue>& renderAttributes() const {
    return m_attributes;
  }

  friend bool operator==(const RichFontValue&, const RichFontValue&) = default;

 private:
  QMap<QString, AttributeValue> m_attributes;
  QString m_keyPattern;
};

}  // namespace model
