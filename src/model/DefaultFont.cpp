#include "model/DefaultFont.h"

#include "runtime/text/FontResolver.h"

namespace model {

using foundation::UserDefaults;
using runtime::FontResolver;

namespace {

const QString nameKey = QStringLiteral("defaultFontName");
const QString sizeKey = QStringLiteral("defaultFontSize");
constexpr double smallestSize = 1;
constexpr double sizeForNone = 12;
constexpr double largestSize = 1'000'000;  // what surely fits an integer

}  // namespace

void DefaultFont::registerDefaults(UserDefaults& defaults) {
  defaults.registerDefaults({{nameKey, FontResolver::defaultFamily()}, {sizeKey, registeredSize}});
}

FontValue DefaultFont::defaultFontForElements(const UserDefaults& defaults) {
  FontValue font{defaults.value(nameKey).toString(), defaults.value(sizeKey).toDouble()};
  if (!(font.size >= smallestSize)) font.size = sizeForNone;
  if (font.name.isEmpty() || !FontResolver::contains(font.name))
    font.name = FontResolver::defaultFamily();
  return font;
}

void DefaultFont::setAsDefaultFontForElements(const FontValue& font, UserDefaults& defaults) {
  defaults.setValue(font.name, nameKey);
  const double size = font.size >= 0 ? qMin(font.size, largestSize) : 0;
  defaults.setValue(static_cast<int>(size), sizeKey);
}

}  // namespace model
