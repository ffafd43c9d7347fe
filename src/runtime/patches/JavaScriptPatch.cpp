#include <QCoreApplication>

#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/PortHelpers.h"
#include "runtime/patches/SeededRandom.h"
#include "runtime/script/ScriptEngine.h"
#include "runtime/script/ScriptSource.h"
#include "runtime/script/ScriptValues.h"
#include "runtime/script/ScriptWatchdog.h"

namespace runtime::patches {

using script::ScriptEngine;
using script::ScriptParameter;
using script::ScriptSource;

namespace {

constexpr int mostPositionalPorts = 256;

ScriptSource sourceOf(const NodeDescription& node) {
  // Older files write the numbers under other names.
  const auto count = [&node](QStringView key, QStringView oldKey) {
    return stateCount(node, key, stateCount(node, oldKey, 0, 0, mostPositionalPorts), 0,
                      mostPositionalPorts);
  };
  return ScriptSource(node.state.value(u"script").toString(),
                      count(u"numberOfInputs", u"inputCount"),
                      count(u"numberOfOutputs", u"outputCount"));
}

/// Runs a script when an input changed. What the script throws is reported once and leaves the
/// outputs as they were; a script that exceeds its time is not run again.
class JavaScriptEvaluator : public PatchEvaluator {
 public:
  explicit JavaScriptEvaluator(const NodeDescription& node) : m_source(sourceOf(node)) {}

  void execute(Execution& x) override {
    if (m_stopped) return;
    if (!QCoreApplication::instance()) return stop(x, QStringLiteral("needs an application"));
    ScriptEngine& engine = x.shared<ScriptEngine>();
    engine.setClock(x.arguments().wallClock.toMSecsSinceEpoch());
    const std::chrono::milliseconds most(std::max<qint64>(x.budget().scriptMilliseconds, 1));
    const Interruption* interruption = x.arguments().interruption.get();
    const auto limit = interruption ? std::min(most, interruption->remaining()) : most;
    const script::ScriptWatchdog::Guard guard(engine.engine(), limit);
    const QString error = run(x, engine);
    if (guard.expired() && limit < most) return;  // the frame ends; the script is not to blame
    if (guard.expired())
      stop(x, QStringLiteral("stopped after %1 ms; it is not run again").arg(limit.count()));
    else if (!error.isEmpty())
      reportOnce(x, error);
  }

 private:
  /// Says what went wrong, if anything did.
  QString run(Execution& x, ScriptEngine& engine) {
    if (!m_started) {
      m_started = true;
      m_instance = engine.start(m_source.program(), seed(x));
      m_stopped = m_instance.main.isError();
      if (m_stopped) return ScriptEngine::errorText(m_instance.main);
    }
    const QJSValue result = engine.call(m_instance, arguments(x, engine));
    if (result.isError()) return ScriptEngine::errorText(result);
    if (result.isObject()) setOutputs(x, result);
    return {};
  }

  static quint32 seed(const Execution& x) {
    quint64 state = seedOf(x.node().path) + static_cast<quint64>(x.iterationIndex());
    return static_cast<quint32>(nextRandom(state) * 4294967295.0);
  }

  QJSValueList arguments(const Execution& x, ScriptEngine& engine) const {
    QJSValueList list;
    int port = 0;
    for (const ScriptParameter& input : m_source.inputs()) {
      if (input.count == 0) {
        list.append(script::toScript(engine.engine(), x.value(port++)));
        continue;
      }
      QJSValue array = engine.engine().newArray(static_cast<uint>(input.count));
      for (int i = 0; i < input.count; ++i)
        array.setProperty(static_cast<quint32>(i),
                          script::toScript(engine.engine(), x.value(port++)));
      list.append(array);
    }
    return list;
  }

  void setOutputs(Execution& x, const QJSValue& result) const {
    int port = 0;
    for (const ScriptParameter& output : m_source.outputs()) {
      const QJSValue value = result.property(output.name);
      for (int i = 0; i < output.portCount(); ++i, ++port) {
        const QJSValue one = output.count > 0 ? value.property(static_cast<quint32>(i)) : value;
        // What the script leaves out keeps its value.
        if (!one.isUndefined() && !one.isError()) x.setOutput(port, script::fromScript(one));
      }
    }
  }

  void stop(Execution& x, const QString& why) {
    m_stopped = true;
    reportOnce(x, why);
  }

  void reportOnce(Execution& x, const QString& what) {
    if (!m_reported) x.report(QStringLiteral("script: %1").arg(what));
    m_reported = true;
  }

  ScriptSource m_source;
  ScriptEngine::Instance m_instance;
  bool m_started = false;
  bool m_stopped = false;
  bool m_reported = false;
};

void addScriptPorts(const NodeDescription& node, PatchPorts& ports) {
  const ScriptSource source = sourceOf(node);
  const auto add = [](QList<Port>& list, const QList<ScriptParameter>& parameters) {
    for (const ScriptParameter& parameter : parameters)
      for (int i = 0; i < parameter.portCount(); ++i)
        list.append(Port(parameter.portKey(i), parameter.type, {}, parameter.portKey(i)));
  };
  add(ports.inputs, source.inputs());
  add(ports.outputs, source.outputs());
}

}  // namespace

void registerJavaScriptPatch(PatchRegistry& registry) {
  registry.add(
      {.className = QStringLiteral("QCJavaScript"),
       .title = QStringLiteral("JavaScript"),
       .dynamicPorts =
           QStringLiteral("the parameters of main; input_n and output_n in old scripts"),
       .status = QStringLiteral(
           "colours and meshes can only be passed on, as images; variables that a script of the "
           "old kind declares with var do not live on; Math.random repeats itself from one "
           "rendering to the next; Log writes nothing"),
       .addPorts = addScriptPorts,
       .make = makeFromNode<JavaScriptEvaluator>});
}

}  // namespace runtime::patches
