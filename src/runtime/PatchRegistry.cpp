#include "runtime/PatchRegistry.h"

#include "runtime/patches/AllPatches.h"

namespace runtime {

namespace {
QString nameOf(const QString& className, const QString& identifier) {
  return identifier.isEmpty() ? className : className + QLatin1Char(':') + identifier;
}
}  // namespace

const PatchRegistry& PatchRegistry::shared() {
  static const PatchRegistry registry = [] {
    PatchRegistry all;
    patches::registerAll(all);
    return all;
  }();
  return registry;
}

void PatchRegistry::add(PatchClass patchClass) {
  m_classes.push_back(std::make_unique<PatchClass>(std::move(patchClass)));
  const PatchClass* added = m_classes.back().get();
  const QString name = nameOf(added->className, added->identifier);
  Q_ASSERT_X(!m_byName.contains(name), "PatchRegistry", qPrintable(name));
  m_byName.insert(name, added);
}

void PatchRegistry::addAlias(const QString& className, const QString& identifier,
                             const QString& target, const QString& targetIdentifier) {
  const PatchClass* known = find(target, targetIdentifier);
  Q_ASSERT_X(known, "PatchRegistry::addAlias", qPrintable(target));
  m_byName.insert(nameOf(className, identifier), known);
}

const PatchClass* PatchRegistry::find(const QString& className, const QString& identifier) const {
  if (const PatchClass* exact = m_byName.value(nameOf(className, identifier))) return exact;
  return m_byName.value(className);
}

}  // namespace runtime
