#include "model/RFTValueTransformer.h"

#include <gtest/gtest.h>

#include <QTextBlock>
#include <QTextCursor>

namespace model {

TEST(RFTValueTransformer, GoesThereAndBack) {
  const QString rtf = QStringLiteral("{\\rtf1\\ansi\\b Grüße\\b0  \\u8364?}");
  const auto text = RFTValueTransformer::transformedValue(rtf);
  EXPECT_EQ(text->toPlainText(), QStringLiteral("Grüße €"));
  EXPECT_EQ(text->begin().begin().fragment().charFormat().fontWeight(), int(QFont::Bold));
  const QString back = RFTValueTransformer::reverseTransformedValue(text.get());
  EXPECT_TRUE(back.startsWith(QStringLiteral("{\\rtf1")));
  const auto again = RFTValueTransformer::transformedValue(back);
  EXPECT_EQ(again->toHtml(), text->toHtml());
}

TEST(RFTValueTransformer, NothingIsTheEmptyString) {
  EXPECT_EQ(RFTValueTransformer::reverseTransformedValue(nullptr), QString());
  const auto empty = RFTValueTransformer::transformedValue({});
  ASSERT_NE(empty, nullptr);
  EXPECT_EQ(RFTValueTransformer::reverseTransformedValue(empty.get()), QString());
  const auto headOnly = RFTValueTransformer::transformedValue(QStringLiteral("{\\rtf1\\ansi}"));
  EXPECT_EQ(RFTValueTransformer::reverseTransformedValue(headOnly.get()), QString());
}

TEST(RFTValueTransformer, EditsCanBeUndone) {
  const auto text = RFTValueTransformer::transformedValue(QStringLiteral("plain"));
  EXPECT_FALSE(text->isUndoAvailable());
  QTextCursor(text.get()).insertText(QStringLiteral("not "));
  EXPECT_TRUE(text->isUndoAvailable());
  text->undo();
  EXPECT_EQ(text->toPlainText(), QStringLiteral("plain"));
}

}  // namespace model
