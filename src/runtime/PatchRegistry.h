#pragma once

#include <QHash>
#include <memory>
#include <vector>

#include "runtime/PatchClass.h"

namespace runtime {

/// All patch classes that the runtime knows. Immutable once built; shared by all threads.
class PatchRegistry {
 public:
  /// The registry with every patch of this runtime.
  [[nodiscard]] static const PatchRegistry& shared();

  void add(PatchClass patchClass);
  /// A further class name under which files store a registered class.
  void addAlias(const QString& className, const QString& identifier, const QString& target,
                const QString& targetIdentifier = {});
  /// The class for a node of a file, or nothing when it is unknown.
  [[nodiscard]] const PatchClass* find(const QString& className, const QString& identifier) const;
  /// In order of registration.
  [[nodiscard]] const std::vector<std::unique_ptr<PatchClass>>& classes() const {
    return m_classes;
  }

 private:
  std::vector<std::unique_ptr<PatchClass>> m_classes;
  QHash<QString, const PatchClass*> m_byName;  // "class" or "class:identifier"
};

}  // namespace runtime
