#pragma once

#include <QString>
#include <memory>

#include "foundation/Result.h"
#include "model/StandardComponents.h"

namespace store {
class ObjectContext;
}

namespace model {

class Composition;

/// A graphic in a context of its own, and what was found out on the way to it. Nothing to undo.
struct SourcedComposition {
  SourcedComposition();
  SourcedComposition(SourcedComposition&&) noexcept;
  SourcedComposition& operator=(SourcedComposition&&) noexcept;
  ~SourcedComposition();

  std::unique_ptr<store::ObjectContext> context;
  Composition* composition = nullptr;
  QStringList warnings;  ///< for instance fonts that were substituted
};

/// Reads graphics from their readable JSON form, which docs/file-formats.md describes. Errors name
/// the file and the place in it.
class CompositionSource {
 public:
  explicit CompositionSource(StandardComponents standardComponents)
      : m_standardComponents(std::move(standardComponents)) {}

  [[nodiscard]] foundation::Result<SourcedComposition> compositionFromFile(
      const QString& path) const;
  /// Relative paths in the source are taken from the folder of the path.
  [[nodiscard]] foundation::Result<SourcedComposition> compositionFromData(
      const QByteArray& json, const QString& path) const;

 private:
  StandardComponents m_standardComponents;
};

}  // namespace model
