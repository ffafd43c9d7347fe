#include "runtime/patches/Expression.h"

#include <cmath>

#include "support/SinglePatch.h"

using runtime::patches::Expression;

namespace {

double result(const char* text, std::initializer_list<double> values = {}) {
  quint64 random = 1;
  const Expression expression(QString::fromUtf8(text));
  EXPECT_TRUE(expression.isValid()) << text << ": " << expression.error().toStdString();
  return expression.evaluate(std::vector<double>(values), random);
}

}  // namespace

TEST(Expression, PrecedenceAndAssociativity) {
  const std::pair<const char*, double> cases[] = {
      {"1 + 2 * 3", 7},
      {"(1 + 2) * 3", 9},
      {"10 - 4 - 3", 3},
      {"64 / 4 / 2", 8},
      {"2 ^ 3 ^ 2", 512},
      {"-2 ^ 2", -4},
      {"2 ^ -1", 0.5},
      {"2 * -3", -6},
      {"--3", 3},
      {"7.5 % 2 + 1", 2.5},
      {"-7 % 3", -1},
      {"1 < 2 == 1", 1},
      {"1 + 1 >= 2 && 3 != 3 || 1", 1},
      {"0 && 0 || 1", 1},
      {"1 || 0 && 0", 1},
      {"!0 + 1", 2},
      {"5 & 3 | 8", 9},
      {"(6 & 1) == 0", 1},
      {"1 << 4 >> 2", 4},
      {"1 ? 2 : 0 ? 3 : 4", 2},
      {"0 ? 2 : 0 ? 3 : 4", 4},
      {"1 ? 0 ? 5 : 6 : 7", 6},
      {"3 > 2 ? 10 : 20", 10},
      {"0.01 < 0.02 ? false : true", 0},
      {".5 + 1. + 2e2 + 1E-1", 201.6},
      {" ( 1\n+\t1 ) ", 2},
  };
  for (const auto& [text, expected] : cases) EXPECT_DOUBLE_EQ(result(text), expected) << text;
}

TEST(Expression, Functions) {
  const std::pair<const char*, double> cases[] = {
      {"sin(30) + cos(60)", 1},
      {"sin(180)", 0},
      {"cos(90) + cos(270)", 0},
      {"tan(45)", 1},
      {"atan2(1, 1)", 45},
      {"acos(0) + asin(1)", 180},
      {"ln(exp(2)) + log(100)", 4},
      {"abs(-3) ^ 2", 9},
      {"sqrt(16) + floor(-0.5)", 3},
      {"round(2.5) + ceil(1.2)", 5},
      {"min(3, 1, 2)", 1},
      {"max(3, min(9, 4))", 4},
      {"fmod(7, 4)", 3},
      {"sinh(0) + cosh(0)", 1},
  };
  for (const auto& [text, expected] : cases) EXPECT_NEAR(result(text), expected, 1e-12) << text;
}

TEST(Expression, VariablesInOrderOfFirstAppearance) {
  const Expression expression(QStringLiteral("Current_Index * x2 + sin(Δ) - x2 + true"));
  EXPECT_EQ(expression.variables(), QStringList({QStringLiteral("Current_Index"),
                                                 QStringLiteral("x2"), QStringLiteral("Δ")}));
  EXPECT_DOUBLE_EQ(result("a - b * a", {3, 2}), -3);
  EXPECT_DOUBLE_EQ(result("sin + 1", {2}), 3) << "a function's name without call is a variable";
}

TEST(Expression, RandomNumbersRepeatForTheSameSeed) {
  const Expression expression(QStringLiteral("rand(10, 20)"));
  quint64 one = 7;
  quint64 other = 7;
  const double first = expression.evaluate({}, one);
  EXPECT_EQ(first, expression.evaluate({}, other));
  EXPECT_NE(first, expression.evaluate({}, one));
  EXPECT_GE(first, 10);
  EXPECT_LT(first, 20);
}

TEST(Expression, FaultyOnesGiveZeroAndSayWhy) {
  const QString deep = QString(5000, QLatin1Char('(')) + QLatin1Char('1');
  const QString signs = QString(100'000, QLatin1Char('-')) + QLatin1Char('1');
  QString stacked;
  for (int i = 0; i < 150; ++i) stacked += QStringLiteral("1+(");
  for (const QString& text :
       {QString(), QStringLiteral("1 +"), QStringLiteral("(1"), QStringLiteral("1 2"),
        QStringLiteral("foo(1)"), QStringLiteral("sin()"), QStringLiteral("a ? b"),
        QStringLiteral("a = b"), QStringLiteral("1 $ 2"), QStringLiteral("."), deep, signs,
        stacked}) {
    const Expression expression(text);
    quint64 random = 0;
    EXPECT_FALSE(expression.error().isEmpty()) << text.left(20).toStdString();
    EXPECT_EQ(expression.evaluate({}, random), 0) << text.left(20).toStdString();
    EXPECT_TRUE(expression.variables().isEmpty());
  }
}

TEST(Expression, PatchHasOneInputAVariableAndReportsAFaultOnce) {
  using support::outputOf;
  EXPECT_EQ(outputOf(QStringLiteral("QCExpression"), QStringLiteral("outputResult"),
                     {{QStringLiteral("a"), 4}, {QStringLiteral("b"), 0.5}},
                     {{QStringLiteral("expression"), u"a ^ b"}})
                .toNumber(),
            2);
  support::GraphBuilder graph;
  graph.publishOutput(
      graph.node(QStringLiteral("QCExpression"), {{QStringLiteral("expression"), u"a +* b"}}),
      QStringLiteral("outputResult"), QStringLiteral("result"));
  const auto renderer = graph.renderer();
  for (int i = 0; i < 3; ++i) static_cast<void>(renderer->renderAtTime(i, QSize(4, 4)));
  EXPECT_EQ(renderer->valueForOutputKey(QStringLiteral("result")).toNumber(), 0);
  EXPECT_EQ(renderer->findings().filter(QStringLiteral("faulty expression")).size(), 1);
}
