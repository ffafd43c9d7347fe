#include "runtime/CompositionInstance.h"

#include <cmath>
#include <utility>

namespace runtime {

namespace {

constexpr size_t maximumSlots = 10'000;
constexpr qint64 sharedIteration = -1;

Value fitted(const Port& port, const Value& value) {
  Value fit = value.converted(port.type);
  if (!port.minimum && !port.maximum) return fit;
  if (port.type == PortType::Number) {
    const double n = fit.toNumber();
    if (port.minimum && n < *port.minimum) return *port.minimum;
    if (port.maximum && n > *port.maximum) return *port.maximum;
  } else if (port.type == PortType::Index && port.maximum) {
    if (static_cast<double>(fit.toIndex()) > *port.maximum)
      return Value(*port.maximum).converted(PortType::Index);
  }
  return fit;
}

}  // namespace

CompositionInstance::CompositionInstance(std::shared_ptr<const CompiledComposition> compiled)
    : m_compiled(std::move(compiled)),
      m_nodes(m_compiled->nodes().size()),
      m_scopes(m_compiled->scopes().size()) {
  m_version = 1;
  for (size_t i = 0; i < m_nodes.size(); ++i) {
    m_nodes[i].constants = m_compiled->nodes()[i].constants;
    m_nodes[i].constantVersions.assign(m_nodes[i].constants.size(), m_version);
  }
}

CompositionInstance::~CompositionInstance() = default;

void CompositionInstance::setInput(int node, int input, const Value& value) {
  NodeState& state = m_nodes[static_cast<size_t>(node)];
  const Port& port = this->node(node).ports.inputs[input];
  Value fit = fitted(port, value);
  Value& constant = state.constants[static_cast<size_t>(input)];
  if (fit == constant) return;
  constant = std::move(fit);
  state.constantVersions[static_cast<size_t>(input)] = ++m_version;
  ++m_hostEpoch;
}

Value CompositionInstance::inputValue(int node, int input) const {
  return m_nodes[static_cast<size_t>(node)].constants[static_cast<size_t>(input)];
}

Value CompositionInstance::outputValue(int node, int output) const {
  const NodeState& state = m_nodes[static_cast<size_t>(node)];
  const int scope = this->node(node).scope;
  const size_t slot = m_scopes[static_cast<size_t>(scope)].slot;
  const PatchClass* known = this->node(node).patchClass;
  const bool shared = known && known->memory == PatchClass::Memory::Shared;
  const size_t place = shared ? 0 : slot;
  if (place >= state.memories.size() || !state.memories[place])
    return Value::zero(this->node(node).ports.outputs[output].type);
  return state.memories[place]->outputs[static_cast<size_t>(output)];
}

DrawList CompositionInstance::evaluate(double time, const Destination& destination,
                                       const FrameArguments& arguments) {
  m_time = time > 0 ? time : 0;
  m_arguments = arguments;
  // What the last frame did not come to is looked at again.
  if (std::exchange(m_interrupted, false)) ++m_hostEpoch;
  ++m_frame;
  ++m_pass;
  m_iterations = 0;
  m_drawItems = 0;
  m_animated = false;
  DrawList list;
  ContentContext context;
  context.destination = destination;
  context.list = &list;
  for (size_t i = 0; i < m_scopes.size(); ++i) {
    ScopeState& scope = m_scopes[i];
    // An off-screen destination stays as its macro last set it.
    if (m_compiled->scopes()[i].offscreenMacro < 0) scope.context = context;
    scope.context.list = nullptr;
    scope.forcedTime.reset();
    scope.pass = m_pass;
  }
  runScope(0, context);
  for (const PublishedPort& output : m_compiled->outputs()) {
    pull(output.node);
    m_animated |= memory(output.node).mayChange;
  }
  for (size_t scope = 0; scope < m_scopes.size(); ++scope) {
    m_scopes[scope].context.list = nullptr;
    // Iterators keep theirs pass by pass.
    if (!m_compiled->scopes()[scope].iterates) keepFeedback(static_cast<int>(scope));
  }
  return list;
}

NodeMemory& CompositionInstance::memory(int index) {
  NodeState& state = m_nodes[static_cast<size_t>(index)];
  const CompiledNode& compiledNode = node(index);
  const bool shared =
      compiledNode.patchClass && compiledNode.patchClass->memory == PatchClass::Memory::Shared;
  const size_t slot = shared ? 0 : m_scopes[static_cast<size_t>(compiledNode.scope)].slot;
  if (slot >= state.memories.size()) state.memories.resize(slot + 1);
  std::unique_ptr<NodeMemory>& place = state.memories[slot];
  if (!place) {
    place = std::make_unique<NodeMemory>();
    const size_t inputs = static_cast<size_t>(compiledNode.ports.inputs.size());
    for (const Port& port : compiledNode.ports.inputs)
      place->inputs.push_back(Value::zero(port.type));
    place->inputVersions.assign(inputs, 0);
    place->changed.assign(inputs, true);
    for (const Port& port : compiledNode.ports.outputs)
      place->outputs.push_back(Value::zero(port.type));
    place->outputVersions.assign(place->outputs.size(), 0);
    if (compiledNode.patchClass && compiledNode.patchClass->make)
      place->evaluator = compiledNode.patchClass->make(compiledNode.description);
  }
  return *place;
}

void CompositionInstance::pull(int index) {
  const CompiledNode& compiledNode = node(index);
  NodeState& state = m_nodes[static_cast<size_t>(index)];
  if (state.running || compiledNode.isConsumer || m_interrupted) return;
  // What an off-screen destination holds is known only while that macro runs.
  const int offscreen =
      m_compiled->scopes()[static_cast<size_t>(compiledNode.scope)].offscreenMacro;
  if (offscreen >= 0 && !m_nodes[static_cast<size_t>(offscreen)].running) pull(offscreen);

  NodeMemory& mem = memory(index);
  // What stands outside an iterator is not run again because that has run.
  const quint64 pass = m_scopes[static_cast<size_t>(compiledNode.scope)].pass;
  if (mem.checkedPass == pass) return;
  mem.checkedPass = pass;
  const Destination& destination = contextOf(compiledNode.scope).destination;
  mem.mayChange = false;
  if (!compiledNode.isVolatile && mem.executed && mem.hostEpoch == m_hostEpoch &&
      mem.destination == destination)
    return;
  if (!mem.evaluator) return;
  state.running = true;
  beginLook(index, mem);
  Execution x(*this, index, mem);
  mem.evaluator->pullInputs(x);
  const PatchClass& known = *compiledNode.patchClass;
  const bool onceAFrame =
      known.timeMode == PatchClass::TimeMode::Idle || known.kind == PatchClass::Kind::Provider ||
      (compiledNode.isMacro() && (compiledNode.isVolatile || mem.hostEpoch != m_hostEpoch));
  bool needed = !mem.executed || mem.anyChanged || !(mem.destination == destination) ||
                (onceAFrame && (mem.frame != m_frame || isSharedSlot(compiledNode.scope)));
  if (known.timeMode != PatchClass::TimeMode::None) {
    const double now = nodeTime(index, mem);
    needed = needed || now != mem.time || mem.evaluator->wantsNextFrame();
  }
  if (needed) run(index, mem);
  endLook(mem);
  mem.hostEpoch = m_hostEpoch;
  state.running = false;
}

void CompositionInstance::beginLook(int index, NodeMemory& mem) {
  const CompiledNode& compiledNode = node(index);
  const PatchClass& known = *compiledNode.patchClass;
  const bool isSource =
      known.kind == PatchClass::Kind::Provider && !mem.evaluator->followsTimeAndInputs();
  mem.mayChange =
      isSource || compiledNode.closesLoop || known.timeMode == PatchClass::TimeMode::Idle;
  mem.timeMayChange = false;
  if (known.timeMode != PatchClass::TimeMode::TimeBase || compiledNode.timeInput >= 0) return;
  mem.timeMayChange = timeRuns(compiledNode.timeBase, compiledNode.scope, nullptr);
}

void CompositionInstance::endLook(NodeMemory& mem) const {
  mem.mayChange |= mem.timeMayChange && !mem.evaluator->standsStill();
}

bool CompositionInstance::timeRuns(TimeBase base, int scope, const Link* external) {
  if (base == TimeBase::External && external)
    return external->node >= 0 && memory(external->node).mayChange;
  const int macro = m_compiled->scopes()[static_cast<size_t>(scope)].macro;
  if (macro < 0 || m_scopes[static_cast<size_t>(scope)].forcedTime) return true;
  const CompiledNode& around = node(macro);
  return timeRuns(
      around.timeBase, around.scope,
      around.timeInput < 0 ? nullptr : &around.links[static_cast<size_t>(around.timeInput)]);
}

void CompositionInstance::pullInput(int index, NodeMemory& mem, int input) {
  const CompiledNode& compiledNode = node(index);
  const auto i = static_cast<size_t>(input);
  const Link link = compiledNode.links[i];
  const NodeState& state = m_nodes[static_cast<size_t>(index)];
  quint64 version = state.constantVersions[i];
  const Value* source = &state.constants[i];
  if (link.node >= 0) {
    pull(link.node);
    NodeMemory& giver = memory(link.node);
    const Port& port = compiledNode.ports.inputs[input];
    const bool isTime = input == compiledNode.timeInput || port.key == QLatin1String("_time");
    (isTime ? mem.timeMayChange : mem.mayChange) |= giver.mayChange;
    version = giver.outputVersions[static_cast<size_t>(link.output)];
    source = &giver.outputs[static_cast<size_t>(link.output)];
    if (version == 0) version = 1;  // never set: its zero, taken over once
  }
  if (mem.inputVersions[i] == version) return;
  mem.inputVersions[i] = version;
  const Port& port = compiledNode.ports.inputs[input];
  Value fit = link.node < 0 ? *source : fitted(port, *source);
  if (fit.isEmpty() && port.type != PortType::Virtual) fit = Value::zero(port.type);
  if (fit == mem.inputs[i] && mem.executed) return;
  mem.inputs[i] = std::move(fit);
  mem.changed[i] = true;
  mem.anyChanged = true;
}

void CompositionInstance::run(int index, NodeMemory& mem) {
  if (shallEnd()) return;
  const CompiledNode& compiledNode = node(index);
  const double now = nodeTime(index, mem);
  mem.timeStep = mem.executed ? now - mem.time : 0;
  mem.time = now;
  mem.destination = contextOf(compiledNode.scope).destination;
  mem.frame = m_frame;
  Execution x(*this, index, mem);
  mem.evaluator->execute(x);
  if (shallEnd()) {
    mem.anyChanged = true;  // it may not have come to its end either
    return;
  }
  mem.executed = true;
  mem.anyChanged = false;
  std::fill(mem.changed.begin(), mem.changed.end(), false);
  if (mem.evaluator->wantsNextFrame()) m_animated = true;
}

bool CompositionInstance::shallEnd() {
  const Interruption* interruption = m_arguments.interruption.get();
  m_interrupted = m_interrupted || (interruption && interruption->isDue());
  return m_interrupted;
}

void CompositionInstance::runConsumer(int index) {
  const CompiledNode& compiledNode = node(index);
  NodeState& state = m_nodes[static_cast<size_t>(index)];
  if (state.running) return;
  NodeMemory& mem = memory(index);
  if (!mem.evaluator) return;
  state.running = true;
  beginLook(index, mem);
  pullInput(index, mem, compiledNode.enableInput);
  if (mem.inputs[static_cast<size_t>(compiledNode.enableInput)].toBoolean()) {
    Execution x(*this, index, mem);
    mem.evaluator->pullInputs(x);
    run(index, mem);
    mem.checkedPass = m_scopes[static_cast<size_t>(compiledNode.scope)].pass;
  }
  endLook(mem);
  m_animated |= mem.mayChange;
  state.running = false;
}

void CompositionInstance::runScope(int scope, const ContentContext& context) {
  const CompiledScope& compiledScope = m_compiled->scopes()[static_cast<size_t>(scope)];
  m_scopes[static_cast<size_t>(scope)].context = context;
  m_scopes[static_cast<size_t>(scope)].lastRunFrame = m_frame;
  (void)scopeTime(scope);  // a local time base starts when its macro does
  for (const int inner : m_compiled->scopes()[static_cast<size_t>(scope)].inner) {
    // Content of processor macros sees the surroundings of the macro.
    const CompiledScope& below = m_compiled->scopes()[static_cast<size_t>(inner)];
    if (below.offscreenMacro == compiledScope.offscreenMacro && !node(below.macro).isConsumer)
      m_scopes[static_cast<size_t>(inner)].context = context;
  }
  for (const int consumer : compiledScope.consumers) runConsumer(consumer);
}

const ContentContext& CompositionInstance::contextOf(int scope) const {
  return m_scopes[static_cast<size_t>(scope)].context;
}

bool CompositionInstance::enterIteration(int scope, qint64 index, qint64 count) {
  if (shallEnd()) return false;
  if (++m_iterations > m_compiled->budget().iterations) {
    report(m_compiled->scopes()[static_cast<size_t>(scope)].macro,
           QStringLiteral("more than %1 iterations in one frame; the rest is left out")
               .arg(m_compiled->budget().iterations));
    return false;
  }
  const CompiledScope& compiledScope = m_compiled->scopes()[static_cast<size_t>(scope)];
  ScopeState& state = m_scopes[static_cast<size_t>(scope)];
  const size_t outer = m_scopes[static_cast<size_t>(compiledScope.parent)].slot;
  // Past a bound iterations share a memory: slower, but results are the same.
  const bool hasOwn = m_slotCount < maximumSlots || state.slots.contains({outer, index});
  const qint64 own = hasOwn ? index : sharedIteration;
  const auto [place, isNew] = state.slots.try_emplace({outer, own}, m_slotCount);
  if (isNew) ++m_slotCount;
  if (!hasOwn) m_sharedSlots.insert(place->second);
  setSlot(scope, place->second, ++m_pass);
  state.iterationIndex = index;
  state.iterationCount = count;
  return true;
}

void CompositionInstance::setSlot(int scope, size_t slot, quint64 pass) {
  const auto set = [&](int index) {
    m_scopes[static_cast<size_t>(index)].slot = slot;
    m_scopes[static_cast<size_t>(index)].pass = pass;
  };
  set(scope);
  for (const int inner : m_compiled->scopes()[static_cast<size_t>(scope)].inner) set(inner);
}

void CompositionInstance::leaveIterations(int scope) {
  // Slot and pass of the last run stay: outputs read from outside are those of that run.
  m_scopes[static_cast<size_t>(scope)].forcedTime.reset();
}

bool CompositionInstance::isRunning(int scope) const {
  for (int s = scope; s >= 0; s = m_compiled->scopes()[static_cast<size_t>(s)].parent) {
    const int macro = m_compiled->scopes()[static_cast<size_t>(s)].macro;
    const bool runsAsWhole =
        macro >= 0 && (node(macro).isConsumer ||
                       (node(macro).patchClass && node(macro).patchClass->drawsOffscreen));
    if (runsAsWhole && m_scopes[static_cast<size_t>(s)].lastRunFrame != m_frame) return false;
  }
  return true;
}

void CompositionInstance::keepFeedback(int scope) {
  // What is switched off keeps what it has.
  if (!isRunning(scope)) return;
  const CompiledScope& compiledScope = m_compiled->scopes()[static_cast<size_t>(scope)];
  for (auto it = compiledScope.feedback.begin(); it != compiledScope.feedback.end(); ++it) {
    pull(it->node);
    m_animated |= memory(it->node).mayChange;
    ScopeState& state = m_scopes[static_cast<size_t>(scope)];
    state.fedBack[{it.key(), state.slot}] =
        memory(it->node).outputs[static_cast<size_t>(it->output)];
  }
}

double CompositionInstance::scopeTime(int scope) {
  ScopeState& state = m_scopes[static_cast<size_t>(scope)];
  if (state.forcedTime) return *state.forcedTime;
  if (state.timePass == state.pass) return state.time;
  const CompiledScope& compiledScope = m_compiled->scopes()[static_cast<size_t>(scope)];
  double time = m_time;
  if (compiledScope.macro >= 0) {
    const CompiledNode& macro = node(compiledScope.macro);
    NodeMemory& mem = memory(compiledScope.macro);
    if (macro.timeInput >= 0) pullInput(compiledScope.macro, mem, macro.timeInput);
    time = basedTime(macro.timeBase, scopeTime(compiledScope.parent), &mem, macro.timeInput,
                     state.lastUsedFrame, state.localStart);
  }
  state.time = time;
  state.timePass = state.pass;
  return time;
}

double CompositionInstance::nodeTime(int index, NodeMemory& mem) {
  const CompiledNode& compiledNode = node(index);
  NodeState& state = m_nodes[static_cast<size_t>(index)];
  return basedTime(compiledNode.timeBase, scopeTime(compiledNode.scope), &mem,
                   compiledNode.timeInput, state.lastUsedFrame, state.localStart);
}

double CompositionInstance::basedTime(TimeBase base, double parent, const NodeMemory* memory,
                                      int timeInput, quint64& lastUsedFrame, double& localStart) {
  double time = parent;
  if (base == TimeBase::External && timeInput >= 0)
    time = memory->inputs[static_cast<size_t>(timeInput)].toNumber();
  if (base == TimeBase::Local) {
    if (lastUsedFrame + 1 < m_frame) localStart = parent;
    time = parent - localStart;
  }
  lastUsedFrame = m_frame;
  return time > 0 && std::isfinite(time) ? time : 0;
}

void CompositionInstance::report(int index, const QString& text) {
  const QString finding = index < 0 ? text : QStringLiteral("%1: %2").arg(node(index).path, text);
  if (m_findings.size() < 1000 && !m_findings.contains(finding)) m_findings.append(finding);
}

}  // namespace runtime
