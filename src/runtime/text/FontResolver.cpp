#include "runtime/text/FontResolver.h"

#include <QHash>
#include <QMutex>
#include <array>

#include "runtime/text/FallbackFonts.h"
#include "runtime/text/FontCatalog.h"

namespace runtime {

namespace {

struct WeightWord {
  QLatin1String word;
  int weight;
};

// Longer words first: "ExtraLight" also ends in "Light".
const std::array<WeightWord, 18> weightWords = {{{QLatin1String("extralight"), 200},
                                                 {QLatin1String("ultralight"), 200},
                                                 {QLatin1String("extrabold"), 800},
                                                 {QLatin1String("ultrabold"), 800},
                                                 {QLatin1String("semibold"), 600},
                                                 {QLatin1String("demibold"), 600},
                                                 {QLatin1String("hairline"), 100},
                                                 {QLatin1String("semilight"), 350},
                                                 {QLatin1String("regular"), 400},
                                                 {QLatin1String("medium"), 500},
                                                 {QLatin1String("black"), 900},
                                                 {QLatin1String("heavy"), 800},
                                                 {QLatin1String("light"), 300},
                                                 {QLatin1String("thin"), 100},
                                                 {QLatin1String("bold"), 700},
                                                 {QLatin1String("demi"), 600},
                                                 {QLatin1String("book"), 400},
                                                 {QLatin1String("roman"), 400}}};

/// The part of a name that tells the style: after the first hyphen or space.
QString styleHints(const QString& name) {
  qsizetype start = name.indexOf(QLatin1Char('-'));
  if (start < 0) start = name.indexOf(QLatin1Char(' '));
  if (start < 0) return {};
  return name.mid(start + 1).remove(QLatin1Char(' ')).remove(QLatin1Char('-')).toLower();
}

FontMatch standIn(const QString& name) {
  FontMatch match;
  match.family = FontResolver::defaultFamily();
  const QString hints = styleHints(name);
  for (const WeightWord& entry : weightWords) {
    if (!hints.contains(entry.word)) continue;
    match.weight = entry.weight;
    break;
  }
  match.italic =
      hints.contains(QLatin1String("italic")) || hints.contains(QLatin1String("oblique"));
  return match;
}

/// Names that the old platform wrote without anybody having chosen them.
bool isPlatformDefault(const QString& name) {
  const QString family = name.section(QLatin1Char('-'), 0, 0).remove(QLatin1Char(' '));
  return family.isEmpty() || family == QLatin1String("LucidaGrande") ||
         family == QLatin1String("Helvetica") || family == QLatin1String("HelveticaNeue") ||
         family == QLatin1String("SystemFont") || name.startsWith(QLatin1Char('.'));
}

FontMatch lookUp(const QString& name) {
  if (const FontFace* face = name.isEmpty() ? nullptr : FontCatalog::shared().find(name))
    return {face->family, face->style, face->weight, face->stretch, face->italic, false};
  FontMatch match = standIn(name);
  match.isStandIn = !isPlatformDefault(name);
  return match;
}

QFont fontOf(const FontMatch& match, int pixelSize, const QStringList& fallbacks) {
  QStringList families{match.family};
  for (const QString& family : fallbacks)
    if (!families.contains(family)) families.append(family);
  QFont font(families);
  font.setPixelSize(qMax(pixelSize, 1));
  font.setWeight(static_cast<QFont::Weight>(qBound(1, match.weight, 1000)));
  font.setItalic(match.italic);
  if (match.stretch != 100) font.setStretch(match.stretch);
  if (!match.style.isEmpty()) font.setStyleName(match.style);
  font.setHintingPreference(QFont::PreferNoHinting);
  font.setStyleStrategy(
      static_cast<QFont::StyleStrategy>(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
  return font;
}

}  // namespace

FontMatch FontResolver::resolve(const QString& name) {
  static QMutex mutex;
  static QHash<QString, FontMatch> known;
  const QMutexLocker lock(&mutex);
  if (const auto found = known.constFind(name); found != known.cend()) return *found;
  if (known.size() > 1000) known.clear();  // names may come from a text that changes
  return *known.insert(name, lookUp(name));
}

QString FontResolver::nameOf(const QFont& font) {
  const QString style = font.styleName();
  const bool isPlain = style.isEmpty() || style == QLatin1String("Regular");
  return isPlain ? font.family() : font.family() + u' ' + style;
}

bool FontResolver::contains(const QString& name) {
  return !resolve(name).isStandIn;
}

QFont FontResolver::font(const QString& name, int pixelSize) {
  return fontOf(resolve(name), pixelSize, commonFallbackFamilies());
}

QFont FontResolver::fontForText(const QString& name, int pixelSize, const QString& text) {
  return fontOf(resolve(name), pixelSize, fallbackFamilies(text));
}

QFont FontResolver::withFamilyFirst(const QFont& font, const QString& family) {
  QFont changed = font;
  QStringList families = font.families();
  families.removeAll(family);
  families.prepend(family);
  changed.setFamilies(families);
  changed.setStyleName({});  // styles are called otherwise there; the weight is the same
  return changed;
}

}  // namespace runtime
