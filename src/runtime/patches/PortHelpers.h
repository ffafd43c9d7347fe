#pragma once

#include "runtime/PatchClass.h"

/// Short ways to describe the ports of patch classes. Keys and labels are Latin-1.
namespace runtime::patches {

[[nodiscard]] Port numberPort(const char* key, double defaultValue, const char* label);
[[nodiscard]] Port indexPort(const char* key, quint64 defaultValue, const char* label);
[[nodiscard]] Port booleanPort(const char* key, bool defaultValue, const char* label);
[[nodiscard]] Port stringPort(const char* key, const char* defaultValue, const char* label);
[[nodiscard]] Port colorPort(const char* key, const foundation::Color& defaultValue,
                             const char* label);
/// A port whose type has no default value: image, structure, mesh, interaction, virtual.
[[nodiscard]] Port portOf(PortType type, const char* key, const char* label);
/// An index port with a menu.
[[nodiscard]] Port menuPort(const char* key, quint64 defaultValue, const char* label,
                            std::initializer_list<const char*> titles);
/// An index port with the menu of the easing curves; starts as Linear.
[[nodiscard]] Port curvePort(const char* key, const char* label);
/// Outputs, whose defaults are the zeros of their types.
[[nodiscard]] Port numberOutput(const char* key, const char* label);
[[nodiscard]] Port indexOutput(const char* key, const char* label);
[[nodiscard]] Port booleanOutput(const char* key, const char* label);
[[nodiscard]] Port stringOutput(const char* key, const char* label);

/// A count from a node's state, kept within limits.
[[nodiscard]] int stateCount(const NodeDescription& node, QStringView key, int fallback, int lowest,
                             int highest);

}  // namespace runtime::patches
