#include "cli/RenderOptions.h"

#include <gtest/gtest.h>

#include "cli/ProgressBar.h"

namespace {

foundation::Result<cli::RenderOptions> read(const QStringList& arguments) {
  const auto syntax = cli::RenderOptions::syntax();
  EXPECT_FALSE(syntax->parse(arguments, 1));
  return cli::RenderOptions::read(*syntax);
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

TEST(ProgressBar, ShowsShareRateAndRest) {
  EXPECT_EQ(cli::ProgressBar::line(QStringLiteral("rendering"), 50, 100, 2.0),
            QStringLiteral("rendering  [###############...............]  50 %  50/100  25/s  "
                           "2 s left"));
}

}  // namespace
