#include "runtime/CompositionCompiler.h"

#include <QFileInfo>

#include "runtime/PatchRegistry.h"

namespace runtime {

using foundation::PropertyDictionary;
using foundation::PropertyValue;
using quartz::QuartzComposition;
using quartz::QuartzPatch;

namespace {

constexpr QStringView inputStates[] = {u"ivarInputPortStates", u"customInputPortStates",
                                       u"systemInputPortStates"};
constexpr int maximumChain = 4000;

TimeBase timeBaseOf(const PropertyDictionary& state) {
  const QString text = state.value(u"timebase").toString();
  if (text == QLatin1String("external")) return TimeBase::External;
  return text == QLatin1String("local") ? TimeBase::Local : TimeBase::Parent;
}

Value clamped(const Port& port, Value value) {
  if (!port.minimum && !port.maximum) return value;
  if (port.type != PortType::Number && port.type != PortType::Index) return value;
  double n = value.toNumber();
  if (port.minimum && n < *port.minimum) n = *port.minimum;
  if (port.maximum && n > *port.maximum) n = *port.maximum;
  return port.type == PortType::Number ? Value(n) : Value(n).converted(PortType::Index);
}

}  // namespace

CompositionCompiler::CompositionCompiler(const QuartzComposition& composition, QString fileName,
                                         const Budget& budget)
    : m_composition(composition),
      m_fileName(std::move(fileName)),
      m_baseFolder(m_fileName.isEmpty() ? QString() : QFileInfo(m_fileName).absolutePath()),
      m_budget(budget),
      m_result(std::make_shared<CompiledComposition>()) {
  m_result->m_budget = budget;
}

foundation::Result<std::shared_ptr<const CompiledComposition>> CompositionCompiler::compile() {
  const QuartzPatch& root = *m_composition.rootPatch();
  addScope(-1, -1);
  if (!compileContent(root, 0, QString(), 0)) return tl::unexpected(*m_error);
  publishRoot(root, m_composition.data().value(u"inputParameters").dictionary());
  reportUnknown();
  linkFeedback();
  if (!markVolatile()) return tl::unexpected(*m_error);
  return std::shared_ptr<const CompiledComposition>(m_result);
}

int CompositionCompiler::addScope(int parent, int macro) {
  const int index = static_cast<int>(m_result->m_scopes.size());
  CompiledScope scope;
  scope.parent = parent;
  scope.macro = macro;
  if (parent >= 0) {
    const CompiledScope& outer = m_result->m_scopes[static_cast<size_t>(parent)];
    const CompiledNode& node = m_result->m_nodes[static_cast<size_t>(macro)];
    scope.iterates = outer.iterates || (node.patchClass && node.patchClass->repeatsContent);
    scope.offscreenMacro =
        node.patchClass && node.patchClass->drawsOffscreen ? macro : outer.offscreenMacro;
    for (int s = parent; s >= 0; s = m_result->m_scopes[static_cast<size_t>(s)].parent)
      m_result->m_scopes[static_cast<size_t>(s)].inner.push_back(index);
  }
  m_result->m_scopes.push_back(std::move(scope));
  m_names.emplace_back();
  return index;
}

bool CompositionCompiler::compileContent(const QuartzPatch& patch, int scope, const QString& path,
                                         int depth) {
  if (depth > m_budget.depth)
    return fail(QStringLiteral("macros are nested too deeply"), path.left(200));
  for (const auto& child : patch.nodes()) {
    const int node = compileNode(*child, scope, path, depth);
    if (node < 0) return false;
    if (m_result->m_nodes[static_cast<size_t>(node)].isConsumer)
      m_result->m_scopes[static_cast<size_t>(scope)].consumers.push_back(node);
  }
  readPublished(patch, scope);
  readConnections(patch, scope);
  return true;
}

int CompositionCompiler::compileNode(const QuartzPatch& patch, int scope, const QString& path,
                                     int depth) {
  const int index = static_cast<int>(m_result->m_nodes.size());
  if (index >= m_budget.nodes) {
    fail(QStringLiteral("the composition has too many patches"),
         QStringLiteral("more than %1").arg(m_budget.nodes));
    return -1;
  }
  CompiledNode node;
  node.path = path.isEmpty() ? patch.key() : path + QLatin1Char('/') + patch.key();
  node.scope = scope;
  node.timeBase = timeBaseOf(patch.state());
  node.description = {patch.patchClass(), patch.data().value(u"identifier").toString(),
                      patch.state(), m_baseFolder};
  const NodeDescription& description = node.description;
  const bool isVirtual = description.className.startsWith(QLatin1Char('/'));
  node.patchClass = PatchRegistry::shared().find(
      isVirtual ? QStringLiteral("QCPatch") : description.className, description.identifier);
  if (node.patchClass) {
    node.ports = node.patchClass->ports;
    if (node.patchClass->addPorts) node.patchClass->addPorts(description, node.ports);
    node.isConsumer = node.patchClass->kind == PatchClass::Kind::Consumer ||
                      node.patchClass->alwaysConsumer ||
                      (node.patchClass->drawsWhen && node.patchClass->drawsWhen(description));
  }
  if (!isVirtual)
    countUse(description.className, description.identifier, node.patchClass != nullptr, node.path);
  m_names[static_cast<size_t>(scope)].nodes.insert(patch.key(), index);
  m_result->m_scopes[static_cast<size_t>(scope)].nodes.push_back(index);
  m_result->m_nodes.push_back(std::move(node));

  const bool ok = isVirtual ? compileVirtual(patch, index, depth)
                  : patch.nodes().empty() && !m_result->m_nodes.back().isMacro()
                      ? true
                      : compileMacroContent(patch, index, depth);
  if (!ok) return -1;
  addSystemPorts(m_result->m_nodes[static_cast<size_t>(index)]);
  readStoredValues(patch, index);
  return index;
}

bool CompositionCompiler::compileMacroContent(const QuartzPatch& patch, int node, int depth) {
  CompiledNode& macro = m_result->m_nodes[static_cast<size_t>(node)];
  const QString path = macro.path;
  const int scope = addScope(macro.scope, node);
  macro.content = scope;
  if (!compileContent(patch, scope, path, depth + 1)) return false;
  CompiledNode& again = m_result->m_nodes[static_cast<size_t>(node)];  // the vector has grown
  const bool offscreen = again.patchClass && again.patchClass->drawsOffscreen;
  if (!offscreen && !m_result->m_scopes[static_cast<size_t>(scope)].consumers.empty())
    again.isConsumer = again.patchClass != nullptr;
  return true;
}

bool CompositionCompiler::compileVirtual(const QuartzPatch& patch, int node, int depth) {
  const QString name = patch.patchClass();
  const PropertyValue& stored =
      m_composition.data().value(u"virtualPatches").dictionary().value(name);
  countUse(name, QString(), stored.isDictionary(),
           m_result->m_nodes[static_cast<size_t>(node)].path);
  if (!stored.isDictionary()) {
    m_result->m_nodes[static_cast<size_t>(node)].patchClass = nullptr;
    return true;
  }
  if (m_virtualPath.contains(name))
    return fail(QStringLiteral("the virtual patch %1 contains itself").arg(name));
  std::shared_ptr<QuartzComposition>& embedded = m_virtual[name];
  if (!embedded) embedded = QuartzComposition::compositionWithDictionary(stored.dictionary());
  const std::shared_ptr<QuartzComposition> held = embedded;
  m_virtualPath.append(name);
  const bool ok = compileMacroContent(*held->rootPatch(), node, depth);
  m_virtualPath.removeLast();
  if (ok)
    applyInputParameters(held->data().value(u"inputParameters").dictionary(),
                         m_result->m_nodes[static_cast<size_t>(node)].content);
  return ok;
}

void CompositionCompiler::addSystemPorts(CompiledNode& node) {
  if (node.isConsumer) {
    node.enableInput = static_cast<int>(node.ports.inputs.size());
    node.ports.inputs.append(
        Port(QStringLiteral("_enable"), PortType::Boolean, true, QStringLiteral("Enable")));
  }
  if (node.timeBase == TimeBase::External) {
    node.timeInput = static_cast<int>(node.ports.inputs.size());
    node.ports.inputs.append(
        Port(QStringLiteral("_time"), PortType::Number, 0.0, QStringLiteral("Patch Time")));
  }
  const size_t count = static_cast<size_t>(node.ports.inputs.size());
  node.links.resize(count);
  node.constants.resize(count);
  for (size_t i = 0; i < count; ++i)
    node.constants[i] = node.ports.inputs[static_cast<int>(i)].defaultValue;
}

void CompositionCompiler::readStoredValues(const QuartzPatch& patch, int node) {
  for (const QStringView group : inputStates)
    for (const auto& [port, entry] : patch.state().value(group).dictionary()) {
      const PropertyValue& value = entry.dictionary().value(u"value");
      if (!value.isNull()) setConstant(node, port, value);
    }
}

bool CompositionCompiler::setConstant(int node, const QString& port, const PropertyValue& stored) {
  const Link place = resolveInput(node, port);
  if (place.node < 0) return false;
  CompiledNode& owner = m_result->m_nodes[static_cast<size_t>(place.node)];
  const Port& description = owner.ports.inputs[place.output];
  owner.constants[static_cast<size_t>(place.output)] =
      clamped(description, Value::fromProperty(stored, description.type));
  return true;
}

void CompositionCompiler::readPublished(const QuartzPatch& patch, int scope) {
  ScopeNames& names = m_names[static_cast<size_t>(scope)];
  const auto read = [&](QStringView list, QHash<QString, PortPlace>& into, QStringView what) {
    for (const PropertyValue& entry : patch.state().value(list).array()) {
      const PropertyDictionary& d = entry.dictionary();
      const int node = names.nodes.value(d.value(u"node").toString(), -1);
      if (node < 0)
        finding(QStringLiteral("the published %1 %2 names a missing patch")
                    .arg(what, d.value(u"key").toString()));
      else
        into.insert(d.value(u"key").toString(), {node, d.value(u"port").toString()});
    }
  };
  read(u"publishedInputPorts", names.inputs, u"input");
  read(u"publishedOutputPorts", names.outputs, u"output");
  for (const PropertyValue& entry : patch.state().value(u"publishedInputPorts").array()) {
    const PropertyDictionary& d = entry.dictionary();
    const PropertyValue& value = d.value(u"state").dictionary().value(u"value");
    const int node = names.nodes.value(d.value(u"node").toString(), -1);
    if (!value.isNull() && node >= 0) setConstant(node, d.value(u"port").toString(), value);
  }
}

void CompositionCompiler::readConnections(const QuartzPatch& patch, int scope) {
  const ScopeNames names = m_names[static_cast<size_t>(scope)];
  for (const auto& [name, entry] : patch.state().value(u"connections").dictionary()) {
    const PropertyDictionary& d = entry.dictionary();
    const int source = names.nodes.value(d.value(u"sourceNode").toString(), -1);
    const int destination = names.nodes.value(d.value(u"destinationNode").toString(), -1);
    const Link from =
        source < 0 ? Link() : resolveOutput(source, d.value(u"sourcePort").toString());
    const Link to = destination < 0
                        ? Link()
                        : resolveInput(destination, d.value(u"destinationPort").toString());
    if (from.node < 0 || to.node < 0) {
      finding(QStringLiteral("%1 joins nothing: %2.%3 → %4.%5")
                  .arg(name, d.value(u"sourceNode").toString(), d.value(u"sourcePort").toString(),
                       d.value(u"destinationNode").toString(),
                       d.value(u"destinationPort").toString()));
      continue;
    }
    m_result->m_nodes[static_cast<size_t>(to.node)].links[static_cast<size_t>(to.output)] = from;
  }
}

Link CompositionCompiler::resolveInput(int node, const QString& port, int depth) {
  CompiledNode& owner = m_result->m_nodes[static_cast<size_t>(node)];
  const int own = owner.input(port);
  if (own >= 0) return {node, own};
  if (owner.content >= 0) {
    const PortPlace place = m_names[static_cast<size_t>(owner.content)].inputs.value(port);
    return place.node < 0 || depth > m_budget.depth
               ? Link()
               : resolveInput(place.node, place.port, depth + 1);
  }
  // A port that the state does not create: harmless, and keeps unknown patches connected.
  owner.ports.inputs.append(Port(port, PortType::Virtual));
  owner.links.emplace_back();
  owner.constants.emplace_back();
  return {node, static_cast<int>(owner.ports.inputs.size()) - 1};
}

Link CompositionCompiler::resolveOutput(int node, const QString& port, int depth) {
  CompiledNode& owner = m_result->m_nodes[static_cast<size_t>(node)];
  const int own = owner.output(port);
  if (own >= 0) return {node, own};
  if (owner.content >= 0) {
    const PortPlace place = m_names[static_cast<size_t>(owner.content)].outputs.value(port);
    return place.node < 0 || depth > m_budget.depth
               ? Link()
               : resolveOutput(place.node, place.port, depth + 1);
  }
  owner.ports.outputs.append(Port(port, PortType::Virtual));
  return {node, static_cast<int>(owner.ports.outputs.size()) - 1};
}

void CompositionCompiler::applyInputParameters(const PropertyDictionary& parameters, int scope) {
  const QHash<QString, PortPlace> inputs = m_names[static_cast<size_t>(scope)].inputs;
  for (const auto& [key, value] : parameters)
    if (const PortPlace place = inputs.value(key); place.node >= 0)
      setConstant(place.node, place.port, value);
}

void CompositionCompiler::publishRoot(const QuartzPatch& root,
                                      const PropertyDictionary& parameters) {
  const auto publish = [&](QStringView list, bool input, std::vector<PublishedPort>& into) {
    for (const PropertyValue& entry : root.state().value(list).array()) {
      const PropertyDictionary& d = entry.dictionary();
      const int node = m_names.front().nodes.value(d.value(u"node").toString(), -1);
      const QString port = d.value(u"port").toString();
      const Link place =
          node < 0 ? Link() : (input ? resolveInput(node, port) : resolveOutput(node, port));
      if (place.node < 0) {
        if (node >= 0)
          finding(QStringLiteral("the published port %1 leads nowhere")
                      .arg(d.value(u"key").toString()));
        continue;
      }
      const CompiledNode& owner = m_result->m_nodes[static_cast<size_t>(place.node)];
      const Port& inner = (input ? owner.ports.inputs : owner.ports.outputs)[place.output];
      QString label = QuartzPatch::labelOfPublishedPort(d);
      if (label.isEmpty()) label = inner.label.isEmpty() ? inner.key : inner.label;
      const QString key = d.value(u"key").toString();
      into.push_back({key, label, place.node, place.output});
      // A key may be published more than once: filters of one kind share theirs.
      if (const PropertyValue& value = parameters.value(key); input && !value.isNull())
        setConstant(node, port, value);
    }
  };
  publish(u"publishedInputPorts", true, m_result->m_inputs);
  publish(u"publishedOutputPorts", false, m_result->m_outputs);
}

void CompositionCompiler::linkFeedback() {
  for (CompiledNode& node : m_result->m_nodes) {
    if (node.description.className != QLatin1String("QCRecursor")) continue;
    CompiledScope& scope = m_result->m_scopes[static_cast<size_t>(node.scope)];
    const QHash<QString, PortPlace> outputs = m_names[static_cast<size_t>(node.scope)].outputs;
    for (const PropertyValue& saved : node.description.state.value(u"savedPorts").array()) {
      const QString name = saved.array().value(1).toString();
      const PortPlace place = outputs.value(name);
      const Link source = place.node < 0 ? Link() : resolveOutput(place.node, place.port);
      if (source.node >= 0) scope.feedback.insert(name, source);
    }
  }
}

bool CompositionCompiler::markVolatile() {
  constexpr int unseen = -1;
  constexpr int running = -2;
  // Longest way from each node back to where its values begin: evaluation follows it by recursion,
  // so it must fit on a thread's stack.
  std::vector<int> lengths(m_result->m_nodes.size(), unseen);
  int longest = 0;
  const std::function<void(int, int)> visit = [&](int index, int depth) {
    CompiledNode& node = m_result->m_nodes[static_cast<size_t>(index)];
    int& length = lengths[static_cast<size_t>(index)];
    if (length == running) node.isVolatile = node.closesLoop = true;
    if (length != unseen) return;
    length = running;
    longest = std::max(longest, depth);
    bool isVolatile = node.patchClass && node.patchClass->isVolatile();
    int before = 0;
    const auto look = [&](int other) {
      if (longest <= maximumChain) visit(other, depth + 1);
      isVolatile |= m_result->m_nodes[static_cast<size_t>(other)].isVolatile;
      before = std::max(before, lengths[static_cast<size_t>(other)]);
    };
    for (const Link& link : node.links)
      if (link.node >= 0) look(link.node);
    if (node.content >= 0)
      for (const int inner : m_result->m_scopes[static_cast<size_t>(node.content)].nodes)
        look(inner);
    node.isVolatile |= isVolatile;
    length = before + 1;
    longest = std::max(longest, length);
  };
  for (size_t i = 0; i < m_result->m_nodes.size(); ++i) visit(static_cast<int>(i), 0);
  return longest <= maximumChain ||
         fail(QStringLiteral("connections form a chain that is too long"),
              QStringLiteral("more than %1 patches").arg(maximumChain));
}

void CompositionCompiler::countUse(const QString& className, const QString& identifier, bool known,
                                   const QString& path) {
  for (PatchUse& use : m_result->m_patchUses)
    if (use.className == className && use.identifier == identifier) {
      ++use.count;
      return;
    }
  m_result->m_patchUses.append({className, identifier, 1, known, path});
}

void CompositionCompiler::reportUnknown() {
  for (const PatchUse& use : m_result->m_patchUses) {
    if (use.known) continue;
    const QString name = use.identifier.isEmpty()
                             ? use.className
                             : use.className + QLatin1Char(':') + use.identifier;
    const QString what = use.className.startsWith(QLatin1Char('/'))
                             ? QStringLiteral("the virtual patch %1 is not in the file")
                             : QStringLiteral("the patch %1 is unknown");
    finding(
        QStringLiteral("%1; it does nothing at %2%3")
            .arg(what.arg(name), use.firstPath,
                 use.count > 1 ? QStringLiteral(" and %1 more").arg(use.count - 1) : QString()));
  }
}

void CompositionCompiler::finding(const QString& text) {
  if (m_result->m_findings.size() < 1000) m_result->m_findings.append(text);
}

bool CompositionCompiler::fail(const QString& message, const QString& detail) {
  m_error = foundation::Error{message, m_fileName, detail};
  return false;
}

}  // namespace runtime
