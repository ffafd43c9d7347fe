#include "widgets/NumberExpression.h"

#include <gtest/gtest.h>

using widgets::NumberExpression;

namespace {

const NumberExpression::Rules kRules{
    QLocale(QLocale::English),
    {{QStringLiteral("px"), 1}, {QStringLiteral("%"), 19.2}, {QStringLiteral("°"), 1}}};

double result(const char* text, double current = 100) {
  const auto parsed = NumberExpression::parse(QString::fromUtf8(text), kRules);
  EXPECT_TRUE(parsed) << text << ": " << (parsed ? "" : parsed.error().message.toStdString());
  return parsed ? parsed->appliedTo(current) : -1e99;
}

std::string complaint(const QString& text) {
  const auto parsed = NumberExpression::parse(text, kRules);
  EXPECT_FALSE(parsed) << text.toStdString();
  return parsed ? std::string() : parsed.error().message.toStdString();
}

}  // namespace

TEST(NumberExpressionTest, calculates) {
  EXPECT_DOUBLE_EQ(result("1920/2-40"), 920);
  EXPECT_DOUBLE_EQ(result(" 1 + 2 * 3 "), 7);
  EXPECT_DOUBLE_EQ(result("(1+2)*3"), 9);
  EXPECT_DOUBLE_EQ(result("8/2/2"), 2);
  EXPECT_DOUBLE_EQ(result("10-3-2"), 5);
  EXPECT_DOUBLE_EQ(result("-(2+3)*-2"), 10);
  EXPECT_DOUBLE_EQ(result("3 × 4 ÷ 2"), 6);
  EXPECT_DOUBLE_EQ(result("−5"), -5);
  EXPECT_DOUBLE_EQ(result("1,312"), 1312);
  EXPECT_DOUBLE_EQ(result("1,234,567.5"), 1234567.5);
  EXPECT_DOUBLE_EQ(result(".5"), 0.5);
  EXPECT_DOUBLE_EQ(result("2.5e2"), 250);
  EXPECT_DOUBLE_EQ(result("0.1234567890123"), 0.1234567890123);
}

TEST(NumberExpressionTest, changesWhatIsThere) {
  EXPECT_DOUBLE_EQ(result("+=10"), 110);
  EXPECT_DOUBLE_EQ(result("-=2*5"), 90);
  EXPECT_DOUBLE_EQ(result("*=1.5"), 150);
  EXPECT_DOUBLE_EQ(result("/=4"), 25);
  EXPECT_DOUBLE_EQ(result("+10"), 10);
  EXPECT_TRUE(NumberExpression::parse(QStringLiteral("+=1"), kRules)->isRelative());
  EXPECT_FALSE(NumberExpression::parse(QStringLiteral("-1"), kRules)->isRelative());
}

TEST(NumberExpressionTest, understandsTheUnitsOfItsField) {
  EXPECT_DOUBLE_EQ(result("10px"), 10);
  EXPECT_DOUBLE_EQ(result("50 % + 4 px"), 964);
  EXPECT_DOUBLE_EQ(result("(1+1)%"), 38.4);
  EXPECT_DOUBLE_EQ(result("90°"), 90);
}

TEST(NumberExpressionTest, readsNumbersAsTheLocaleWritesThem) {
  const NumberExpression::Rules german{QLocale(QLocale::German), {}};
  EXPECT_DOUBLE_EQ(NumberExpression::parse(QStringLiteral("1.312,5"), german)->appliedTo(0),
                   1312.5);
  EXPECT_DOUBLE_EQ(NumberExpression::parse(QStringLiteral("2.5"), german)->appliedTo(0), 2.5);
}

TEST(NumberExpressionTest, saysWhatIsWrong) {
  EXPECT_EQ(complaint(QStringLiteral("12,,4")), "“,” was not expected.");
  EXPECT_EQ(complaint({}), "A number is missing.");
  EXPECT_EQ(complaint(QStringLiteral("3+")), "A number is missing at the end.");
  EXPECT_EQ(complaint(QStringLiteral("3+*4")), "A number is missing before “*”.");
  EXPECT_EQ(complaint(QStringLiteral("(3")), "A closing bracket is missing.");
  EXPECT_EQ(complaint(QStringLiteral("3)")), "“)” was not expected.");
  EXPECT_EQ(complaint(QStringLiteral("4 apples")), "“apples” is no unit of this field.");
  EXPECT_EQ(complaint(QStringLiteral("1/0")), "A number cannot be divided by zero.");
  EXPECT_EQ(complaint(QStringLiteral("/=0")), "A number cannot be divided by zero.");
  EXPECT_EQ(complaint(QStringLiteral("1e999")), "The result is no number.");
  for (const char* text : {"+=", "1 2", "1.2.3", "1,23", "=5", "—", "nan", "inf", "0x10"})
    complaint(QString::fromUtf8(text));
}

TEST(NumberExpressionTest, boundsDepthAndLength) {
  EXPECT_EQ(complaint(QString(200, QLatin1Char('('))), "The entry is nested too deeply.");
  EXPECT_EQ(complaint(QString(200, QLatin1Char('-')) + QLatin1Char('1')),
            "The entry is nested too deeply.");
  EXPECT_EQ(complaint(QString(501, QLatin1Char('1'))), "The entry is too long.");
  EXPECT_DOUBLE_EQ(result("((((((((1))))))))"), 1);
}
