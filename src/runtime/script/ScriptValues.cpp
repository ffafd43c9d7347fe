#include "runtime/script/ScriptValues.h"

#include <QJSValueIterator>
#include <QVariant>

#include "runtime/StructureMember.h"

namespace runtime::script {

namespace {

constexpr int deepest = 32;
constexpr int mostMembers = 100'000;

/// A value that scripts cannot look into.
struct Opaque {
  Value value;
};

}  // namespace
}  // namespace runtime::script

Q_DECLARE_METATYPE(runtime::script::Opaque)

namespace runtime::script {

namespace {

QJSValue structureToScript(QJSEngine& engine, const Structure& structure, int depth);

QJSValue toScript(QJSEngine& engine, const Value& value, int depth) {
  switch (value.type()) {
    case PortType::Number:
    case PortType::Index:
      return value.toNumber();
    case PortType::Boolean:
      return value.toBoolean();
    case PortType::String:
      return value.toString();
    case PortType::Structure:
      return depth < deepest ? structureToScript(engine, value.toStructure(), depth + 1)
                             : QJSValue();
    case PortType::Virtual:
      return {};
    default:
      return engine.toScriptValue(QVariant::fromValue(Opaque{value}));
  }
}

QJSValue structureToScript(QJSEngine& engine, const Structure& structure, int depth) {
  const bool keyed = structure.isKeyed();
  QJSValue object =
      keyed ? engine.newObject() : engine.newArray(static_cast<uint>(structure.size()));
  quint32 index = 0;
  for (const StructureMember& member : structure.members()) {
    const QJSValue value = toScript(engine, member.value, depth);
    if (keyed)
      object.setProperty(member.key, value);
    else
      object.setProperty(index++, value);
  }
  return object;
}

Value fromScript(const QJSValue& value, int depth, int& left);

Structure arrayFromScript(const QJSValue& array, int depth, int& left) {
  const double length = array.property(QStringLiteral("length")).toNumber();
  const auto count = static_cast<quint32>(std::clamp(length, 0.0, double(std::max(left, 0))));
  std::vector<Value> members;
  members.reserve(std::min<quint32>(count, 4096));
  for (quint32 i = 0; i < count && left-- > 0; ++i)
    members.push_back(fromScript(array.property(i), depth, left));
  return Structure::fromValues(std::move(members));
}

Structure objectFromScript(const QJSValue& object, int depth, int& left) {
  Structure::Members members;
  QJSValueIterator property(object);
  while (property.next() && left-- > 0) {
    const QJSValue value = property.value();
    // An empty key would make the whole look like an array.
    if (!value.isCallable() && !property.name().isEmpty())
      members.push_back({property.name(), fromScript(value, depth, left)});
  }
  return Structure(std::move(members));
}

Value fromScript(const QJSValue& value, int depth, int& left) {
  if (value.isBool()) return value.toBool();
  if (value.isNumber()) return value.toNumber();
  if (value.isString() || value.isDate() || value.isRegExp()) return value.toString();
  if (!value.isObject() || value.isCallable() || depth >= deepest) return {};
  if (value.isVariant()) {
    const QVariant held = value.toVariant();
    return held.canConvert<Opaque>() ? held.value<Opaque>().value : Value();
  }
  return value.isArray() ? arrayFromScript(value, depth + 1, left)
                         : objectFromScript(value, depth + 1, left);
}

}  // namespace

QJSValue toScript(QJSEngine& engine, const Value& value) {
  return toScript(engine, value, 0);
}

Value fromScript(const QJSValue& value) {
  int left = mostMembers;
  return fromScript(value, 0, left);
}

}  // namespace runtime::script
