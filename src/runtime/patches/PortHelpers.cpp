#include "runtime/patches/PortHelpers.h"

#include "runtime/patches/Easing.h"

namespace runtime::patches {

namespace {
Port port(const char* key, PortType type, Value defaultValue, const char* label) {
  return {QString::fromLatin1(key), type, std::move(defaultValue), QString::fromLatin1(label)};
}
}  // namespace

Port numberPort(const char* key, double defaultValue, const char* label) {
  return port(key, PortType::Number, defaultValue, label);
}

Port indexPort(const char* key, quint64 defaultValue, const char* label) {
  return port(key, PortType::Index, Value::index(defaultValue), label);
}

Port booleanPort(const char* key, bool defaultValue, const char* label) {
  return port(key, PortType::Boolean, defaultValue, label);
}

Port stringPort(const char* key, const char* defaultValue, const char* label) {
  return port(key, PortType::String, QString::fromLatin1(defaultValue), label);
}

Port colorPort(const char* key, const foundation::Color& defaultValue, const char* label) {
  return port(key, PortType::Color, defaultValue, label);
}

Port portOf(PortType type, const char* key, const char* label) {
  return port(key, type, {}, label);
}

Port menuPort(const char* key, quint64 defaultValue, const char* label,
              std::initializer_list<const char*> titles) {
  QStringList menu;
  for (const char* title : titles) menu.append(QString::fromLatin1(title));
  return indexPort(key, defaultValue, label).titles(std::move(menu));
}

Port curvePort(const char* key, const char* label) {
  return indexPort(key, 0, label).titles(easingTitles());
}

Port numberOutput(const char* key, const char* label) {
  return portOf(PortType::Number, key, label);
}

Port indexOutput(const char* key, const char* label) {
  return portOf(PortType::Index, key, label);
}

Port booleanOutput(const char* key, const char* label) {
  return portOf(PortType::Boolean, key, label);
}

Port stringOutput(const char* key, const char* label) {
  return portOf(PortType::String, key, label);
}

int stateCount(const NodeDescription& node, QStringView key, int fallback, int lowest,
               int highest) {
  const qint64 count = node.state.value(key).toInteger(fallback);
  return static_cast<int>(std::clamp<qint64>(count, lowest, highest));
}

}  // namespace runtime::patches
