#include "runtime/text/TextParagraphs.h"

#include <gtest/gtest.h>

#include <QStringList>

using runtime::isRightToLeftText;
using runtime::TextParagraph;
using runtime::textParagraphs;
using runtime::TextSpan;

namespace {

QStringList texts(const QString& text) {
  QStringList list;
  for (const TextParagraph& paragraph : textParagraphs(text)) list.append(paragraph.text);
  return list;
}

/// The parts of a one-paragraph text that are shown in colour.
QStringList emojiOf(const QString& text) {
  const TextParagraph paragraph = textParagraphs(text).constFirst();
  QStringList list;
  for (const TextSpan& span : paragraph.emoji)
    list.append(paragraph.text.mid(span.start, span.length));
  return list;
}

}  // namespace

TEST(TextParagraphs, EveryKindOfLineBreakEndsAParagraph) {
  EXPECT_EQ(texts(QStringLiteral("a\nb\r\nc\rd\u2028e\u2029f\u0085g\vh\fi")),
            QStringLiteral("a b c d e f g h i").split(QLatin1Char(' ')));
  EXPECT_EQ(texts(QStringLiteral("\n\r\n\n")), QStringList({{}, {}, {}, {}}));
  EXPECT_EQ(texts(QString()), QStringList({QString()}));
}

TEST(TextParagraphs, ControlCharactersAreDroppedButTabsAndDirectionMarksStay) {
  const QString text = QStringLiteral("a\u0001\u007f\u009f\ufffcb\tc\u200f\u200ed\u200d");
  EXPECT_EQ(texts(text), QStringList(QStringLiteral("ab\tc\u200f\u200ed\u200d")));
}

TEST(TextParagraphs, FindsEmojiSequences) {
  EXPECT_EQ(emojiOf(QStringLiteral("a😀b")), QStringList(QStringLiteral("😀")));
  // Skin tone, family, flag, flag of tags, keycap; neighbours are one run.
  EXPECT_EQ(emojiOf(QStringLiteral("👍🏽 x")), QStringList(QStringLiteral("👍🏽")));
  EXPECT_EQ(emojiOf(QStringLiteral("👩‍👩‍👧🇩🇪 🏴󠁧󠁢󠁳󠁣󠁴󠁿")),
            QStringList({QStringLiteral("👩‍👩‍👧🇩🇪"),
                         QStringLiteral("🏴󠁧󠁢󠁳󠁣󠁴󠁿")}));
  EXPECT_EQ(emojiOf(QStringLiteral("1\uFE0F\u20E3 1")), QStringList(QStringLiteral("1\u20E3")));
  // A heart is text unless the selector asks for the picture, a watch the other way round.
  EXPECT_EQ(emojiOf(QStringLiteral("\u2764 \u2764\uFE0F")), QStringList(QStringLiteral("\u2764")));
  EXPECT_EQ(emojiOf(QStringLiteral("\u231A\uFE0E")), QStringList());
  EXPECT_EQ(emojiOf(QStringLiteral("12:30 #1 © ™")), QStringList());
  // Cut-off sequences end with the text.
  EXPECT_EQ(emojiOf(QStringLiteral("👩‍")), QStringList(QStringLiteral("👩‍")));
  EXPECT_EQ(emojiOf(QStringLiteral("🇩")), QStringList(QStringLiteral("🇩")));
}

TEST(TextParagraphs, DirectionComesFromTheFirstLetter) {
  EXPECT_FALSE(isRightToLeftText(QStringLiteral("12 abc שלום"), true));
  EXPECT_TRUE(isRightToLeftText(QStringLiteral("12 שלום abc"), false));
  EXPECT_TRUE(isRightToLeftText(QStringLiteral("12:30"), true));
  EXPECT_FALSE(isRightToLeftText(QStringLiteral("12:30"), false));
}
