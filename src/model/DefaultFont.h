#pragma once

#include "foundation/UserDefaults.h"
#include "model/AttributeValue.h"

namespace model {

/// The font of new texts, kept in the user's settings.
class DefaultFont {
 public:
  static constexpr int registeredSize = 30;

  /// Adds the system font to the registered defaults.
  static void registerDefaults(foundation::UserDefaults& defaults);
  /// The stored font; a size below 1 becomes 12 points, a font that is not here the system font.
  [[nodiscard]] static FontValue defaultFontForElements(const foundation::UserDefaults& defaults);
  /// The fraction of the size is dropped.
  static void setAsDefaultFontForElements(const FontValue& font,
                                          foundation::UserDefaults& defaults);
};

}  // namespace model
