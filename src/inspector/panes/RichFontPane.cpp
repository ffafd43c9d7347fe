#include "inspector/panes/RichFontPane.h"

#include "inspector/InspectorContext.h"
#include "inspector/panes/RichFontBinding.h"
#include "inspector/rows/CheckRow.h"
#include "inspector/rows/ChoiceRow.h"
#include "inspector/rows/ColorRow.h"
#include "inspector/rows/FontRow.h"
#include "inspector/rows/NumberRow.h"

namespace inspector {

using model::TextAttributes;
using ShadowPart = RichFontBinding::ShadowPart;

QList<InspectorRow*> RichFontPane::Group::rows() const {
  return {font,           color,         shadow,
          offset,         blur,          underline,
          underlineColor, strikethrough, strikethroughColor};
}

RichFontPane::RichFontPane(InspectorContext& context) : InspectorPane(context, tr("Rich Font")) {
  hide();
}

void RichFontPane::addGroup() {
  const QStringList lines = RichFontBinding::lineTitles();
  const NumberFormat x{.prefix = QStringLiteral("X"), .name = tr("Shadow X")};
  const NumberFormat y{.prefix = QStringLiteral("Y"), .name = tr("Shadow Y")};
  m_groups.push_back(
      {.font = add(new FontRow(context(), tr("Font"))),
       .color = add(new ColorRow(context(), tr("Color"))),
       .shadow = add(new CheckRow(context(), tr("Shadow"), tr("Casts a shadow"))),
       .offset = add(new NumberRow(context(), tr("Offset"), {x, y})),
       .blur = add(new NumberRow(context(), tr("Blur"), {NumberFormat{.minimum = 0}})),
       .underline = add(new ChoiceRow(context(), tr("Underline"), lines)),
       .underlineColor = add(new ColorRow(context(), tr("Its color"))),
       .strikethrough = add(new ChoiceRow(context(), tr("Strikethrough"), lines)),
       .strikethroughColor = add(new ColorRow(context(), tr("Its color")))});
}

void RichFontPane::bindGroup(const Group& group, const ShownAttribute& shown,
                             const QString& prefix) {
  const QString change = tr("Change %1").arg(prefix);
  const RichFontBinding rich(shown.attributes);
  group.font->bind(Binding::toAttributes(shown.attributes, change));
  group.font->setAttributes(shown.attributes);
  group.color->bind(rich.color(change));
  group.shadow->bind(rich.hasShadow(change));
  group.offset->bind({rich.shadow(ShadowPart::X, change), rich.shadow(ShadowPart::Y, change)});
  group.blur->bind({rich.shadow(ShadowPart::Blur, change)});
  group.underline->bind(rich.line(&TextAttributes::underline, change));
  group.underlineColor->bind(rich.lineColor(&TextAttributes::underline, change));
  group.strikethrough->bind(rich.line(&TextAttributes::strikethrough, change));
  group.strikethroughColor->bind(rich.lineColor(&TextAttributes::strikethrough, change));
}

void RichFontPane::takeSelection() {
  m_shown = attributesOfType(context().attributesByKey(), model::AttributeType::RichFont);
  const auto count = static_cast<size_t>(m_shown.size());
  while (m_groups.size() < count) addGroup();
  for (size_t i = 0; i < m_groups.size(); ++i) {
    const bool used = i < count;
    if (used) {
      const ShownAttribute& shown = m_shown[static_cast<qsizetype>(i)];
      bindGroup(m_groups[i], shown, shown.rowLabel());
      // Several are told apart by the part of the key before the common ending.
      QString name = QString(shown.first().key()).remove(QStringLiteral("Rich_Font_Name"));
      name.replace(u'_', u' ');
      m_groups[i].font->setLabel(count > 1 && !name.trimmed().isEmpty() ? name.trimmed()
                                                                        : tr("Font"));
    }
    for (InspectorRow* row : m_groups[i].rows()) {
      row->setVisible(used);
      if (!used) row->bind(QList<Binding>());
    }
  }
  setVisible(count > 0);
}

void RichFontPane::letGo() {
  m_shown.clear();
  InspectorPane::letGo();
}

void RichFontPane::refresh() {
  for (size_t i = 0; i < static_cast<size_t>(m_shown.size()) && i < m_groups.size(); ++i)
    showParts(m_groups[i], m_shown[static_cast<qsizetype>(i)]);
  InspectorPane::refresh();
}

void RichFontPane::showParts(const Group& group, const ShownAttribute& shown) {
  bool shadow = false;
  bool underline = false;
  bool strikethrough = false;
  for (const model::Attribute* attribute : shown.attributes) {
    const auto text = RichFontBinding::textAttributes(*attribute);
    if (!text) continue;
    shadow = shadow || text->shadow;
    underline = underline || (text->underline && text->underline->style != 0);
    strikethrough = strikethrough || (text->strikethrough && text->strikethrough->style != 0);
  }
  group.offset->setVisible(shadow);
  group.blur->setVisible(shadow);
  group.underlineColor->setVisible(underline);
  group.strikethroughColor->setVisible(strikethrough);
}

}  // namespace inspector
