#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <QRawFont>

#include "runtime/text/FallbackFonts.h"
#include "runtime/text/FontCatalog.h"
#include "runtime/text/FontResolver.h"

using runtime::FontMatch;
using runtime::FontResolver;

namespace {

/// Family and style of the face that is really drawn with.
QString faceOf(const QString& name) {
  const QRawFont raw = QRawFont::fromFont(FontResolver::font(name, 64));
  return raw.familyName() + QLatin1Char('/') + raw.styleName();
}

}  // namespace

TEST(TextFont, PostScriptNamesSelectTheirFaces) {
  const QList<std::pair<const char*, const char*>> faces = {
      {"Inter-Regular", "Inter/Regular"},
      {"Inter-Medium", "Inter/Medium"},
      {"Inter-SemiBold", "Inter/Semi Bold"},
      {"Inter-BlackItalic", "Inter/Black Italic"},
      {"InterDisplay-Bold", "Inter Display/Bold"},
      {"InterDisplay-ExtraLight", "Inter Display/Extra Light"},
      {"InterDisplay-Thin", "Inter Display/Thin"},
      {"NotoSansArabic-Bold", "Noto Sans Arabic/Bold"},
      {"NotoSans-Italic", "Noto Sans/Italic"},
      // Full names, family and style, a family alone.
      {"Inter Semi Bold", "Inter/Semi Bold"},
      {"inter display bold italic", "Inter Display/Bold Italic"},
      {"Noto Sans Arabic", "Noto Sans Arabic/Regular"}};
  for (const auto& [name, face] : faces)
    EXPECT_EQ(faceOf(QString::fromLatin1(name)).toStdString(), face) << name;
}

TEST(TextFont, EveryWeightHasItsOwnWidth) {
  double last = 0;
  for (const char* weight : {"Thin", "ExtraLight", "Light", "Regular", "Medium", "SemiBold", "Bold",
                             "ExtraBold", "Black"}) {
    const QString name = QStringLiteral("InterDisplay-") + QString::fromLatin1(weight);
    const double width = QFontMetricsF(FontResolver::font(name, 200))
                             .horizontalAdvance(QStringLiteral("Harbour Master"));
    EXPECT_GT(width, last + 5) << weight;
    last = width;
  }
}

TEST(TextFont, InterStandsInKeepingWeightAndSlant) {
  const QList<std::pair<const char*, const char*>> faces = {
      {"Frobnicate", "Inter/Regular"},
      {"Frobnicate-Bold", "Inter/Bold"},
      {"Frobnicate-BoldItalicMT", "Inter/Bold Italic"},
      {"Frobnicate-Semibold", "Inter/Semi Bold"},
      {"Frobnicate-DemiOblique", "Inter/Semi Bold Italic"},
      {"Frobnicate-UltraLight", "Inter/Extra Light"},
      {"Frobnicate Neue Black", "Inter/Black"},
      {"Frobnicate-CondensedMedium", "Inter/Medium"},
      {"Blackboard", "Inter/Regular"}};
  for (const auto& [name, face] : faces) {
    EXPECT_EQ(faceOf(QString::fromLatin1(name)).toStdString(), face) << name;
    EXPECT_FALSE(FontResolver::contains(QString::fromLatin1(name))) << name;
  }
}

TEST(TextFont, DefaultsOfThePlatformAreReplacedQuietly) {
  for (const char* name : {"", "LucidaGrande", "LucidaGrande-Bold", "Helvetica", "HelveticaNeue"}) {
    EXPECT_TRUE(FontResolver::contains(QString::fromLatin1(name))) << name;
  }
  EXPECT_EQ(FontResolver::resolve(QStringLiteral("Helvetica-BoldOblique")).weight, 700);
  EXPECT_TRUE(FontResolver::resolve(QStringLiteral("Helvetica-BoldOblique")).italic);
  EXPECT_FALSE(FontResolver::contains(QStringLiteral("HelveticaWorld-Bold")));
}

TEST(TextFont, FallbacksFollowTheText) {
  using runtime::fallbackFamilies;
  const QStringList latin{QStringLiteral("Inter"), QStringLiteral("Noto Sans")};
  EXPECT_EQ(fallbackFamilies(QStringLiteral("Zürich 12 €")), latin);
  EXPECT_EQ(fallbackFamilies(QStringLiteral("نص שלום")),
            latin + QStringList(
                        {QStringLiteral("Noto Sans Arabic"), QStringLiteral("Noto Sans Hebrew")}));
  EXPECT_EQ(fallbackFamilies(QStringLiteral("→")).last(), QStringLiteral("Noto Color Emoji"));
}

TEST(TextFont, ScriptsThatAFontLacksAreSpansOfOneThatHasThem) {
  using runtime::scriptSpans;
  const QString inter = QStringLiteral("Inter");
  const auto arabic = scriptSpans(QStringLiteral("ab نص cd نص"), inter);
  ASSERT_EQ(arabic.size(), 2);
  EXPECT_EQ(arabic[0].family, QStringLiteral("Noto Sans Arabic"));
  EXPECT_EQ(arabic[0].span, (runtime::TextSpan{3, 2}));
  EXPECT_TRUE(scriptSpans(QStringLiteral("نص"), QStringLiteral("Noto Sans Arabic")).isEmpty());
  // What stands around a word in an Indic script is shaped with it.
  const auto hindi = scriptSpans(QStringLiteral("12 हिन्दी (34) ab"), inter);
  ASSERT_EQ(hindi.size(), 1);
  EXPECT_EQ(hindi[0].span, (runtime::TextSpan{0, 15}));
}
