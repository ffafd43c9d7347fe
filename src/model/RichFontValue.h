#pragma once

#include <QMap>

#include "foundation/Result.h"
#include "foundation/archive/ArchiveValue.h"
#include "model/AttributeValue.h"
#include "model/TextAttributes.h"

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

  /// A shadow flag of anything but 1 means no shadow.
  [[nodiscard]] TextAttributes textAttributes() const;
  /// Without a foreground the colour stays. Without a shadow its flag becomes 0 and the rest of it
  /// stays; without a line its style becomes 0; a line without a colour keeps the last one.
  void setTextAttributes(const TextAttributes& attributes);

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

  /// As keyed archives hold it: an object of the class "RichFontValue".
  [[nodiscard]] foundation::ArchiveValue archiveValue() const;
  /// Entries that are no boolean, number, text or colour are left out. The error says what an
  /// archived object lacks to be a rich font.
  [[nodiscard]] static foundation::Result<RichFontValue> fromArchiveValue(
      const foundation::ArchiveValue& value);

  friend bool operator==(const RichFontValue&, const RichFontValue&) = default;

 private:
  void insert(const QString& suffix, const AttributeValue& value);
  [[nodiscard]] float floatForSuffix(const QString& suffix) const;
  [[nodiscard]] std::optional<foundation::Color> colorForSuffix(const QString& suffix) const;
  [[nodiscard]] std::optional<TextAttributes::Line> lineForSuffixes(const QString& style,
                                                                    const QString& color) const;
  void setLine(const std::optional<TextAttributes::Line>& line, const QString& styleSuffix,
               const QString& colorSuffix);

  QMap<QString, AttributeValue> m_attributes;
  QString m_keyPattern;
};

}  // namespace model
