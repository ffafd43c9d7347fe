#include <QFileInfo>

#include "runtime/CompositionRenderer.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/PortHelpers.h"

namespace runtime::patches {

namespace {

constexpr qsizetype maximumDepth = 8;

/// The files that loaders on this thread are running, outermost first: a composition that loads
/// itself must end somewhere.
QStringList& runningFiles() {
  static thread_local QStringList files;
  return files;
}

struct RunningFile {
  explicit RunningFile(const QString& path) { runningFiles().append(path); }
  ~RunningFile() { runningFiles().removeLast(); }
  RunningFile(const RunningFile&) = delete;
  RunningFile& operator=(const RunningFile&) = delete;
};

bool isConsumerMode(const NodeDescription& node) {
  return node.state.value(u"compositionMode").toString() == QLatin1String("consumer");
}

/// "_protocolInput_Image" is the published key "inputImage"; other keys are themselves.
QString publishedKey(const QString& port) {
  for (const auto& [prefix, direction] :
       {std::pair(QLatin1String("_protocolInput_"), QLatin1String("input")),
        std::pair(QLatin1String("_protocolOutput_"), QLatin1String("output"))})
    if (port.startsWith(prefix)) return direction + port.mid(prefix.size());
  return port;
}

/// Brings what a composition drew for the whole destination under a transformation.
struct Mover {
  const QMatrix4x4& matrix;
  void operator()(ClearItem&) const {}
  void operator()(GradientItem&) const {}
  void operator()(QuadItem& item) const { item.matrix = matrix * item.matrix; }
  void operator()(MeshItem& item) const { item.matrix = matrix * item.matrix; }
  void operator()(LineItem& item) const {
    item.start = matrix.map(item.start);
    item.end = matrix.map(item.end);
  }
};

/// Runs another composition as if it stood here.
class CompositionLoaderEvaluator : public PatchEvaluator {
 public:
  explicit CompositionLoaderEvaluator(const NodeDescription& node)
      : m_draws(isConsumerMode(node)) {}

  void execute(Execution& x) override {
    const QString path = x.string(0).isEmpty() ? QString() : x.resolvePath(x.string(0));
    const QString file = QFileInfo(path).canonicalFilePath();
    if (!file.isEmpty() &&
        (runningFiles().contains(file) || runningFiles().size() >= maximumDepth)) {
      x.report(QStringLiteral("%1 loads itself").arg(path));
      clear(x);
      return;
    }
    const RunningFile running(file);
    if (x.firstExecution() || path != m_path) load(x, path);
    if (m_renderer)
      play(x);
    else
      clear(x);
  }

 private:
  void load(Execution& x, const QString& path) {
    m_path = path;
    m_renderer.reset();
    if (path.isEmpty()) return;
    auto loaded = CompositionRenderer::fromFile(path, x.budget());
    if (loaded)
      m_renderer = std::move(*loaded);
    else
      x.report(QStringLiteral("%1: %2").arg(path, loaded.error().message));
  }
  void play(Execution& x) {
    for (int i = 1; i < x.inputCount(); ++i) {
      const QString& key = x.node().ports.inputs[i].key;
      if (i != x.node().enableInput && i != x.node().timeInput && !x.value(i).isEmpty())
        m_renderer->setValueForInputKey(x.value(i), publishedKey(key));
    }
    const Destination& d = x.destination();
    DrawList list = m_renderer->renderAtTime(x.time(), {d.pixelsWide, d.pixelsHigh}, x.arguments());
    for (int i = 0; i < x.outputCount(); ++i)
      x.setOutput(i, m_renderer->valueForOutputKey(publishedKey(x.node().ports.outputs[i].key)));
    if (!m_draws) return;
    for (DrawItem& item : list.items) {
      std::visit(Mover{x.context().transform}, item);
      x.draw(std::move(item));
    }
  }
  static void clear(Execution& x) {
    for (int i = 0; i < x.outputCount(); ++i)
      x.setOutput(i, Value::zero(x.node().ports.outputs[i].type));
  }

  bool m_draws;
  QString m_path;
  std::unique_ptr<CompositionRenderer> m_renderer;
};

void addLoaderPorts(const NodeDescription& node, PatchPorts& ports) {
  for (const auto& [list, into] : {std::pair(u"compositionInputs", &ports.inputs),
                                   std::pair(u"compositionOutputs", &ports.outputs)})
    for (const foundation::PropertyValue& entry : node.state.value(list).array()) {
      const foundation::PropertyDictionary& d = entry.dictionary();
      const PortType type = portTypeForClass(d.value(u"class").toString());
      const foundation::PropertyValue& stored = d.value(u"state").dictionary().value(u"value");
      // An input that nobody sets must leave the composition's own value alone.
      Port port(d.value(u"key").toString(), type);
      port.defaultValue = stored.isNull() ? Value() : Value::fromProperty(stored, type);
      into->append(std::move(port));
    }
}

}  // namespace

void registerCompositionLoaderPatch(PatchRegistry& registry) {
  registry.add(
      {.className = QStringLiteral("QCPatchRenderer"),
       .title = QStringLiteral("Composition Loader"),
       .timeMode = PatchClass::TimeMode::TimeBase,
       .memory = PatchClass::Memory::Shared,
       .ports = {{stringPort("inputPath", "", "Composition Location")}, {}},
       .dynamicPorts = QStringLiteral("the listed ports of the composition, _protocolInput_X …"),
       .status = QStringLiteral("lighting and colour masks around it do not reach in"),
       .drawsWhen = isConsumerMode,
       .addPorts = addLoaderPorts,
       .make = makeFromNode<CompositionLoaderEvaluator>});
}

}  // namespace runtime::patches
