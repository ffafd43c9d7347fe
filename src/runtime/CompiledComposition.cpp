#include "runtime/CompiledComposition.h"

#include "runtime/CompositionCompiler.h"

namespace runtime {

namespace {
int indexOf(const QList<Port>& ports, const QString& key) {
  for (int i = 0; i < ports.size(); ++i)
    if (ports[i].key == key) return i;
  return -1;
}
}  // namespace

int CompiledNode::input(const QString& key) const {
  return indexOf(ports.inputs, key);
}

int CompiledNode::output(const QString& key) const {
  return indexOf(ports.outputs, key);
}

foundation::Result<std::shared_ptr<const CompiledComposition>> CompiledComposition::compile(
    const quartz::QuartzComposition& composition, const QString& fileName, const Budget& budget) {
  return CompositionCompiler(composition, fileName, budget).compile();
}

bool CompiledComposition::isTimeDependent() const {
  return std::any_of(m_nodes.begin(), m_nodes.end(), [](const CompiledNode& node) {
    return node.patchClass && node.patchClass->timeMode != PatchClass::TimeMode::None;
  });
}

}  // namespace runtime
