#include "model/maintenance/Replacement.h"

#include <functional>

#include "model/Composition.h"
#include "model/RichFontValue.h"
#include "store/ObjectContext.h"

namespace model {

namespace {

/// What a value becomes; nothing where it stays.
using Change = std::function<std::optional<AttributeValue>(const AttributeValue&)>;

bool changeValues(Attribute& attribute, const Change& change) {
  bool changed = false;
  for (const double time : attribute.sortedKeyFrames())
    if (const auto value = change(attribute.valueForTimepoint(time))) {
      attribute.setValueForTimepoint(*value, time);
      changed = true;
    }
  return changed;
}

int changeAttributes(const Composition& composition, const Change& change,
                     const std::function<bool(const Attribute&)>& concerns) {
  int count = 0;
  for (const QuartzComponent* component : composition.components())
    for (Attribute* attribute : component->attributes())
      if (concerns(*attribute) && changeValues(*attribute, change)) ++count;
  return count;
}

}  // namespace

int Replacement::replaceFont(const QString& missing, const QString& name) {
  const store::UndoStep step(*m_composition.context(), Composition::tr("Replace Font"));
  const auto change = [&](const AttributeValue& value) -> std::optional<AttributeValue> {
    if (const auto* font = value.as<FontValue>())
      return font->name == missing ? std::optional(AttributeValue(FontValue{name, font->size}))
                                   : std::nullopt;
    const auto* rich = value.as<std::shared_ptr<const RichFontValue>>();
    if (!rich || !*rich || (*rich)->font().name != missing) return {};
    auto replaced = std::make_shared<RichFontValue>(**rich);
    replaced->setFont({name, (*rich)->font().size});
    return AttributeValue(std::shared_ptr<const RichFontValue>(std::move(replaced)));
  };
  return changeAttributes(m_composition, change, [](const Attribute&) { return true; });
}

int Replacement::replaceFile(const QString& missing, const QString& path) {
  const store::UndoStep step(*m_composition.context(), Composition::tr("Replace File"));
  const auto change = [&](const AttributeValue& value) -> std::optional<AttributeValue> {
    return value.toString() == missing ? std::optional(AttributeValue(path)) : std::nullopt;
  };
  int count = changeAttributes(m_composition, change,
                               [](const Attribute& attribute) { return attribute.isFilePath(); });
  if (m_composition.backgroundMovie() == missing) {
    m_composition.setBackgroundMovie(path);
    ++count;
  }
  return count;
}

}  // namespace model
