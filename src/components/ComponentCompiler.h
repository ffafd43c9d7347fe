#pragma once

#include <QJsonObject>
#include <memory>

#include "foundation/Result.h"
#include "quartz/QuartzComposition.h"

namespace components {

/// Turns the readable source of a component into a composition: nodes with their values, inputs
/// declared with type, range, menu and default (each becomes a splitter that is published), links
/// and published ports. The same source always gives the same composition. Errors name the place
/// in the source.
class ComponentCompiler {
 public:
  /// The name of the file is for messages.
  [[nodiscard]] static foundation::Result<std::unique_ptr<quartz::QuartzComposition>> compile(
      const QJsonObject& source, const QString& fileName);
  /// Reads, compiles and writes.
  [[nodiscard]] static foundation::Result<void> compileFile(const QString& sourcePath,
                                                            const QString& outputPath);
};

}  // namespace components
