#include "runtime/text/FallbackFonts.h"

#include <QChar>
#include <QHash>

#include "runtime/text/FontCatalog.h"
#include "runtime/text/FontResolver.h"

namespace runtime {

namespace {

struct ScriptFamily {
  QChar::Script script;
  const char* family;
};

// Scripts that people write today. The Chinese, Japanese and Korean families come with a package
// of their own and are used where it is installed.
constexpr ScriptFamily scriptFamilies[] = {
    {QChar::Script_Arabic, "Noto Sans Arabic"},
    {QChar::Script_Hebrew, "Noto Sans Hebrew"},
    {QChar::Script_Devanagari, "Noto Sans Devanagari"},
    {QChar::Script_Thai, "Noto Sans Thai"},
    {QChar::Script_Bengali, "Noto Sans Bengali"},
    {QChar::Script_Gurmukhi, "Noto Sans Gurmukhi"},
    {QChar::Script_Gujarati, "Noto Sans Gujarati"},
    {QChar::Script_Oriya, "Noto Sans Oriya"},
    {QChar::Script_Tamil, "Noto Sans Tamil"},
    {QChar::Script_Telugu, "Noto Sans Telugu"},
    {QChar::Script_Kannada, "Noto Sans Kannada"},
    {QChar::Script_Malayalam, "Noto Sans Malayalam"},
    {QChar::Script_Sinhala, "Noto Sans Sinhala"},
    {QChar::Script_Lao, "Noto Sans Lao"},
    {QChar::Script_Tibetan, "Noto Serif Tibetan"},
    {QChar::Script_Myanmar, "Noto Sans Myanmar"},
    {QChar::Script_Khmer, "Noto Sans Khmer"},
    {QChar::Script_Georgian, "Noto Sans Georgian"},
    {QChar::Script_Armenian, "Noto Sans Armenian"},
    {QChar::Script_Ethiopic, "Noto Sans Ethiopic"},
    {QChar::Script_Syriac, "Noto Sans Syriac"},
    {QChar::Script_Thaana, "Noto Sans Thaana"},
    {QChar::Script_Nko, "Noto Sans NKo"},
    {QChar::Script_Cherokee, "Noto Sans Cherokee"},
    {QChar::Script_CanadianAboriginal, "Noto Sans Canadian Aboriginal"},
    {QChar::Script_Mongolian, "Noto Sans Mongolian"},
    {QChar::Script_Javanese, "Noto Sans Javanese"},
    {QChar::Script_Balinese, "Noto Sans Balinese"},
    {QChar::Script_Sundanese, "Noto Sans Sundanese"},
    {QChar::Script_Cham, "Noto Sans Cham"},
    {QChar::Script_TaiTham, "Noto Sans Tai Tham"},
    {QChar::Script_TaiLe, "Noto Sans Tai Le"},
    {QChar::Script_NewTaiLue, "Noto Sans New Tai Lue"},
    {QChar::Script_Lisu, "Noto Sans Lisu"},
    {QChar::Script_Yi, "Noto Sans Yi"},
    {QChar::Script_Tifinagh, "Noto Sans Tifinagh"},
    {QChar::Script_Vai, "Noto Sans Vai"},
    {QChar::Script_OlChiki, "Noto Sans Ol Chiki"},
    {QChar::Script_MeeteiMayek, "Noto Sans Meetei Mayek"},
    {QChar::Script_Adlam, "Noto Sans Adlam"},
    {QChar::Script_Han, "Noto Sans CJK SC"},
    {QChar::Script_Bopomofo, "Noto Sans CJK TC"},
    {QChar::Script_Hiragana, "Noto Sans CJK JP"},
    {QChar::Script_Katakana, "Noto Sans CJK JP"},
    {QChar::Script_Hangul, "Noto Sans CJK KR"},
};

QString scriptFamily(QChar::Script script) {
  for (const ScriptFamily& entry : scriptFamilies)
    if (entry.script == script) return QString::fromLatin1(entry.family);
  return {};
}

/// The family that shows the script where the given one lacks it; empty when that needs no other.
QString familyInsteadOf(const QString& family, QChar::Script script, char32_t character) {
  const QString other = scriptFamily(script);
  const FontCatalog& catalog = FontCatalog::shared();
  const bool helps = !other.isEmpty() && other != family && catalog.hasFamily(other);
  return helps && !catalog.covers(family, character) ? other : QString();
}

/// Scripts for which layout takes only fonts with rules for them. It counts the spaces, digits and
/// signs around a word as its script, so those must come from the same font.
bool isStrict(QChar::Script script) {
  return (script >= QChar::Script_Syriac && script <= QChar::Script_Sinhala) ||
         script == QChar::Script_Khmer || script == QChar::Script_Nko;
}

class Families {
 public:
  void add(const QString& family) {
    if (!m_list.contains(family) && FontCatalog::shared().hasFamily(family)) m_list.append(family);
  }
  void add(QChar::Script script) {
    if (const QString family = scriptFamily(script); !family.isEmpty()) add(family);
  }
  [[nodiscard]] QStringList list() const { return m_list; }

