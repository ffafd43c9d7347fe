#include "inspector/panes/RichFontBinding.h"

#include <QCoreApplication>

#include "model/Attribute.h"

namespace inspector {

using foundation::Color;
using model::Attribute;
using model::AttributeValue;
using model::RichFontValue;
using model::TextAttributes;
using RichFont = std::shared_ptr<const RichFontValue>;

namespace {

/// In the order of their titles.
constexpr std::array<qint64, 8> lineStyles{0, 1, 2, 9, 0x101, 0x201, 0x301, 0x401};
/// A shadow that can be seen, to begin with.
const TextAttributes::Shadow firstShadow{QSizeF(2, -2), 3};

AttributeValue colorOr(const std::optional<Color>& color, const TextAttributes& text) {
  return color ? *color : text.foreground.value_or(Color{0, 0, 0, 1});
}

}  // namespace

std::optional<TextAttributes> RichFontBinding::textAttributes(const Attribute& attribute) {
  const AttributeValue value = attribute.currentValue();
  const auto* rich = value.as<RichFont>();
  if (!rich || !*rich) return {};
  return (*rich)->textAttributes();
}

QStringList RichFontBinding::lineTitles() {
  const auto tr = [](const char* text) {
    return QCoreApplication::translate("inspector::RichFontBinding", text);
  };
  return {tr("None"),   tr("Single"), tr("Thick"),    tr("Double"),
          tr("Dotted"), tr("Dashed"), tr("Dash-dot"), tr("Dash-dot-dot")};
}

Binding RichFontBinding::toPart(const QString& stepName, const Get& get, const Set& set) const {
  const QList<Attribute*> attributes = m_attributes;
  return {stepName, attributes.size(),
          [attributes, get](qsizetype i) {
            const auto text = textAttributes(*attributes[i]);
            return text ? get(*text) : AttributeValue();
          },
          [attributes, set](qsizetype i, const AttributeValue& value) {
            const AttributeValue current = attributes[i]->currentValue();
            const auto* rich = current.as<RichFont>();
            if (!rich || !*rich) return;
            auto changed = std::make_shared<RichFontValue>(**rich);
            TextAttributes text = changed->textAttributes();
            set(text, value);
            changed->setTextAttributes(text);
            attributes[i]->setCurrentValue(RichFont(std::move(changed)));
          }};
}

Binding RichFontBinding::color(const QString& stepName) const {
  return toPart(
      stepName, [](const TextAttributes& text) { return colorOr({}, text); },
      [](TextAttributes& text, const AttributeValue& value) {
        if (const auto* color = value.as<Color>()) text.foreground = *color;
      });
}

Binding RichFontBinding::hasShadow(const QString& stepName) const {
  return toPart(
      stepName, [](const TextAttributes& text) { return AttributeValue(text.shadow.has_value()); },
      [](TextAttributes& text, const AttributeValue& value) {
        if (value.toNumber() == 0)
          text.shadow.reset();
        else if (!text.shadow)
          text.shadow = firstShadow;
      });
}

Binding RichFontBinding::shadow(ShadowPart part, const QString& stepName) const {
  return toPart(
      stepName,
      [part](const TextAttributes& text) {
        const TextAttributes::Shadow shadow = text.shadow.value_or(TextAttributes::Shadow{});
        return AttributeValue(part == ShadowPart::X   ? shadow.offset.width()
                              : part == ShadowPart::Y ? shadow.offset.height()
                                                      : shadow.blurRadius);
      },
      [part](TextAttributes& text, const AttributeValue& value) {
        if (!text.shadow) return;
        if (part == ShadowPart::X) text.shadow->offset.setWidth(value.toNumber());
        if (part == ShadowPart::Y) text.shadow->offset.setHeight(value.toNumber());
        if (part == ShadowPart::Blur) text.shadow->blurRadius = value.toNumber();
      });
}

Binding RichFontBinding::line(Line line, const QString& stepName) const {
  return toPart(
      stepName,
      [line](const TextAttributes& text) {
        const qint64 style = text.*line ? (text.*line)->style : 0;
        const auto found = std::find(lineStyles.begin(), lineStyles.end(), style);
        return AttributeValue(static_cast<qint64>(found - lineStyles.begin()));
      },
      [line](TextAttributes& text, const AttributeValue& value) {
        const auto index = static_cast<size_t>(value.toNumber());
        if (index >= lineStyles.size()) return;
        if (index == 0) {
          (text.*line).reset();
          return;
        }
        if (!(text.*line)) text.*line = TextAttributes::Line{};
        (text.*line)->style = lineStyles[index];
      });
}

Binding RichFontBinding::lineColor(Line line, const QString& stepName) const {
  return toPart(
      stepName,
      [line](const TextAttributes& text) {
        return colorOr(text.*line ? (text.*line)->color : std::nullopt, text);
      },
      [line](TextAttributes& text, const AttributeValue& value) {
        if (const auto* color = value.as<Color>(); color && text.*line)
          (text.*line)->color = *color;
      });
}

}  // namespace inspector
