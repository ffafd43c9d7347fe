#include "runtime/image/kernel/KernelImage.h"

#include <optional>
#include <utility>

#include "runtime/image/ComputedImage.h"
#include "runtime/image/PixelReader.h"

namespace runtime::image::kernel {

namespace {

constexpr qint64 stepsPerPixel = 100'000;
constexpr qint64 stepsPerImage = 1'000'000'000;
constexpr int deepestCall = 16;

struct Vector {
  std::array<float, 4> v = {};
  int count = 1;
  bool isInteger = false;

  Vector() = default;
  Vector(float x) : v{x} {}
  Vector(std::array<float, 4> all, int count) : v(all), count(count) {}
  [[nodiscard]] bool truth() const { return v[0] != 0; }
  /// A scalar counts for each component.
  [[nodiscard]] float at(int i) const { return v[static_cast<size_t>(count == 1 ? 0 : i)]; }
};

template <typename F>
Vector each(const Vector& a, const F& f) {
  Vector out;
  out.count = a.count;
  for (int i = 0; i < out.count; ++i) out.v[static_cast<size_t>(i)] = f(a.at(i));
  return out;
}

template <typename F>
Vector each(const Vector& a, const Vector& b, const F& f) {
  Vector out;
  out.count = std::max(a.count, b.count);
  for (int i = 0; i < out.count; ++i) out.v[static_cast<size_t>(i)] = f(a.at(i), b.at(i));
  return out;
}

template <typename F>
Vector each(const Vector& a, const Vector& b, const Vector& c, const F& f) {
  Vector out;
  out.count = std::max({a.count, b.count, c.count});
  for (int i = 0; i < out.count; ++i) out.v[static_cast<size_t>(i)] = f(a.at(i), b.at(i), c.at(i));
  return out;
}

float dot(const Vector& a, const Vector& b) {
  float sum = 0;
  for (int i = 0; i < std::max(a.count, b.count); ++i) sum += a.at(i) * b.at(i);
  return sum;
}

float length(const Vector& a) {
  return std::sqrt(dot(a, a));
}

struct SamplerState {
  QRect extent;
  bool isNearest = false;
  std::optional<PixelReader> reader;
};

/// What built-in functions can see.
struct Surroundings {
  float x = 0;
  float y = 0;
  std::vector<SamplerState> samplers;  // by parameter
};

using Arguments = std::array<Vector, 4>;
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

/// Runs the program for one pixel after the other. One a thread.
class Machine {
 public:
  Machine(const Program& program, Surroundings surroundings, const std::vector<Argument>& arguments)
      : m_program(program),
        m_kernel(*program.kernel()),
        m_globals(static_cast<size_t>(program.globalSlots)),
        m_around(std::move(surroundings)) {
    for (size_t i = 0; i < arguments.size(); ++i) {
      const Type type = m_kernel.parameters[i].type;
      Vector v(arguments[i].numbers, componentCount(type));
      if (type == Type::Sampler) v = Vector(static_cast<float>(i));
      m_arguments.push_back(v);
    }
    m_stepsLeft = stepsPerPixel;
    for (const NodePointer& global : program.globals) run(*global);
  }

  Pixel pixel(double x, double y) {
    if (m_total > stepsPerImage) return {};
    m_around.x = static_cast<float>(x);
    m_around.y = static_cast<float>(y);
    m_stepsLeft = stepsPerPixel;
    const Vector result = call(m_kernel, m_arguments);
    m_total += stepsPerPixel - m_stepsLeft;
    if (m_stepsLeft <= 0) return {};
    return {result.at(0), result.at(1), result.at(2), result.count == 4 ? result.v[3] : 1};
  }

 private:
  enum class Flow : quint8 { Next, Break, Continue, Return };

  Vector call(const Function& function, std::vector<Vector> arguments) {
    if (++m_depth > deepestCall) m_stepsLeft = 0;  // recursion is not part of the language
    arguments.resize(static_cast<size_t>(std::max(function.slots, 1)));
    std::swap(m_locals, arguments);
    m_result = {};
    if (m_stepsLeft > 0) run(*function.body);
    std::swap(m_locals, arguments);
    --m_depth;
    return std::exchange(m_result, {});
  }

