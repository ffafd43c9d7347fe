#include "runtime/check/Checks.h"

namespace runtime::check {

using foundation::Findings;
using foundation::PropertyDictionary;
using foundation::PropertyValue;

namespace {

bool isColor(const PropertyValue& value) {
  if (!value.isDictionary()) return false;
  for (const QStringView part : {u"red", u"green", u"blue"})
    if (!value.dictionary().value(part).isNumeric()) return false;
  return true;
}

/// Booleans, integers and reals stand for one another in files.
bool fits(const PropertyValue& value, PortType type) {
  switch (type) {
    case PortType::Number:
    case PortType::Index:
    case PortType::Boolean:
      return value.isNumeric();
    case PortType::String:  // a number is read as its digits; exported multiplexers rely on it
      return value.isString() || value.isNumeric();
    case PortType::Color:
      return isColor(value);
    case PortType::Image:
      return value.isData();
    case PortType::Structure:
      return value.isArray() || value.isDictionary();
    default:
      return true;
  }
}

QString valueWord(const PropertyValue& value) {
  switch (value.type()) {
    case PropertyValue::Type::Boolean:
    case PropertyValue::Type::Integer:
    case PropertyValue::Type::Real:
      return QStringLiteral("a number");
    case PropertyValue::Type::String:
      return QStringLiteral("a text");
    case PropertyValue::Type::Data:
      return QStringLiteral("data");
    case PropertyValue::Type::Date:
      return QStringLiteral("a date");
    case PropertyValue::Type::Array:
      return QStringLiteral("a list");
    case PropertyValue::Type::Dictionary:
      return QStringLiteral("a dictionary");
    default:
      return QStringLiteral("something else");
  }
}

void checkValue(const PropertyValue& value, const Port& port, const QString& object,
                Findings& findings) {
  if (value.isNull() || fits(value, port.type)) return;
  findings.append({QStringLiteral("port-value-type"), object,
                   QStringLiteral("the input %1 takes %2 and holds %3")
                       .arg(port.key, portTypeWord(port.type), valueWord(value))});
}

}  // namespace

void checkPortValues(const PatchOutline& macro, Findings& findings) {
  const QSet<QString> connected = macro.connectedInputs();
  for (const auto& node : macro.nodes) {
    const PropertyDictionary& state = node->patch.state();
    // The same value may stand in two groups, for older readers.
    QSet<QString> seen;
    for (const QStringView group :
         {u"ivarInputPortStates", u"customInputPortStates", u"systemInputPortStates"})
      for (const auto& [key, entry] : state.value(group).dictionary()) {
        const auto port = node->inputs.constFind(key);
        if (port == node->inputs.constEnd() || seen.contains(key) ||
            connected.contains(node->patch.key() + QLatin1Char('.') + key))
          continue;
        seen.insert(key);
        checkValue(entry.dictionary().value(u"value"), *port, node->path, findings);
      }
    for (const PropertyValue& entry : state.value(u"publishedInputPorts").array()) {
      const PropertyDictionary& d = entry.dictionary();
      const QString key = d.value(u"key").toString();
      const auto port = node->inputs.constFind(key);
      if (port != node->inputs.constEnd() &&
          !connected.contains(node->patch.key() + QLatin1Char('.') + key))
        checkValue(d.value(u"state").dictionary().value(u"value"), *port, node->path, findings);
    }
  }
}

void checkInputParameters(const PatchOutline& root, const PropertyDictionary& parameters,
                          Findings& findings) {
  for (const auto& [key, value] : parameters)
    if (const auto port = root.inputs.constFind(key); port != root.inputs.constEnd())
      checkValue(value, *port, root.path, findings);
}

}  // namespace runtime::check
