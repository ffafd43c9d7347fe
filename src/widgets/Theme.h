#pragma once

#include <QColor>
#include <QPalette>
#include <QString>

#include "widgets/ThemeTokens.h"

namespace widgets {

/// Which colours the interface uses.
struct Theme {
  bool dark = true;
  bool highContrast = false;

  [[nodiscard]] QColor colour(Token token) const;
  /// What widgets that know no tokens take.
  [[nodiscard]] QPalette palette() const;
  /// The token's name as designers write it: "text2".
  [[nodiscard]] static QString name(Token token);

  friend bool operator==(const Theme&, const Theme&) = default;
};

}  // namespace widgets
