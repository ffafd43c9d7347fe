#include "runtime/image/kernel/KernelImage.h"

#include <utility>

#include "runtime/image/ComputedImage.h"
#include "runtime/image/kernel/KernelBuiltins.h"

namespace runtime::image::kernel {

namespace {

constexpr qint64 stepsPerPixel = 100'000;
constexpr qint64 stepsPerImage = 1'000'000'000;
constexpr int deepestCall = 16;

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
    return callBuiltin(node.index, arguments, m_around);
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