  Flow run(const Node& node) {
    if (--m_stepsLeft <= 0) return Flow::Return;
    switch (node.op) {
      case Op::Block:
        for (const NodePointer& child : node.children)
          if (const Flow flow = run(*child); flow != Flow::Next) return flow;
        return Flow::Next;
      case Op::Declare:
        declare(node);
        return Flow::Next;
      case Op::If:
        if (value(*node.children[0]).truth()) return run(*node.children[1]);
        return node.children.size() > 2 ? run(*node.children[2]) : Flow::Next;
      case Op::Loop:
        return loop(node);
      case Op::Return:
        if (!node.children.empty()) m_result = value(*node.children[0]);
        return Flow::Return;
      case Op::Break:
        return Flow::Break;
      case Op::Continue:
        return Flow::Continue;
      default:
        (void)value(node);
        return Flow::Next;
    }
  }

  Flow loop(const Node& node) {
    while (m_stepsLeft > 0 && value(*node.children[0]).truth()) {
      const Flow flow = run(*node.children[1]);
      if (flow == Flow::Return) return flow;
      if (flow == Flow::Break) break;
      run(*node.children[2]);
    }
    return m_stepsLeft > 0 ? Flow::Next : Flow::Return;
  }

  void declare(const Node& node) {
    Vector v;
    if (!node.children.empty()) v = value(*node.children[0]);
    if (const int count = componentCount(node.type); v.count != count) v = widened(v, count);
    v.isInteger = node.type == Type::Int;
    if (v.isInteger) v.v[0] = std::trunc(v.v[0]);
    (m_depth > 0 ? m_locals : m_globals)[static_cast<size_t>(node.index)] = v;
  }

  static Vector widened(const Vector& v, int count) {
    Vector out;
    out.count = count;
    for (int i = 0; i < count; ++i) out.v[static_cast<size_t>(i)] = v.at(i);
    return out;
  }

  Vector& place(const Node& node) {
    return (node.op == Op::Local ? m_locals : m_globals)[static_cast<size_t>(node.index)];
  }

  Vector assign(const Node& node) {
    const Vector v = value(*node.children[1]);
    const Node& target = *node.children[0];
    if (target.op != Op::Swizzle) {
      Vector& variable = place(target);
      const Vector before = variable;
      variable = widened(v, before.count);
      variable.isInteger = before.isInteger;
      if (before.isInteger) variable.v[0] = std::trunc(variable.v[0]);
      return node.index == 1 ? before : variable;
    }
    Vector& variable = place(*target.children[0]);
    for (size_t i = 0; i < target.components.size(); ++i)
      variable.v[target.components[i]] = v.at(static_cast<int>(i));
    return v;
  }

  Vector construct(const Node& node) {
    const int count = componentCount(node.type);
    Vector out;
    out.count = count;
    int filled = 0;
    for (const NodePointer& child : node.children) {
      const Vector part = value(*child);
      if (node.children.size() == 1 && part.count == 1) {
        out = widened(part, count);
        break;
      }
      for (int i = 0; i < part.count && filled < count; ++i)
        out.v[static_cast<size_t>(filled++)] = part.at(i);
    }
    out.isInteger = node.type == Type::Int;
    if (out.isInteger) out.v[0] = std::trunc(out.v[0]);
    return out;
  }

  Vector swizzled(const Node& node) {
    const Vector from = value(*node.children[0]);
    Vector out;
    out.count = static_cast<int>(node.components.size());
    for (size_t i = 0; i < node.components.size(); ++i) out.v[i] = from.v[node.components[i]];
    return out;
  }

  Vector builtin(const Node& node) {
    Arguments arguments;
    for (size_t i = 0; i < std::min<size_t>(node.children.size(), 4); ++i)
      arguments[i] = value(*node.children[i]);
    if (node.children.size() == 1) arguments[1] = Vector(1.0F);  // atan(v) is atan(v, 1)
    return builtins[node.index].run(arguments, m_around);
  }

  template <typename F>
  Vector arithmetic(const Node& node, const F& f) {
    const Vector a = value(*node.children[0]);
    const Vector b = value(*node.children[1]);
    Vector out = each(a, b, f);
    out.isInteger = a.isInteger && b.isInteger;
    if (out.isInteger) out.v[0] = std::trunc(out.v[0]);
    return out;
  }

  template <typename F>
  Vector comparison(const Node& node, const F& f) {
    return f(value(*node.children[0]).v[0], value(*node.children[1]).v[0]) ? 1.0F : 0.0F;
  }

