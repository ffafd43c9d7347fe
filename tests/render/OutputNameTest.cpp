#include "render/OutputName.h"

#include <gtest/gtest.h>

namespace {

TEST(OutputName, NamesFollowThePattern) {
  const auto read = [](const char* text) {
    return render::OutputName::read(QString::fromUtf8(text));
  };
  EXPECT_TRUE(read("-")->isStream);
  EXPECT_TRUE(read("a.png")->isSinglePicture());
  EXPECT_TRUE(read("100%.JPEG")->isSinglePicture());
  EXPECT_EQ(read("100%.JPEG")->format, render::PictureFormat::Jpeg);
  EXPECT_EQ(read("%d/a.png")->name.of(7), QStringLiteral("%d/a.png"));
  EXPECT_EQ(read("a_%05d.png")->name.of(42), QStringLiteral("a_00042.png"));
  EXPECT_EQ(read("a_%4d.png")->name.of(42), QStringLiteral("a_  42.png"));
}

TEST(OutputName, FoldersHoldASequenceWhetherTheyAreThereOrNot) {
  const auto there = render::OutputName::read(QStringLiteral("/tmp"));
  ASSERT_TRUE(there);
  EXPECT_EQ(there->name.of(3), QStringLiteral("/tmp/frame_00003.png"));
  const auto named = render::OutputName::read(QStringLiteral("not/there/"));
  ASSERT_TRUE(named);
  EXPECT_FALSE(named->isSinglePicture());
  EXPECT_TRUE(named->folder().endsWith(QLatin1String("/not/there")));
}

TEST(OutputName, PatternsAndFormatsThatCannotBeWritten) {
  for (const char* wrong : {"a_%s.png", "a_%d_%d.png", "a_%123d.png", "a.gif", "a_%d.mov", "a"})
    EXPECT_FALSE(render::OutputName::read(QString::fromLatin1(wrong))) << wrong;
  const auto other = render::OutputName::read(QStringLiteral("a.gif"));
  EXPECT_TRUE(other.error().message.contains(QLatin1String(".png, .jpg or .jpeg")));
}

}  // namespace
