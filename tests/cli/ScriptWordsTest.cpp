#include "cli/edit/ScriptWords.h"

#include <gtest/gtest.h>

#include "cli/edit/NearNames.h"
#include "cli/edit/TimeText.h"

namespace {

QString q(const char* text) {
  return QString::fromUtf8(text);
}

/// The words in angle brackets, or the error.
QString read(const char* line) {
  const cli::ScriptNames names{
      {q("way"), {q("harbour")}}, {q("look"), {q("a=1"), q("b=two words")}}, {q("none"), {}}};
  const auto words = cli::scriptWords(q(line), names);
  if (!words) return words.error().message;
  QString text;
  for (const QString& word : *words) text += QStringLiteral("<%1>").arg(word);
  return text;
}

TEST(ScriptWords, AreQuotedNamedAndCommentedAsInAShell) {
  const std::pair<const char*, const char*> cases[] = {
      {"", ""},
      {"  add  Text\ttitle=Bar ", "<add><Text><title=Bar>"},
      {R"(a="two words" 'b c'"d" "" e\ f)", "<a=two words><b cd><><e f>"},
      {R"("a\"b\\c\n\$way" '\n$way')", "<a\"b\\c\n$way><\\n$way>"},
      {"# all of it", ""},
      {"#Bar", ""},
      {"set #3 c=#FFF # rest", "<set><#3><c=#FFF>"},
      {"a#b x # y", "<a#b><x>"},
      {"$way/$way.qtz ${way}ed \"$way\"", "<harbour/harbour.qtz><harboured><harbour>"},
      {"x $look y", "<x><a=1><b=two words><y>"},
      {"x=$look \"$look\"", "<x=a=1 b=two words><a=1 b=two words>"},
      {"x $none y", "<x><y>"},
      {"x=$none", "<x=>"},
      {"a \"b", "the quotation mark \" is not closed"},
      {"a \\", "nothing follows the last \\"},
      {"$ 5", "a name must follow $; \\$ is the character itself"},
      {"$wy", "there is no name 'wy'; did you mean way?"}};
  for (const auto& [line, expected] : cases) {
    EXPECT_EQ(read(line), q(expected)) << line;
    for (qsizetype length = 0; line[length] != 0; ++length)
      (void)read(QByteArray(line, length).constData());
  }
}

TEST(TimeText, TakesSecondsAndTimeCodes) {
  const std::tuple<const char*, int, double> cases[] = {
      {"0.8", 50, 0.8},      {"0:20", 50, 0.4}, {"1:02:00", 25, 62}, {"1:00:00:24", 25, 3600.96},
      {"0", 25, 0},          {"-1", 25, -1},    {"0:25", 25, -1},    {"1:60:0", 25, -1},
      {"1:1:1:1:1", 25, -1}, {"nan", 25, -1},   {"1e6", 25, -1},     {"1:-2", 25, -1},
      {"", 25, -1}};
  for (const auto& [text, rate, expected] : cases)
    EXPECT_NEAR(cli::secondsFromText(q(text), foundation::TimecodeRate::whole(rate)).value_or(-1),
                expected, 1e-9)
        << text;
}

TEST(NearNames, AreTheNearestFirstOrAll) {
  const QStringList names{q("Color"), q("Color_1"), q("Text"), q("Font_Name")};
  EXPECT_EQ(cli::nearNames(q("colour"), names), q("did you mean Color?"));
  EXPECT_EQ(cli::nearNames(q("Font"), names), q("did you mean Font_Name?"));
  EXPECT_EQ(cli::nearNames(q("zzzz"), names), q("there are: Color, Color_1, Text, Font_Name"));
  EXPECT_EQ(cli::nearNames(q("x"), {}), q("there is none"));
}

}  // namespace
