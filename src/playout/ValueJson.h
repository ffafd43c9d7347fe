#pragma once

#include <QJsonValue>

#include "runtime/Value.h"

namespace playout {

/// Values of the runtime as a values file holds them.
class ValueJson {
 public:
  /// For a port of the type. Undefined for what has no such form: nothing at all, images, meshes,
  /// numbers that are not finite.
  [[nodiscard]] static QJsonValue of(const runtime::Value& value, runtime::PortType type);
  /// "#RRGGBBAA".
  [[nodiscard]] static QString colorText(const foundation::Color& color);
};

}  // namespace playout
