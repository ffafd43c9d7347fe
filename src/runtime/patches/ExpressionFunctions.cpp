#include "runtime/patches/ExpressionFunctions.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "runtime/patches/SeededRandom.h"

namespace runtime::patches {

namespace {

constexpr double degree = std::numbers::pi / 180;

/// Exact at the quarter turns, where the series would miss 0 by a hair.
double sineOfDegrees(double angle) {
  const double turned = std::remainder(angle, 360.0);
  if (turned == 0 || std::abs(turned) == 180) return 0;
  return std::sin(turned * degree);
}

double cosineOfDegrees(double angle) {
  const double turned = std::remainder(angle, 360.0);
  if (std::abs(turned) == 90) return 0;
  return std::cos(turned * degree);
}

/// Integers for the bit operators; what does not fit counts as 0.
qint64 bits(double value) {
  return std::abs(value) < 9e18 ? static_cast<qint64>(value) : 0;
}

double shifted(double value, double by) {
  if (std::isnan(by)) return value;
  return std::trunc(value * std::exp2(std::clamp(std::trunc(by), -64.0, 64.0)));
}

#define UNARY(expression) [](const double* v, int, quint64&) -> double { return expression; }

const ExpressionFunction functions[] = {
    {"sin", 1, 1, UNARY(sineOfDegrees(v[0]))},
    {"cos", 1, 1, UNARY(cosineOfDegrees(v[0]))},
    {"tan", 1, 1, UNARY(sineOfDegrees(v[0]) / cosineOfDegrees(v[0]))},
    {"asin", 1, 1, UNARY(std::asin(v[0]) / degree)},
    {"acos", 1, 1, UNARY(std::acos(v[0]) / degree)},
    {"atan", 1, 1, UNARY(std::atan(v[0]) / degree)},
    {"atan2", 2, 2, UNARY(std::atan2(v[0], v[1]) / degree)},
    {"sinh", 1, 1, UNARY(std::sinh(v[0]))},
    {"cosh", 1, 1, UNARY(std::cosh(v[0]))},
    {"tanh", 1, 1, UNARY(std::tanh(v[0]))},
    {"asinh", 1, 1, UNARY(std::asinh(v[0]))},
    {"acosh", 1, 1, UNARY(std::acosh(v[0]))},
    {"atanh", 1, 1, UNARY(std::atanh(v[0]))},
    {"exp", 1, 1, UNARY(std::exp(v[0]))},
    {"ln", 1, 1, UNARY(std::log(v[0]))},
    {"log", 1, 1, UNARY(std::log10(v[0]))},
    {"log10", 1, 1, UNARY(std::log10(v[0]))},
    {"log2", 1, 1, UNARY(std::log2(v[0]))},
    {"abs", 1, 1, UNARY(std::abs(v[0]))},
    {"fabs", 1, 1, UNARY(std::abs(v[0]))},
    {"sqrt", 1, 1, UNARY(std::sqrt(v[0]))},
    {"cbrt", 1, 1, UNARY(std::cbrt(v[0]))},
    {"ceil", 1, 1, UNARY(std::ceil(v[0]))},
    {"floor", 1, 1, UNARY(std::floor(v[0]))},
    {"round", 1, 1, UNARY(std::round(v[0]))},
    {"rint", 1, 1, UNARY(std::nearbyint(v[0]))},
    {"trunc", 1, 1, UNARY(std::trunc(v[0]))},
    {"int", 1, 1, UNARY(std::trunc(v[0]))},
    {"sign", 1, 1,
     UNARY(v[0] > 0   ? 1
           : v[0] < 0 ? -1
                      : 0)},
    {"fmod", 2, 2, UNARY(std::fmod(v[0], v[1]))},
    {"mod", 2, 2, UNARY(std::fmod(v[0], v[1]))},
    {"pow", 2, 2, UNARY(std::pow(v[0], v[1]))},
    {"hypot", 2, 2, UNARY(std::hypot(v[0], v[1]))},
    {"min", 1, 16, [](const double* v, int n, quint64&) { return *std::min_element(v, v + n); }},
    {"max", 1, 16, [](const double* v, int n, quint64&) { return *std::max_element(v, v + n); }},
    {"rand", 0, 2,
     [](const double* v, int n, quint64& random) {
       const double r = nextRandom(random);
       return n == 0 ? r : n == 1 ? r * v[0] : v[0] + r * (v[1] - v[0]);
     }},
    {"random", 0, 0, [](const double*, int, quint64& random) { return nextRandom(random); }},
};

const ExpressionOperator operators[] = {
    {u"||", 0, UNARY(v[0] != 0 || v[1] != 0)},
    {u"&&", 1, UNARY(v[0] != 0 && v[1] != 0)},
    {u"|", 2, UNARY(static_cast<double>(bits(v[0]) | bits(v[1])))},
    {u"&", 3, UNARY(static_cast<double>(bits(v[0]) & bits(v[1])))},
    {u"==", 4, UNARY(v[0] == v[1])},
    {u"!=", 4, UNARY(v[0] != v[1])},
    {u"<=", 5, UNARY(v[0] <= v[1])},
    {u">=", 5, UNARY(v[0] >= v[1])},
    {u"<<", 6, UNARY(shifted(v[0], v[1]))},
    {u">>", 6, UNARY(shifted(v[0], -v[1]))},
    {u"<", 5, UNARY(v[0] < v[1])},
    {u">", 5, UNARY(v[0] > v[1])},
    {u"+", 7, UNARY(v[0] + v[1])},
    {u"-", 7, UNARY(v[0] - v[1])},
    {u"*", 8, UNARY(v[0] * v[1])},
    {u"/", 8, UNARY(v[0] / v[1])},
    {u"%", 8, UNARY(std::fmod(v[0], v[1]))},
};

#undef UNARY

}  // namespace

const ExpressionFunction* expressionFunction(const QString& name) {
  for (const ExpressionFunction& function : functions)
    if (name == QLatin1String(function.name)) return &function;
  return nullptr;
}

const ExpressionOperator* expressionOperator(QStringView text, int level) {
  // The longest token decides: "||" and "<<" are not two operators, "<=" is no "<".
  const ExpressionOperator* found = nullptr;
  for (const ExpressionOperator& candidate : operators) {
    const QStringView token(candidate.token);
    if (text.startsWith(token) && (!found || token.size() > QStringView(found->token).size()))
      found = &candidate;
  }
  return found && found->level == level ? found : nullptr;
}

}  // namespace runtime::patches
