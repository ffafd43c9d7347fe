#include "cli/edit/ComponentSettings.h"

#include "cli/edit/ComponentTarget.h"
#include "cli/edit/TimeText.h"
#include "runtime/text/FontResolver.h"

namespace cli {

using model::Attribute;
using Done = ComponentSettings::Done;

namespace {

Done animated(const QString& key) {
  return misused(
      QStringLiteral("'%1' is animated: give it key frames with the command key, or none any more "
                     "with --off")
          .arg(key));
}

}  // namespace

QString ComponentSettings::help() {
  return QStringLiteral(
      "  title=TEXT            begins the names of the published keys\n"
      "  x=, y=                lower left corner, in pixels from the lower left of the picture\n"
      "  width=, height=       size in pixels\n"
      "  rotation=             degrees, counter-clockwise\n"
      "  opacity=              0 to 1\n"
      "  margins=X,Y           what the drawing overlaps its box by\n"
      "  start=, end=          when it shows: seconds, or a time code with frames at its end\n"
      "  visible=no            switched off until playout switches it on\n"
      "  proportions=yes       keeps width and height in proportion\n"
      "  fields=KEY,KEY        what playout may fill in, instead of what it may now; +KEY and "
      "-KEY\n"
      "                        add and take away\n"
      "  input:KEY=VALUE       an input that is named like one of these");
}

Done ComponentSettings::apply(const Assignment& assignment) {
  Done done;
  if (applyOwn(assignment, done)) return done;
  return input(assignment);
}

bool ComponentSettings::applyOwn(const Assignment& assignment, Done& done) {
  const QString& key = assignment.key;
  for (const ComponentTarget::Place& known : ComponentTarget::places())
    if (key == QLatin1String(known.name)) {
      done = place(known.key, assignment);
      return true;
    }
  if (key == QLatin1String("title"))
    m_component.setTitle(assignment.value);
  else if (key == QLatin1String("margins"))
    done = margins(assignment);
  else if (key == QLatin1String("start") || key == QLatin1String("end"))
    done = time(assignment);
  else if (key == QLatin1String("visible") || key == QLatin1String("proportions"))
    done = flag(assignment);
  else if (key == QLatin1String("fields"))
    done = fields(assignment.value);
  else
    return false;
  return true;
}

Done ComponentSettings::place(const char* key, const Assignment& assignment) {
  Attribute* attribute = m_component.attributeForKey(QLatin1String(key));
  if (!attribute) return misused(QStringLiteral("there is no '%1' here").arg(assignment.key));
  if (attribute->animateable()) return animated(assignment.key);
  const auto number = AttributeText::number(assignment.key, assignment.value);
  if (!number) return tl::unexpected(number.error());
  const bool isSize =
      assignment.key == QLatin1String("width") || assignment.key == QLatin1String("height");
  if (isSize && *number < 0)
    return misused(QStringLiteral("'%1' must not be negative").arg(assignment.key));
  if (assignment.key == QLatin1String("opacity") && (*number < 0 || *number > 1))
    return misused(QStringLiteral("'opacity' must lie between 0 and 1"));
  if (assignment.key == QLatin1String("width"))
    m_component.setWidth(*number);
  else if (assignment.key == QLatin1String("height"))
    m_component.setHeight(*number);
  else
    attribute->setCurrentValue(model::roundedTimepoint(*number));  // single precision, as ever
  return {};
}

Done ComponentSettings::margins(const Assignment& assignment) {
  const QStringList pair = assignment.value.split(u',');
  if (pair.size() != 2) return misused(QStringLiteral("'margins' takes two numbers, X,Y"));
  const auto x = AttributeText::number(assignment.key, pair[0]);
  const auto y = AttributeText::number(assignment.key, pair[1]);
  if (!x || !y) return tl::unexpected(x ? y.error() : x.error());
  m_component.setMarginX(*x);
  m_component.setMarginY(*y);
  return {};
}

Done ComponentSettings::time(const Assignment& assignment) {
  const auto time = secondsFromText(assignment.value, *m_component.composition());
  if (!time)
    return misused(QStringLiteral("'%1' takes a time in seconds or a time code, not '%2'")
                       .arg(assignment.key, assignment.value));
  if (assignment.key == QLatin1String("start"))
    m_component.setStartTime(*time);
  else
    m_component.setEndTime(*time);
  return {};
}

Done ComponentSettings::flag(const Assignment& assignment) {
  const auto flag = AttributeText::flag(assignment.key, assignment.value);
  if (!flag) return tl::unexpected(flag.error());
  if (assignment.key == QLatin1String("visible"))
    m_component.setVisibleInCompositionEditor(*flag);
  else
    m_component.setConstrainProportions(*flag);
  return {};
}

Done ComponentSettings::fields(const QString& list) {
  const QStringList names = list.split(u',', Qt::SkipEmptyParts);
  const bool changes = !names.isEmpty() && std::all_of(names.begin(), names.end(), [](auto& name) {
    return name.startsWith(u'+') || name.startsWith(u'-');
  });
  if (!changes)
    for (Attribute* attribute : m_component.attributes().list())
      attribute->setPermissionToChange(false);
  for (const QString& name : names) {
    const auto attribute = ComponentTarget::attribute(m_component, changes ? name.mid(1) : name);
    if (!attribute) return tl::unexpected(attribute.error());
    if ((*attribute)->animateable())
      return misused(QStringLiteral("'%1' is animated and cannot be filled in").arg(name));
    (*attribute)->setPermissionToChange(!changes || name.startsWith(u'+'));
  }
  return {};
}

Done ComponentSettings::input(const Assignment& assignment) {
  if (Attribute* font = ComponentTarget::richFont(m_component, assignment.key);
      font && font->key() != assignment.key) {
    auto value = m_text.richFontValue(*font, assignment.key, assignment.value);
    if (!value) return tl::unexpected(value.error());
    font->setCurrentValue(std::move(*value));
    return {};
  }
  const auto found = ComponentTarget::attribute(m_component, assignment.key);
  if (!found) return tl::unexpected(found.error());
  Attribute& attribute = **found;
  for (const ComponentTarget::Place& known : ComponentTarget::places())
    if (attribute.key() == QLatin1String(known.key))
      return place(known.key, {QLatin1String(known.name), assignment.value});
  if (attribute.animateable()) return animated(assignment.key);
  auto value = m_text.value(attribute, assignment.value);
  if (!value) return tl::unexpected(value.error());
  if (const auto* font = value->as<model::FontValue>();
      font && !runtime::FontResolver::contains(font->name))
    m_notes.append(QStringLiteral("%1: there is no font '%2' on this machine")
                       .arg(m_component.title(), font->name));
  attribute.setCurrentValue(std::move(*value));
  return {};
}

Done ComponentSettings::check() const {
  if (m_component.duration() >= 0) return {};
  return misused(QStringLiteral("'%1' would end before it starts").arg(m_component.title()));
}

}  // namespace cli
