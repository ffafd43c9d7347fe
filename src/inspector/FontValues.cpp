#include "inspector/FontValues.h"

#include <QLocale>

#include "model/RichFontValue.h"

namespace inspector {

using model::AttributeValue;
using model::FontValue;
using model::RichFontValue;
using RichFont = std::shared_ptr<const RichFontValue>;

FontValue fontOf(const AttributeValue& value) {
  if (const auto* font = value.as<FontValue>()) return *font;
  if (const auto* rich = value.as<RichFont>(); rich && *rich) return (*rich)->font();
  return {};
}

AttributeValue withFont(const AttributeValue& value, const FontValue& font) {
  if (value.as<FontValue>()) return font;
  const auto* rich = value.as<RichFont>();
  if (!rich || !*rich) return value;
  auto changed = std::make_shared<RichFontValue>(**rich);
  changed->setFont(font);
  return RichFont(std::move(changed));
}

QString fontText(const FontValue& font) {
  if (font.name.isEmpty()) return {};
  return QStringLiteral("%1, %2").arg(font.name, QLocale().toString(font.size));
}

}  // namespace inspector
