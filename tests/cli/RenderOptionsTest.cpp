#include "cli/RenderOptions.h"

#include <gtest/gtest.h>

#include "cli/OutputName.h"
#include "cli/ProgressBar.h"

namespace {

foundation::Result<cli::RenderOptions> read(const QStringList& arguments) {
  const auto syntax = cli::RenderOptions::syntax();
  EXPECT_FALSE(syntax->parse(arguments, 1));
  return cli::RenderOptions::read(*syntax);
}

TEST(FrameRate, BroadcastRatesAreExactFractions) {
  EXPECT_EQ(cli::FrameRate::fromText(QStringLiteral("29.97"))->numerator, 30000);
  EXPECT_EQ(cli::FrameRate::fromText(QStringLiteral("29.97"))->denominator, 1001);
  EXPECT_EQ(cli::FrameRate::fromText(QStringLiteral("60000/1001"))->denominator, 1001);
  EXPECT_DOUBLE_EQ(cli::FrameRate::fromText(QStringLiteral("50"))->timeOf(90000 * 50), 90000.0);
  for (const char* wrong : {"", "0", "-25", "abc", "25/0", "1001", "1/x", "nan"})
    EXPECT_FALSE(cli::FrameRate::fromText(QString::fromLatin1(wrong))) << wrong;
}

TEST(FrameRate, DurationsCountWholeFrames) {
  const cli::FrameRate rate{25, 1};
  EXPECT_EQ(rate.framesIn(2.0), 50);
  EXPECT_EQ(rate.framesIn(0.1 + 0.2), 8);  // 7.5 frames need an eighth
  EXPECT_EQ(rate.framesIn(0.04 * 3), 3);   // not 4 for a rounding error
}

TEST(RenderOptions, ReadsTimesSizesAndTriggers) {
  const auto r =
      read({QStringLiteral("in.qtz"), QStringLiteral("-o"), QStringLiteral("-"),
            QStringLiteral("--size"), QStringLiteral("640x360"), QStringLiteral("--trigger"),
            QStringLiteral("3"), QStringLiteral("--trigger"), QStringLiteral("1.5"),
            QStringLiteral("--from"), QStringLiteral("0.5")});
  ASSERT_TRUE(r);
  EXPECT_EQ(*r->size, QSize(640, 360));
  EXPECT_EQ(r->triggers, (std::vector<double>{1.5, 3}));
  EXPECT_EQ(r->from, 0.5);
}

TEST(RenderOptions, WrongValuesAreNamed) {
  const std::pair<QStringList, const char*> cases[] = {
      {{QStringLiteral("--size"), QStringLiteral("0x5")}, "--size"},
      {{QStringLiteral("--size"), QStringLiteral("99999x5")}, "--size"},
      {{QStringLiteral("--size"), QStringLiteral("16384x16384")}, "134 million"},
      {{QStringLiteral("--fps"), QStringLiteral("fast")}, "--fps"},
      {{QStringLiteral("--mode"), QStringLiteral("HD 4711")}, "HD 4711"},
      {{QStringLiteral("--from"), QStringLiteral("-1")}, "--from"},
      {{QStringLiteral("--trigger"), QStringLiteral("now")}, "--trigger"},
      {{QStringLiteral("--frames"), QStringLiteral("0")}, "--frames"},
      {{QStringLiteral("--clock"), QStringLiteral("noon")}, "--clock"},
      {{QStringLiteral("--alpha"), QStringLiteral("bent")}, "--alpha"},
      {{QStringLiteral("--frames"), QStringLiteral("2"), QStringLiteral("--duration"),
        QStringLiteral("1")},
       "exclude"}};
  for (const auto& [arguments, part] : cases) {
    const auto r =
        read(QStringList{QStringLiteral("in.qtz"), QStringLiteral("-o"), QStringLiteral("x.png")} +
             arguments);
    ASSERT_FALSE(r) << part;
    EXPECT_TRUE(r.error().message.contains(QString::fromLatin1(part)))
        << r.error().message.toStdString();
  }
}

TEST(OutputName, NamesFollowThePattern) {
  const auto read = [](const char* text) { return cli::OutputName::read(QString::fromUtf8(text)); };
  EXPECT_TRUE(read("-")->isStream);
  EXPECT_TRUE(read("a.png")->isSinglePicture());
  EXPECT_TRUE(read("100%.JPEG")->isSinglePicture());
  EXPECT_EQ(read("100%.JPEG")->format, cli::PictureFormat::Jpeg);
  EXPECT_EQ(read("%d/a.png")->name.of(7), QStringLiteral("%d/a.png"));
  EXPECT_EQ(read("a_%05d.png")->name.of(42), QStringLiteral("a_00042.png"));
  EXPECT_EQ(read("a_%4d.png")->name.of(42), QStringLiteral("a_  42.png"));
}

TEST(OutputName, FoldersHoldASequenceWhetherTheyAreThereOrNot) {
  const auto there = cli::OutputName::read(QStringLiteral("/tmp"));
  ASSERT_TRUE(there);
  EXPECT_EQ(there->name.of(3), QStringLiteral("/tmp/frame_00003.png"));
  const auto named = cli::OutputName::read(QStringLiteral("not/there/"));
  ASSERT_TRUE(named);
  EXPECT_FALSE(named->isSinglePicture());
  EXPECT_TRUE(named->folder().endsWith(QLatin1String("/not/there")));
}

TEST(OutputName, PatternsAndFormatsThatCannotBeWritten) {
  for (const char* wrong : {"a_%s.png", "a_%d_%d.png", "a_%123d.png", "a.gif", "a_%d.mov", "a"})
    EXPECT_FALSE(cli::OutputName::read(QString::fromLatin1(wrong))) << wrong;
  const auto other = cli::OutputName::read(QStringLiteral("a.gif"));
  EXPECT_TRUE(other.error().message.contains(QLatin1String(".png, .jpg or .jpeg")));
}

TEST(ProgressBar, ShowsShareRateAndRest) {
  EXPECT_EQ(cli::ProgressBar::line(QStringLiteral("rendering"), 50, 100, 2.0),
            QStringLiteral("rendering  [###############...............]  50 %  50/100  25/s  "
                           "2 s left"));
}

}  // namespace
