#pragma once

#include "model/AttributeValue.h"

namespace inspector {

/// The font in a value of either kind; no name when there is none.
[[nodiscard]] model::FontValue fontOf(const model::AttributeValue& value);
/// The same value with another font; what has none stays as it is.
[[nodiscard]] model::AttributeValue withFont(const model::AttributeValue& value,
                                             const model::FontValue& font);
/// As fields show it: "Inter-Bold, 66".
[[nodiscard]] QString fontText(const model::FontValue& font);

}  // namespace inspector
