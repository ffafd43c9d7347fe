#include "model/PlayoutArguments.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace model {

TEST(PlayoutArguments, AClipOfFiveSecondsRepeats) {
  const auto key = [](const char* name) {
    return QStringLiteral("BALEventParameterMetadata_") + QLatin1String(name);
  };
  const QVariantHash playing = PlayoutArguments::argumentsAtTime(12.5, true);
  EXPECT_EQ(playing.size(), 7);
  EXPECT_EQ(playing[key("ElapsedTime")], QVariant(2.5));
  EXPECT_EQ(playing[key("AbsoluteElapsedTime")], QVariant(2.5));
  EXPECT_EQ(playing[key("RemainingTime")], QVariant(2.5));
  EXPECT_EQ(playing[key("CurrentDuration")], QVariant(5.0));
  EXPECT_EQ(playing[key("PercentageElapsed")], QVariant(50.0));
  EXPECT_EQ(playing[key("CurrentName")], QVariant(QStringLiteral("Current Clip")));
  EXPECT_EQ(playing[key("NextNames")].toStringList().join(u','), QStringLiteral("One,Two,Three"));
  const QVariantHash standing = PlayoutArguments::argumentsAtTime(12.5, false);
  EXPECT_EQ(standing[key("ElapsedTime")], QVariant(0.0));
  EXPECT_EQ(standing[key("RemainingTime")], QVariant(5.0));
}

}  // namespace model
