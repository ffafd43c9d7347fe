#include "foundation/SeparatedText.h"

#include <gtest/gtest.h>

namespace foundation {

namespace {

using Lines = QList<QStringList>;

TEST(SeparatedText, AnyCellsComeBack) {
  const Lines lines{
      {QStringLiteral("plain"), QString(), QStringLiteral("tab\there")},
      {QStringLiteral("two\nlines"), QStringLiteral("\"quoted\""), QStringLiteral("it's 5\" wide")},
      {QStringLiteral("a,b;c"), QStringLiteral("\"\"")},
      {QStringLiteral("\r"), QStringLiteral("end\r\n")}};
  for (const QChar separator : {u'\t', u',', u';'}) {
    const auto table = SeparatedText::read(SeparatedText::write(lines, separator), separator);
    EXPECT_EQ(table.lines, lines);
    EXPECT_EQ(table.unclosedLine, 0);
  }
}

TEST(SeparatedText, LineEndsOfEverySystemPartLines) {
  const Lines two{{QStringLiteral("a"), QStringLiteral("b")}, {QStringLiteral("c")}};
  for (const char* text : {"a\tb\r\nc", "a\tb\nc\n", "a\tb\rc\r", "\"a\"\tb\n\"c\"\r\n"})
    EXPECT_EQ(SeparatedText::read(QString::fromLatin1(text)).lines, two) << text;
  EXPECT_TRUE(SeparatedText::read(QString()).lines.isEmpty());
  EXPECT_EQ(SeparatedText::read(QStringLiteral("a\t")).lines,
            Lines({{QStringLiteral("a"), QString()}}));
}

TEST(SeparatedText, SaysWhereAQuotationMarkIsNotClosed) {
  const auto table = SeparatedText::read(QStringLiteral("a,b\n1,2\n3,\"4\n5,6\n"), u',');
  EXPECT_EQ(table.unclosedLine, 3);
  EXPECT_EQ(table.lines.last(), QStringList({QStringLiteral("3"), QStringLiteral("4\n5,6\n")}));
  EXPECT_EQ(SeparatedText::read(QStringLiteral("\"")).unclosedLine, 1);
}

TEST(SeparatedText, TheHeadLineTellsTheSeparator) {
  const std::pair<const char*, char16_t> cases[] = {
      {"a,b\n1;2;3;4", u','}, {"a;b\n1,2,3,4", u';'},    {"a\tb\n1,2", u'\t'},
      {"\"x;y;z\",b", u','},  {"one column\n1;2", u','}, {"", u','},
      {"\"a\nb\";c", u';'}};
  for (const auto& [text, separator] : cases)
    EXPECT_EQ(SeparatedText::separatorOf(QString::fromLatin1(text)), QChar(separator)) << text;
}

}  // namespace

}  // namespace foundation