  Vector value(const Node& node) {
    if (--m_stepsLeft <= 0) return {};
    switch (node.op) {
      case Op::Number: {
        Vector v(node.number);
        v.isInteger = node.isInteger;
        return v;
      }
      case Op::Local:
      case Op::Global:
        return place(node);
      case Op::Swizzle:
        return swizzled(node);
      case Op::Negate: {
        const Vector v = value(*node.children[0]);
        Vector out = each(v, [](float c) { return -c; });
        out.isInteger = v.isInteger;
        return out;
      }
      case Op::Not:
        return value(*node.children[0]).truth() ? 0.0F : 1.0F;
      case Op::Add:
        return arithmetic(node, [](float u, float v) { return u + v; });
      case Op::Subtract:
        return arithmetic(node, [](float u, float v) { return u - v; });
      case Op::Multiply:
        return arithmetic(node, [](float u, float v) { return u * v; });
      case Op::Divide:
        return arithmetic(node, [](float u, float v) { return v == 0 && u == 0 ? 0 : u / v; });
      case Op::And:
        return value(*node.children[0]).truth() && value(*node.children[1]).truth() ? 1.0F : 0.0F;
      case Op::Or:
        return value(*node.children[0]).truth() || value(*node.children[1]).truth() ? 1.0F : 0.0F;
      case Op::Choose:
        return value(*node.children[value(*node.children[0]).truth() ? 1 : 2]);
      case Op::Assign:
        return assign(node);
      case Op::Construct:
        return construct(node);
      case Op::Builtin:
        return builtin(node);
      case Op::Call: {
        std::vector<Vector> arguments;
        for (const NodePointer& child : node.children) arguments.push_back(value(*child));
        return call(m_program.functions[static_cast<size_t>(node.index)], std::move(arguments));
      }
      default:
        return compared(node);
    }
  }

  Vector compared(const Node& node) {
    switch (node.op) {
      case Op::Less:
        return comparison(node, [](float u, float v) { return u < v; });
      case Op::LessEqual:
        return comparison(node, [](float u, float v) { return u <= v; });
      case Op::Greater:
        return comparison(node, [](float u, float v) { return u > v; });
      case Op::GreaterEqual:
        return comparison(node, [](float u, float v) { return u >= v; });
      case Op::Equal:
        return comparison(node, [](float u, float v) { return u == v; });
      case Op::NotEqual:
        return comparison(node, [](float u, float v) { return u != v; });
      default:
        return {};
    }
  }

  const Program& m_program;
  const Function& m_kernel;
  std::vector<Vector> m_globals;
  std::vector<Vector> m_locals;
  std::vector<Vector> m_arguments;
  Surroundings m_around;
  Vector m_result;
  int m_depth = 0;
  qint64 m_stepsLeft = 0;
  qint64 m_total = 0;
};

QImage rendered(const Program& program, const std::vector<Argument>& arguments, const QRect& area) {
  Surroundings around;
  for (const Argument& a : arguments) {
    SamplerState state;
    if (!a.image.isNull()) {
      state.extent = a.image.isInfinite() ? area : a.image.extent();
      state.isNearest = a.isNearest;
      state.reader.emplace(
          a.image, a.image.isInfinite() ? grown(area, 256) : state.extent,
          a.clampsToEdge ? PixelReader::Outside::Edge : PixelReader::Outside::Transparent);
    }
    around.samplers.push_back(std::move(state));
  }
  if (around.samplers.empty()) around.samplers.emplace_back();
  Machine machine(program, std::move(around), arguments);
  return paintArea(area, [&machine](double x, double y) { return machine.pixel(x, y); });
}

}  // namespace

int builtinIndex(const QString& name) {
  for (size_t i = 0; i < std::size(builtins); ++i)
    if (name == QLatin1String(builtins[i].name)) return static_cast<int>(i);
  return -1;
}

Image kernelImage(std::shared_ptr<const Program> program, std::vector<Argument> arguments) {
  std::vector<Image> images;
  bool hasSampler = false;
  bool infinite = false;
  QRect extent;
  const auto& parameters = program->kernel()->parameters;
  arguments.resize(parameters.size());
  for (size_t i = 0; i < parameters.size(); ++i) {
    if (parameters[i].type != Type::Sampler) continue;
    hasSampler = true;
    const Image& image = arguments[i].image;
    if (image.isNull()) continue;
    images.push_back(image);
    infinite |= image.isInfinite();
    if (!image.isInfinite()) extent |= image.extent();
  }
  const auto render = [program, arguments](const QRect& area) {
    return rendered(*program, arguments, area);
  };
  if (!hasSampler || infinite) return ComputedImage::infinite(images, render);
  return ComputedImage::finite(extent, images, render);
}

}  // namespace runtime::image::kernel
