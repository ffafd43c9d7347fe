#pragma once

#include <QString>

namespace components {

/// The dictionary of a node's state in which files keep the value of an input port: built-in,
/// created by the state of the node, or a system port.
[[nodiscard]] QString stateOfPort(const QString& className, const QString& port);

}  // namespace components
