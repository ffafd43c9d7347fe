#pragma once

#include <QJSEngine>
#include <QJSValue>

#include "runtime/Value.h"

namespace runtime::script {

/// The value as a script sees it: structures as arrays or objects, nothing as undefined; images,
/// colours and meshes as objects without properties that can only be passed on.
[[nodiscard]] QJSValue toScript(QJSEngine& engine, const Value& value);

/// The value that a script hands back: arrays and objects become structures (objects in the order
/// of their properties), dates and the like texts, undefined and functions nothing. Runs script
/// code where properties have getters. Structures are cut at 100,000 members and 32 levels.
[[nodiscard]] Value fromScript(const QJSValue& value);

}  // namespace runtime::script