 private:
  QStringList m_list;
};

/// Where symbols, arrows, mathematics and pictographs start among the characters of no script.
constexpr char32_t firstSymbol = 0x2100;

}  // namespace

QStringList fallbackFamilies(const QString& text) {
  Families families;
  families.add(FontResolver::defaultFamily());
  families.add(QStringLiteral("Noto Sans"));
  bool hasSymbols = false;
  bool hasHan = false;
  QChar::Script last = QChar::Script_Latin;
  for (const char32_t c : text.toUcs4()) {
    if (c < 0x300) continue;
    const QChar::Script script = QChar::script(c);
    if (script == QChar::Script_Common) hasSymbols |= c >= firstSymbol;
    if (script == last) continue;
    last = script;
    if (script == QChar::Script_Han)
      hasHan = true;
    else
      families.add(script);
  }
  // Last, so that kana or hangul beside them choose the Japanese or Korean shapes.
  if (hasHan) families.add(QChar::Script_Han);
  if (hasSymbols) {
    for (const char* family : {"Noto Sans Symbols", "Noto Sans Symbols2", "Noto Sans Math"})
      families.add(QString::fromLatin1(family));
    families.add(emojiFamily());
  }
  return families.list();
}

QStringList commonFallbackFamilies() {
  Families families;
  families.add(FontResolver::defaultFamily());
  families.add(QStringLiteral("Noto Sans"));
  for (const QChar::Script script :
       {QChar::Script_Arabic, QChar::Script_Hebrew, QChar::Script_Devanagari, QChar::Script_Thai})
    families.add(script);
  families.add(emojiFamily());
  return families.list();
}

QList<FontSpan> scriptSpans(const QString& text, const QString& family) {
  QList<FontSpan> spans;
  QHash<QChar::Script, QString> choices;  // by the first character of each script
  QChar::Script previous = QChar::Script_Common;
  qsizetype at = 0;
  for (const char32_t c : text.toUcs4()) {
    const qsizetype start = at;
    at += QChar::requiresSurrogates(c) ? 2 : 1;
    const QChar::Script script = QChar::script(c);
    FontSpan* last = spans.isEmpty() ? nullptr : &spans.last();
    const bool touches = last && last->span.start + last->span.length == start;
    if (script == QChar::Script_Inherited || script == QChar::Script_Common) {
      const bool goesAlong = script == QChar::Script_Inherited || isStrict(previous);
      if (touches && goesAlong) last->span.length += at - start;
      continue;
    }
    const bool isFirst = previous == QChar::Script_Common;
    previous = script;
    if (!choices.contains(script)) choices.insert(script, familyInsteadOf(family, script, c));
    const QString& other = choices[script];
    if (other.isEmpty()) continue;
    if (touches && last->family == other)
      last->span.length += at - start;
    else if (isFirst && isStrict(script))
      spans.append({{0, at}, other});
    else
      spans.append({{start, at - start}, other});
  }
  return spans;
}

QString emojiFamily() {
  return QStringLiteral("Noto Color Emoji");
}

}  // namespace runtime
