#include "widgets/Theme.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QSet>
#include <QSignalSpy>
#include <cmath>

#include "widgets/TYStyleKit.h"

using namespace widgets;

namespace {

double linear(double c) {
  return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& c) {
  return 0.2126 * linear(c.redF()) + 0.7152 * linear(c.greenF()) + 0.0722 * linear(c.blueF());
}

double contrast(const QColor& a, const QColor& b) {
  const double la = luminance(a);
  const double lb = luminance(b);
  return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

struct Pair {
  Token over;
  Token ground;
  double needed;
};

// What has to be read or told apart on what, and the ratio that it needs.
constexpr Pair kPairs[] = {
    {Token::Text, Token::Panel, 4.5},
    {Token::Text, Token::Raised, 4.5},
    {Token::Text, Token::Field, 4.5},
    {Token::Text, Token::Control, 4.5},
    {Token::Text, Token::ControlHover, 4.5},
    {Token::Text, Token::ControlOn, 4.5},
    {Token::Text, Token::SelectionRow, 4.5},
    {Token::Text, Token::Window, 4.5},
    {Token::Text2, Token::Panel, 4.5},
    {Token::Text2, Token::Raised, 4.5},
    {Token::Text2, Token::Window, 4.5},
    {Token::Text2, Token::SelectionRow, 4.5},
    {Token::Text2, Token::CanvasRuler, 4.5},
    {Token::Text3, Token::Panel, 4.5},
    {Token::Text3, Token::Field, 4.5},
    {Token::Text3, Token::Raised, 4.5},
    {Token::Text3, Token::Window, 4.5},
    {Token::OnAccent, Token::AccentFill, 4.5},
    {Token::OnAccent, Token::AccentHover, 4.5},
    {Token::Accent, Token::Panel, 4.5},
    {Token::Accent, Token::Raised, 4.5},
    {Token::Accent, Token::Field, 3},
    {Token::AccentFill, Token::Panel, 3},
    {Token::Accent, Token::Window, 3},
    {Token::Border, Token::Panel, 3},
    {Token::Border, Token::Raised, 3},
    {Token::Border, Token::Field, 3},
    {Token::Text2, Token::Control, 3},
    {Token::Bar, Token::TimelineRow, 3},
    {Token::Bar, Token::TimelineRowAlt, 3},
    {Token::BarSelected, Token::SelectionRow, 3},
    {Token::Keyframe, Token::TimelineRow, 3},
    {Token::KeyframeSelected, Token::TimelineRow, 3},
    {Token::Keyframe, Token::TimelineRowAlt, 3},
    {Token::KeyframeSelected, Token::TimelineRowAlt, 3},
    {Token::Marker, Token::TimelineRow, 3},
    {Token::Marker, Token::TimelineRuler, 3},
    {Token::Marker, Token::SelectionRow, 3},
    {Token::StopFrame, Token::TimelineRuler, 3},
    {Token::Text2, Token::TimelineRuler, 4.5},
    {Token::Playing, Token::Panel, 4.5},
    {Token::Warning, Token::Panel, 4.5},
    {Token::Warning, Token::WarningSoft, 4.5},
    {Token::Text, Token::WarningSoft, 4.5},
    {Token::Broken, Token::Panel, 4.5},
    {Token::Text, Token::BrokenSoft, 4.5},
    {Token::Broken, Token::BrokenSoft, 3},
};

const QList<Theme> kThemes{{true, false}, {false, false}, {true, true}, {false, true}};

}  // namespace

TEST(ThemeTest, everyColourStandsOutOnTheGroundsItIsUsedOn) {
  for (const Theme& theme : kThemes)
    for (const Pair& pair : kPairs) {
      const QColor ground = theme.colour(pair.ground);
      if (ground.alpha() == 0) continue;  // a soft fill that high contrast drops
      EXPECT_GE(contrast(theme.colour(pair.over), ground), pair.needed)
          << Theme::name(pair.over).toStdString() << " on "
          << Theme::name(pair.ground).toStdString() << (theme.dark ? ", dark" : ", light");
    }
}

TEST(ThemeTest, tokensHaveTheirOwnNames) {
  QSet<QString> names;
  for (int i = 0; i < kTokenCount; ++i) names.insert(Theme::name(Token(i)));
  EXPECT_EQ(names.size(), kTokenCount);
  EXPECT_TRUE(names.contains(QStringLiteral("text2")));
  EXPECT_TRUE(names.contains(QStringLiteral("keyframeSelected")));
}

TEST(ThemeTest, highContrastStrengthensLinesAndDropsSoftFills) {
  for (const bool dark : {true, false}) {
    const Theme normal{dark, false};
    const Theme high{dark, true};
    EXPECT_EQ(high.colour(Token::Separator), normal.colour(Token::Border));
    EXPECT_EQ(high.colour(Token::Border), normal.colour(Token::Text));
    EXPECT_EQ(high.colour(Token::Text2), normal.colour(Token::Text));
    EXPECT_EQ(high.colour(Token::SelectionRow).alpha(), 0);
    EXPECT_EQ(high.colour(Token::CanvasSelection), QColor(Qt::white));
    EXPECT_EQ(high.colour(Token::Accent), normal.colour(Token::Accent));
  }
}

TEST(TYStyleKitTest, aForcedAppearanceIsAnnouncedOnceAndReachesThePalette) {
  TYStyleKit& kit = TYStyleKit::shared();
  kit.setAppearance(TYStyleKit::Appearance::Dark);
  QSignalSpy changes(&kit, &TYStyleKit::themeChanged);
  kit.setAppearance(TYStyleKit::Appearance::Light);
  kit.setAppearance(TYStyleKit::Appearance::Light);
  EXPECT_EQ(changes.size(), 1);
  EXPECT_EQ(QApplication::palette().color(QPalette::Window), QColor(0xF3F4F6));
  kit.setContrast(TYStyleKit::Contrast::High);
  EXPECT_TRUE(kit.theme().highContrast);
  kit.setContrast(TYStyleKit::Contrast::Normal);
  kit.setAppearance(TYStyleKit::Appearance::Dark);
  EXPECT_EQ(QApplication::palette().color(QPalette::Window), QColor(0x1B1C20));
}
