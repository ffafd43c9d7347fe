#pragma once

#include <QPointF>
#include <QRectF>
#include <QTransform>
#include <array>
#include <vector>

#include "foundation/Color.h"
#include "runtime/Image.h"

namespace runtime::image {

/// What an input of a filter is; decides its ports and how relative coordinates are scaled.
enum class FilterInputKind : quint8 {
  Image,
  Number,
  Angle,      ///< degrees at the port, radians for the filter
  Length,     ///< pixels
  Point,      ///< pixels; two ports _X and _Y
  Vector,     ///< four plain numbers; ports _X to _W
  Rectangle,  ///< x, y, width, height in pixels; ports _X to _W
  Color,
  Transform  ///< seven ports: origin, scale, rotation, translation
};

struct FilterInput {
  const char* key;
  FilterInputKind kind;
  std::array<double, 4> standard = {};
};

/// The values with which a filter is applied; inputs are named by their place in the filter's list
/// and always of the kind declared there.
class FilterArguments {
 public:
  struct Argument {
    Image image;
    std::array<double, 4> numbers = {};
    QTransform transform;
  };
  std::vector<Argument> values;

  [[nodiscard]] const Image& image(size_t i) const { return values[i].image; }
  [[nodiscard]] double number(size_t i) const { return values[i].numbers[0]; }
  [[nodiscard]] float single(size_t i) const { return static_cast<float>(number(i)); }
  [[nodiscard]] const std::array<double, 4>& vector(size_t i) const { return values[i].numbers; }
  [[nodiscard]] QPointF point(size_t i) const { return {vector(i)[0], vector(i)[1]}; }
  [[nodiscard]] QRectF rectangle(size_t i) const {
    return {vector(i)[0], vector(i)[1], vector(i)[2], vector(i)[3]};
  }
  [[nodiscard]] foundation::Color color(size_t i) const {
    return {vector(i)[0], vector(i)[1], vector(i)[2], vector(i)[3]};
  }
  [[nodiscard]] const QTransform& transform(size_t i) const { return values[i].transform; }
};

/// One filter. `apply` builds an image that computes its pixels when they are needed; it gives no
/// image when there is nothing to show. Image inputs other than the first may be null.
struct ImageFilter {
  const char* name;
  std::vector<FilterInput> inputs;
  Image (*apply)(const FilterArguments&);
  const char* status = "";  ///< what is weaker than the original, in plain words
};
using ImageFilters = std::vector<ImageFilter>;

/// The filters by family. To add one, add a row.
[[nodiscard]] ImageFilters generatorFilters();
[[nodiscard]] ImageFilters lightFilters();
[[nodiscard]] ImageFilters geometryFilters();
[[nodiscard]] ImageFilters blurFilters();
[[nodiscard]] ImageFilters colorFilters();
[[nodiscard]] ImageFilters compositingFilters();
[[nodiscard]] ImageFilters blendModeFilters();
[[nodiscard]] ImageFilters transitionFilters();
[[nodiscard]] ImageFilters distortionFilters();
[[nodiscard]] ImageFilters styleFilters();

/// Short names for the rows of the tables.
namespace inputs {
using K = FilterInputKind;
constexpr std::array<double, 4> white = {1, 1, 1, 1};
constexpr std::array<double, 4> black = {0, 0, 0, 1};
constexpr std::array<double, 4> clear = {0, 0, 0, 0};

constexpr FilterInput image(const char* key = "inputImage") {
  return {key, K::Image};
}
constexpr FilterInput number(const char* key, double v) {
  return {key, K::Number, {v}};
}
constexpr FilterInput length(const char* key, double v) {
  return {key, K::Length, {v}};
}
constexpr FilterInput angle(const char* key = "inputAngle", double degrees = 0) {
  return {key, K::Angle, {degrees}};
}
constexpr FilterInput point(const char* key, double x, double y) {
  return {key, K::Point, {x, y}};
}
constexpr FilterInput center(double x = 150, double y = 150) {
  return point("inputCenter", x, y);
}
constexpr FilterInput color(const char* key, std::array<double, 4> v) {
  return {key, K::Color, v};
}
constexpr FilterInput vector(const char* key, std::array<double, 4> v) {
  return {key, K::Vector, v};
}
constexpr FilterInput rectangle(const char* key, std::array<double, 4> v) {
  return {key, K::Rectangle, v};
}
constexpr FilterInput transform() {
  return {"inputTransform", K::Transform};
}
}  // namespace inputs

}  // namespace runtime::image
