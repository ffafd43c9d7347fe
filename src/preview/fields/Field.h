#pragma once

#include <QJsonValue>

#include "runtime/CompositionRenderer.h"

namespace preview {

/// A value as it is kept and as the running file takes it.
struct FieldValue {
  QJsonValue json;  ///< of pictures the path of their file
  runtime::Value value;
  friend bool operator==(const FieldValue& a, const FieldValue& b) { return a.value == b.value; }
};

/// A published input that an operator fills in.
struct Field {
  runtime::PortAttributes port;
  std::optional<FieldValue> value = {};  ///< as filled in; none: the file's default
  std::optional<FieldValue> sent = {};   ///< the same, as the running file has it

  [[nodiscard]] bool isPending() const { return value != sent; }
  [[nodiscard]] const runtime::Value& current() const {
    return value ? value->value : port.defaultValue;
  }
};

}  // namespace preview
