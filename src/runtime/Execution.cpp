#include "runtime/Execution.h"

#include <QDir>
#include <QUrl>

#include "runtime/CompositionInstance.h"

namespace runtime {

namespace {
const Value nothing;
}

void PatchEvaluator::pullInputs(Execution& x) {
  x.pullAll();
}

const CompiledNode& Execution::node() const {
  return m_instance.node(m_node);
}

int Execution::inputCount() const {
  return static_cast<int>(m_memory.inputs.size());
}

int Execution::outputCount() const {
  return static_cast<int>(m_memory.outputs.size());
}

void Execution::pull(int input) {
  m_instance.pullInput(m_node, m_memory, input);
}

void Execution::pullAll() {
  for (int i = 0; i < inputCount(); ++i) pull(i);
}

const Value& Execution::value(int input) const {
  return input >= 0 && input < inputCount() ? m_memory.inputs[static_cast<size_t>(input)] : nothing;
}

double Execution::number(int input) const {
  return value(input).toNumber();
}
quint64 Execution::index(int input) const {
  return value(input).toIndex();
}
bool Execution::boolean(int input) const {
  return value(input).toBoolean();
}
QString Execution::string(int input) const {
  return value(input).toString();
}
foundation::Color Execution::color(int input) const {
  return value(input).toColor();
}
Image Execution::image(int input) const {
  return value(input).toImage();
}
Structure Execution::structure(int input) const {
  return value(input).toStructure();
}

bool Execution::changed(int input) const {
  return input >= 0 && input < inputCount() &&
         (!m_memory.executed || m_memory.changed[static_cast<size_t>(input)]);
}

bool Execution::isConnected(int input) const {
  return input >= 0 && input < inputCount() && node().links[static_cast<size_t>(input)].node >= 0;
}

bool Execution::firstExecution() const {
  return !m_memory.executed;
}

void Execution::setOutput(int output, Value value) {
  if (output < 0 || output >= outputCount()) return;
  const auto i = static_cast<size_t>(output);
  const PortType type = node().ports.outputs[output].type;
  if (type != PortType::Virtual && value.type() != type) {
    value = value.converted(type);
    if (value.isEmpty()) value = Value::zero(type);
  }
  if (m_memory.outputVersions[i] != 0 && value == m_memory.outputs[i]) return;
  m_memory.outputs[i] = std::move(value);
  m_memory.outputVersions[i] = ++m_instance.m_version;
}

const Value& Execution::output(int output) const {
  return output >= 0 && output < outputCount() ? m_memory.outputs[static_cast<size_t>(output)]
                                               : nothing;
}

double Execution::time() const {
  return m_memory.time;
}
double Execution::timeStep() const {
  return m_memory.timeStep;
}
quint64 Execution::frameNumber() const {
  return m_instance.m_frame;
}

const ContentContext& Execution::context() const {
  return m_instance.contextOf(node().scope);
}

void Execution::draw(DrawItem item) {
  const ContentContext& around = context();
  if (!around.list) return;
  if (++m_instance.m_drawItems > budget().drawItems) {
    report(QStringLiteral("more than %1 objects in one frame; the rest is left out")
               .arg(budget().drawItems));
    return;
  }
  around.list->items.push_back(std::move(item));
}

qint64 Execution::iterationIndex() const {
  for (int s = node().scope; s >= 0;
       s = m_instance.m_compiled->scopes()[static_cast<size_t>(s)].parent)
    if (const auto& state = m_instance.m_scopes[static_cast<size_t>(s)]; state.iterationCount > 0)
      return state.iterationIndex;
  return 0;
}

qint64 Execution::iterationCount() const {
  for (int s = node().scope; s >= 0;
       s = m_instance.m_compiled->scopes()[static_cast<size_t>(s)].parent)
    if (const auto& state = m_instance.m_scopes[static_cast<size_t>(s)]; state.iterationCount > 0)
      return state.iterationCount;
  return 0;
}

const FrameArguments& Execution::arguments() const {
  return m_instance.m_arguments;
}
const Budget& Execution::budget() const {
  return m_instance.compiled().budget();
}
QVariantHash& Execution::userInfo() {
  return m_instance.m_userInfo;
}

std::shared_ptr<void>& Execution::sharedPlace(std::type_index type) {
  return m_instance.m_shared[type];
}

QString Execution::resolvePath(const QString& location) const {
  if (location.isEmpty()) return {};
  if (location.startsWith(QLatin1String("file:"))) return QUrl(location).toLocalFile();
  if (location.startsWith(QLatin1String("~/"))) return QDir::homePath() + location.mid(1);
  if (QDir::isAbsolutePath(location)) return location;
  const QString folder = m_instance.m_userInfo.value(QStringLiteral("baseFolder")).toString();
  const QString base = folder.isEmpty() ? node().description.baseFolder : folder;
  return base.isEmpty() ? location : QDir(base).filePath(location);
}

void Execution::report(const QString& finding) {
  m_instance.report(m_node, finding);
}

void Execution::runContent(const ContentContext& context) {
  if (node().content >= 0) m_instance.runScope(node().content, context);
}

void Execution::runIteration(const ContentContext& context, qint64 index, qint64 count) {
  if (node().content < 0 || !m_instance.enterIteration(node().content, index, count)) return;
  m_instance.runScope(node().content, context);
  m_instance.keepFeedback(node().content);
  for (const int inner : m_instance.m_compiled->scopes()[static_cast<size_t>(node().content)].inner)
    m_instance.keepFeedback(inner);
}

void Execution::runContentAtTime(const ContentContext& context, double time, qint64 index) {
  if (node().content < 0) return;
  m_instance.m_scopes[static_cast<size_t>(node().content)].forcedTime = time;
  runIteration(context, index, 0);
}

void Execution::endIterations() {
  if (node().content >= 0) m_instance.leaveIterations(node().content);
}

Value Execution::previousPublishedValue(const QString& key) const {
  const auto& scope = m_instance.m_scopes[static_cast<size_t>(node().scope)];
  const auto found = scope.fedBack.find({key, scope.slot});
  return found == scope.fedBack.end() ? Value() : found->second;
}

}  // namespace runtime
