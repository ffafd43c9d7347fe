#pragma once

#include <QString>
#include <memory>

#include "foundation/Result.h"
#include "model/StandardComponents.h"

namespace model {

class Composition;

/// A graphic and what was found out on the way to it.
struct SourcedComposition {
  std::unique_ptr<Composition> composition;
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
