#include "runtime/image/kernel/KernelBuiltins.h"

#include "runtime/image/kernel/KernelProgram.h"

namespace runtime::image::kernel {

namespace {

using Builtin = Vector (*)(const Arguments&, const Surroundings&);

const SamplerState& samplerOf(const Vector& v, const Surroundings& s) {
  const size_t i = v.v[0] > 0 ? static_cast<size_t>(std::min(v.v[0], 1000.0F)) : 0;  // NaN too
  return s.samplers[std::min(i, s.samplers.size() - 1)];
}

Vector sampled(const Vector& sampler, const Vector& place, const Surroundings& s) {
  const SamplerState& state = samplerOf(sampler, s);
  if (!state.reader) return {{}, 4};
  const Pixel p = state.isNearest ? state.reader->nearest(place.at(0), place.at(1))
                                  : state.reader->sample(place.at(0), place.at(1));
  return {{p.r, p.g, p.b, p.a}, 4};
}

Vector premultiplied(const Vector& c) {
  return {{c.v[0] * c.v[3], c.v[1] * c.v[3], c.v[2] * c.v[3], c.v[3]}, 4};
}

Vector unpremultiplied(const Vector& c) {
  if (c.v[3] <= 0) return {{}, 4};
  return {{c.v[0] / c.v[3], c.v[1] / c.v[3], c.v[2] / c.v[3], c.v[3]}, 4};
}

Vector cross(const Vector& a, const Vector& b) {
  const auto& u = a.v;
  const auto& v = b.v;
  return {{u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0], 0}, 3};
}

struct BuiltinFunction {
  const char* name;
  Builtin run;
};

#define KERNEL_EACH(NAME, EXPRESSION)                                 \
  {                                                                   \
    NAME, [](const Arguments& a, const Surroundings&) {               \
      return each(a[0], [](float v) -> float { return EXPRESSION; }); \
    }                                                                 \
  }
#define KERNEL_PAIR(NAME, EXPRESSION)                                                \
  {                                                                                  \
    NAME, [](const Arguments& a, const Surroundings&) {                              \
      return each(a[0], a[1], [](float u, float v) -> float { return EXPRESSION; }); \
    }                                                                                \
  }
#define KERNEL_VALUE(NAME, EXPRESSION)                                              \
  {                                                                                 \
    NAME,                                                                           \
        []([[maybe_unused]] const Arguments& a,                                     \
           [[maybe_unused]] const Surroundings& s) -> Vector { return EXPRESSION; } \
  }

constexpr float degree = 0.017453292F;

const BuiltinFunction builtins[] = {
    KERNEL_EACH("sin", std::sin(v)),
    KERNEL_EACH("cos", std::cos(v)),
    KERNEL_EACH("tan", std::tan(v)),
    KERNEL_EACH("asin", std::asin(v)),
    KERNEL_EACH("acos", std::acos(v)),
    KERNEL_EACH("exp", std::exp(v)),
    KERNEL_EACH("exp2", std::exp2(v)),
    KERNEL_EACH("log", std::log(v)),
    KERNEL_EACH("log2", std::log2(v)),
    KERNEL_EACH("sqrt", std::sqrt(v)),
    KERNEL_EACH("inversesqrt", 1 / std::sqrt(v)),
    KERNEL_EACH("abs", std::abs(v)),
    KERNEL_EACH("floor", std::floor(v)),
    KERNEL_EACH("ceil", std::ceil(v)),
    KERNEL_EACH("fract", v - std::floor(v)),
    KERNEL_EACH("sign", v > 0 ? 1.0F : (v < 0 ? -1.0F : 0.0F)),
    KERNEL_EACH("radians", v* degree),
    KERNEL_EACH("degrees", v / degree),
    KERNEL_PAIR("pow", std::pow(u, v)),
    KERNEL_PAIR("mod", u - v * std::floor(u / v)),
    KERNEL_PAIR("min", std::min(u, v)),
    KERNEL_PAIR("max", std::max(u, v)),
    KERNEL_PAIR("step", v < u ? 0.0F : 1.0F),
    KERNEL_PAIR("atan", std::atan2(u, v)),
    KERNEL_VALUE("clamp", each(a[0], a[1], a[2],
                               [](float v, float low, float high) {
                                 return std::min(std::max(v, low), high);
                               })),
    KERNEL_VALUE("mix",
                 each(a[0], a[1], a[2], [](float u, float v, float t) { return u + (v - u) * t; })),
    KERNEL_VALUE("smoothstep",
                 each(a[0], a[1], a[2],
                      [](float low, float high, float v) { return smoothStep(low, high, v); })),
    KERNEL_VALUE("compare",
                 each(a[0], a[1], a[2], [](float v, float u, float w) { return v < 0 ? u : w; })),
    KERNEL_VALUE("dot", dot(a[0], a[1])),
    KERNEL_VALUE("length", length(a[0])),
    KERNEL_VALUE("distance", length(each(a[0], a[1], [](float u, float v) { return u - v; }))),
    KERNEL_VALUE("normalize", each(a[0], Vector(std::max(length(a[0]), 1e-20F)),
                                   [](float v, float l) { return v / l; })),
    KERNEL_VALUE("cross", cross(a[0], a[1])),
    KERNEL_VALUE(
        "reflect",
        each(a[0], each(a[1], Vector(2 * dot(a[0], a[1])), [](float u, float v) { return u * v; }),
             [](float u, float v) { return u - v; })),
    KERNEL_VALUE("premultiply", premultiplied(a[0])),
    KERNEL_VALUE("unpremultiply", unpremultiplied(a[0])),
    KERNEL_VALUE("destCoord", Vector({s.x, s.y}, 2)),
    KERNEL_VALUE("sample", sampled(a[0], a[1], s)),
    KERNEL_VALUE("samplerCoord", Vector({s.x, s.y}, 2)),
    KERNEL_VALUE("samplerTransform", Vector({a[1].at(0), a[1].at(1)}, 2)),
    KERNEL_VALUE("samplerSize", Vector({float(samplerOf(a[0], s).extent.width()),
                                        float(samplerOf(a[0], s).extent.height())},
                                       2)),
    KERNEL_VALUE(
        "samplerOrigin",
        Vector({float(samplerOf(a[0], s).extent.x()), float(samplerOf(a[0], s).extent.y())}, 2)),
    KERNEL_VALUE("samplerExtent",
                 Vector({float(samplerOf(a[0], s).extent.x()), float(samplerOf(a[0], s).extent.y()),
                         float(samplerOf(a[0], s).extent.width()),
                         float(samplerOf(a[0], s).extent.height())},
                        4)),
};
#undef KERNEL_EACH
#undef KERNEL_PAIR
#undef KERNEL_VALUE

}  // namespace

int builtinIndex(const QString& name) {
  for (size_t i = 0; i < std::size(builtins); ++i)
    if (name == QLatin1String(builtins[i].name)) return static_cast<int>(i);
  return -1;
}

Vector callBuiltin(int index, const Arguments& arguments, const Surroundings& around) {
  return builtins[index].run(arguments, around);
}

}  // namespace runtime::image::kernel
