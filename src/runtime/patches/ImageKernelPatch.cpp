#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/image/Pixel.h"
#include "runtime/image/kernel/KernelImage.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/PortHelpers.h"
#include "runtime/script/ScriptSource.h"

namespace runtime::patches {

namespace {

namespace kernel = image::kernel;
using kernel::Type;

QString sourceOf(const NodeDescription& node) {
  return node.state.value(u"sourceCode").toString();
}

bool hasSamplerOptions(const NodeDescription& node) {
  return node.state.value(u"showSamplerOptions").toBool();
}

void addPortsOf(const kernel::Parameter& parameter, bool samplerOptions, QList<Port>& ports) {
  const QString& name = parameter.name;
  const auto add = [&ports](const QString& key, PortType type, const Value& standard = {}) {
    ports.append(Port(key, type, standard, key));
  };
  if (parameter.type == Type::Sampler) {
    add(name, PortType::Image);
    if (!samplerOptions) return;
    add(name + QStringLiteral("-FilterMode"), PortType::Index, Value::index(1));
    add(name + QStringLiteral("-WrapMode"), PortType::Index);
  } else if (parameter.type == Type::Color) {
    add(name, PortType::Color);
  } else if (const int count = kernel::componentCount(parameter.type); count == 1) {
    add(name, PortType::Number);
  } else {
    for (int i = 0; i < count; ++i)
      add(name + QLatin1Char('_') + QLatin1Char("XYZW"[i]), PortType::Number);
  }
}

bool isJoinedByScript(const NodeDescription& node) {
  return node.state.value(u"advancedMode").toBool();
}

void addKernelPorts(const NodeDescription& node, PatchPorts& ports) {
  if (isJoinedByScript(node)) {
    const script::ScriptSource source(node.state.value(u"main").toString(), 0, 0);
    for (const script::ScriptParameter& input : source.inputs())
      ports.inputs.append(Port(input.key, input.type, {}, input.key));
    return;
  }
  for (const kernel::Parameter& parameter : kernel::Program::parameters(sourceOf(node)))
    addPortsOf(parameter, hasSamplerOptions(node), ports.inputs);
}

/// Computes an image by a kernel; its parameters are the ports.
class ImageKernelEvaluator : public PatchEvaluator {
 public:
  explicit ImageKernelEvaluator(const NodeDescription& node)
      : m_samplerOptions(hasSamplerOptions(node)) {
    if (isJoinedByScript(node)) {
      m_problem = QStringLiteral("kernels joined by a script are not supported");
      return;
    }
    const auto program = kernel::Program::parse(sourceOf(node));
    if (program)
      m_program = *program;
    else
      m_problem = program.error().message;
  }

  void execute(Execution& x) override {
    if (!m_program) {
      x.report(m_problem);
      return;
    }
    std::vector<kernel::Argument> arguments;
    int port = 0;
    for (const kernel::Parameter& parameter : m_program->kernel()->parameters)
      arguments.push_back(argument(x, parameter.type, port));
    x.setOutput(0, kernel::kernelImage(m_program, std::move(arguments)));
  }

 private:
  kernel::Argument argument(const Execution& x, Type type, int& port) const {
    kernel::Argument a;
    if (type == Type::Sampler) {
      a.image = x.image(port++);
      if (m_samplerOptions) {
        a.isNearest = x.index(port++) == 0;
        a.clampsToEdge = x.index(port++) == 1;
      }
    } else if (type == Type::Color) {
      const image::Pixel p = image::Pixel::fromColor(x.color(port++));
      a.numbers = {p.r, p.g, p.b, p.a};
    } else {
      for (int i = 0; i < kernel::componentCount(type); ++i)
        a.numbers[static_cast<size_t>(i)] = static_cast<float>(x.number(port++));
    }
    return a;
  }

  bool m_samplerOptions;
  std::shared_ptr<const kernel::Program> m_program;
  QString m_problem;
};

}  // namespace

void registerImageKernelPatch(PatchRegistry& registry) {
  registry.add({.className = QStringLiteral("QCImageKernel"),
                .title = QStringLiteral("Core Image Filter"),
                .ports = {{}, {portOf(PortType::Image, "outputImage", "Image")}},
                .dynamicPorts = QStringLiteral("the parameters of the first kernel, or of "
                                               "the script that joins several"),
                .status = QStringLiteral(
                    "one kernel, without the advanced mode's script; colours above alpha are "
                    "cut off; the result covers what its images cover"),
                .addPorts = addKernelPorts,
                .make = makeFromNode<ImageKernelEvaluator>});
}

}  // namespace runtime::patches
