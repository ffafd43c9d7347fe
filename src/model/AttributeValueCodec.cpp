#include "model/AttributeValueCodec.h"

#include <charconv>

#include "model/RichFontValue.h"

namespace store {

using foundation::Color;
using foundation::PropertyDictionary;
using foundation::PropertyValue;
using model::AttributeValue;
using model::FontValue;
using model::KeyFrames;
using model::RichFontValue;
using RichFont = std::shared_ptr<const RichFontValue>;

namespace {

PropertyValue tagged(const char16_t* tag, PropertyValue value) {
  return PropertyDictionary{{QString::fromUtf16(tag), std::move(value)}};
}

PropertyValue encodeRichFont(const RichFontValue& font) {
  PropertyDictionary attributes;
  const auto& values = font.renderAttributes();
  for (auto it = values.cbegin(); it != values.cend(); ++it)
    attributes.insert(it.key(), CodecOf<AttributeValue>::encode(it.value()));
  return PropertyDictionary{{QStringLiteral("keyPattern"), font.keyPattern()},
                            {QStringLiteral("attributes"), std::move(attributes)}};
}

AttributeValue decodeRichFont(const PropertyDictionary& stored) {
  QMap<QString, AttributeValue> attributes;
  for (const auto& [key, value] : stored.value(u"attributes").dictionary())
    attributes.insert(key, CodecOf<AttributeValue>::decode(value));
  return std::make_shared<const RichFontValue>(stored.value(u"keyPattern").toString(),
                                               std::move(attributes));
}

QString timepointText(double timepoint) {
  std::array<char, 64> text;
  const auto end = std::to_chars(text.data(), text.data() + text.size(),
                                 static_cast<float>(timepoint), std::chars_format::fixed);
  return QString::fromLatin1(text.data(), end.ptr - text.data());
}

std::optional<double> timepointOf(const QString& text) {
  const QByteArray bytes = text.toLatin1();
  float timepoint = 0;
  const auto end = std::from_chars(bytes.constData(), bytes.constData() + bytes.size(), timepoint);
  if (end.ec != std::errc() || end.ptr != bytes.constData() + bytes.size()) return {};
  return static_cast<double>(timepoint);
}

}  // namespace

PropertyValue CodecOf<AttributeValue>::encode(const AttributeValue& value) {
  if (const auto* flag = value.as<bool>()) return *flag;
  if (const auto* index = value.as<qint64>()) return *index;
  if (const auto* number = value.as<double>()) return *number;
  if (const auto* text = value.as<QString>()) return *text;
  if (const auto* color = value.as<Color>())
    return tagged(u"color", CodecOf<Color>::encode(*color));
  if (const auto* image = value.as<QImage>())
    return tagged(u"image", CodecOf<QImage>::encode(*image));
  if (const auto* font = value.as<FontValue>())
    return tagged(u"font", PropertyDictionary{{QStringLiteral("name"), font->name},
                                              {QStringLiteral("size"), font->size}});
  if (const auto* rich = value.as<RichFont>(); rich && *rich)
    return tagged(u"richFont", encodeRichFont(**rich));
  return tagged(u"missing", true);
}

AttributeValue CodecOf<AttributeValue>::decode(const PropertyValue& stored) {
  using Type = PropertyValue::Type;
  switch (stored.type()) {
    case Type::Boolean:
      return stored.toBool();
    case Type::Integer:
      return stored.toInteger();
    case Type::Real:
      return stored.toDouble();
    case Type::String:
      return stored.toString();
    default:
      break;
  }
  const PropertyDictionary& entry = stored.dictionary();
  if (entry.contains(u"color")) return CodecOf<Color>::decode(entry.value(u"color"));
  if (entry.contains(u"image")) return CodecOf<QImage>::decode(entry.value(u"image"));
  if (entry.contains(u"richFont")) return decodeRichFont(entry.value(u"richFont").dictionary());
  if (entry.contains(u"font")) {
    const PropertyDictionary& font = entry.value(u"font").dictionary();
    return FontValue{font.value(u"name").toString(), font.value(u"size").toDouble()};
  }
  return {};
}

PropertyValue CodecOf<KeyFrames>::encode(const KeyFrames& value) {
  QList<PropertyDictionary::Entry> entries;
  for (const double time : value.sortedKeyFrames())
    entries.append({timepointText(time), CodecOf<AttributeValue>::encode(value.value(time))});
  return PropertyDictionary::fromEntries(std::move(entries));
}

KeyFrames CodecOf<KeyFrames>::decode(const PropertyValue& stored) {
  KeyFrames values;
  for (const auto& [text, value] : stored.dictionary())
    if (const auto time = timepointOf(text))
      values.set(*time, CodecOf<AttributeValue>::decode(value));
  return values;
}

}  // namespace store
