#pragma once

#include "model/KeyFrames.h"
#include "store/ValueCodec.h"

namespace store {

/// Booleans, integers, reals and texts as themselves; other values as a dictionary whose only key
/// names the type: "color", "image" (PNG bytes), "font" with "name" and "size", "richFont" with
/// "keyPattern" and "attributes"; "missing" for a missing value.
template <>
struct CodecOf<model::AttributeValue> {
  [[nodiscard]] static foundation::PropertyValue encode(const model::AttributeValue& value);
  [[nodiscard]] static model::AttributeValue decode(const foundation::PropertyValue& stored);
};

/// A dictionary from timepoints, written as the shortest decimal that is the same in single
/// precision, to values.
template <>
struct CodecOf<model::KeyFrames> {
  [[nodiscard]] static foundation::PropertyValue encode(const model::KeyFrames& value);
  [[nodiscard]] static model::KeyFrames decode(const foundation::PropertyValue& stored);
};

}  // namespace store
