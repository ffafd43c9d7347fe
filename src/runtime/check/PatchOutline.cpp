#include "runtime/check/PatchOutline.h"

#include "runtime/PatchRegistry.h"

namespace runtime::check {

using foundation::PropertyDictionary;
using foundation::PropertyValue;
using quartz::QuartzPatch;

namespace {
void addPorts(const QList<Port>& ports, QHash<QString, Port>& into) {
  for (const Port& port : ports) into.insert(port.key, port);
}
}  // namespace

PatchOutline::PatchOutline(const QuartzPatch& patch, QString path)
    : patch(patch), path(std::move(path)) {}

std::unique_ptr<PatchOutline> PatchOutline::of(const QuartzPatch& patch, const QString& path,
                                               VirtualPatches& virtualPatches) {
  std::unique_ptr<PatchOutline> outline(new PatchOutline(patch, path));
  outline->takeClass(virtualPatches);
  outline->takeContent(virtualPatches);
  outline->takeSystemPorts();
  outline->takePublished();
  return outline;
}

const PatchOutline* PatchOutline::node(const QString& key) const {
  return m_nodesByKey.value(key, nullptr);
}

QSet<QString> PatchOutline::connectedInputs() const {
  QSet<QString> inputs;
  for (const auto& [name, entry] : patch.state().value(u"connections").dictionary())
    inputs.insert(entry.dictionary().value(u"destinationNode").toString() + QLatin1Char('.') +
                  entry.dictionary().value(u"destinationPort").toString());
  return inputs;
}

QString PatchOutline::className() const {
  return patch.identifier().isEmpty() ? patch.patchClass()
                                      : patch.patchClass() + QLatin1Char(':') + patch.identifier();
}

void PatchOutline::takeClass(VirtualPatches& virtualPatches) {
  const bool isVirtual = patch.patchClass().startsWith(QLatin1Char('/'));
  patchClass = PatchRegistry::shared().find(
      isVirtual ? QStringLiteral("QCPatch") : patch.patchClass(), patch.identifier());
  if (isVirtual) {
    if (const PatchOutline* content = virtualPatches.outline(patch.patchClass(), path)) {
      inputs = content->inputs;
      outputs = content->outputs;
      isConsumer = content->isConsumer;
      holdsUnknown = content->holdsUnknown;
    } else {
      patchClass = nullptr;
    }
  }
  if (!patchClass) {
    portsAreKnown = false;
    holdsUnknown = true;
    return;
  }
  const NodeDescription description{patch.patchClass(), patch.identifier(), patch.state(), {}};
  PatchPorts ports = patchClass->ports;
  if (patchClass->addPorts) patchClass->addPorts(description, ports);
  addPorts(ports.inputs, inputs);
  addPorts(ports.outputs, outputs);
  isConsumer |= patchClass->kind == PatchClass::Kind::Consumer || patchClass->alwaysConsumer ||
                (patchClass->drawsWhen && patchClass->drawsWhen(description));
}

void PatchOutline::takeContent(VirtualPatches& virtualPatches) {
  bool draws = false;
  for (const auto& child : patch.nodes()) {
    nodes.push_back(of(*child, path + QLatin1Char('/') + child->key(), virtualPatches));
    const PatchOutline& node = *nodes.back();
    if (!m_nodesByKey.contains(child->key())) m_nodesByKey.insert(child->key(), &node);
    draws |= node.isConsumer;
    holdsUnknown |= node.holdsUnknown;
  }
  isConsumer |= draws && patchClass && !patchClass->drawsOffscreen;
}

void PatchOutline::takeSystemPorts() {
  // Among unknown patches may be one that draws, which makes its macro a consumer.
  if (isConsumer || holdsUnknown) {
    inputs.insert(QStringLiteral("_enable"), Port(QStringLiteral("_enable"), PortType::Boolean));
    const QString interaction = QStringLiteral("_inputInteraction");
    inputs.insert(interaction, Port(interaction, PortType::Interaction));
  }
  if (patch.state().value(u"timebase").toString() == QLatin1String("external"))
    inputs.insert(QStringLiteral("_time"), Port(QStringLiteral("_time"), PortType::Number));
}

void PatchOutline::takePublished() {
  const auto take = [this](QStringView list, QHash<QString, Port> PatchOutline::*side) {
    for (const PropertyValue& entry : patch.state().value(list).array()) {
      const PropertyDictionary& d = entry.dictionary();
      const QString key = d.value(u"key").toString();
      const PatchOutline* owner = node(d.value(u"node").toString());
      if ((this->*side).contains(key)) continue;
      Port port(key, PortType::Virtual);
      if (owner) port = (owner->*side).value(d.value(u"port").toString(), port);
      port.key = key;
      (this->*side).insert(key, port);
    }
  };
  take(u"publishedInputPorts", &PatchOutline::inputs);
  take(u"publishedOutputPorts", &PatchOutline::outputs);
}

VirtualPatches::VirtualPatches(const quartz::QuartzComposition& composition,
                               foundation::Findings& findings)
    : m_composition(composition), m_findings(findings) {}

const PatchOutline* VirtualPatches::outline(const QString& name, const QString& usedBy) {
  if (const auto known = m_all.find(name); known != m_all.end()) {
    const Embedded& embedded = known->second;
    if (embedded.composition && !embedded.outline)
      m_findings.append({QStringLiteral("virtual-patch-contains-itself"), usedBy,
                         QStringLiteral("the virtual patch %1 contains itself").arg(name)});
    return embedded.outline.get();
  }
  Embedded& embedded = m_all[name];
  const PropertyValue& stored =
      m_composition.data().value(u"virtualPatches").dictionary().value(name);
  if (!stored.isDictionary()) {
    m_findings.append({QStringLiteral("missing-virtual-patch"), usedBy,
                       QStringLiteral("the virtual patch %1 is not in the file").arg(name)});
    return nullptr;
  }
  embedded.composition = quartz::QuartzComposition::compositionWithDictionary(stored.dictionary());
  embedded.outline = PatchOutline::of(*embedded.composition->rootPatch(), name, *this);
  return embedded.outline.get();
}

}  // namespace runtime::check
