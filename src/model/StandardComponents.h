#pragma once

#include <QString>
#include <memory>
#include <optional>

#include "foundation/Result.h"
#include "quartz/QuartzComposition.h"

namespace model {

/// The composition files that come with the program, in a folder "QTZ Standard Components".
class StandardComponents {
 public:
  explicit StandardComponents(QString folder) : m_folder(std::move(folder)) {}
  /// In the resource folder named by the environment variable TESSARY_RESOURCES, whether it is
  /// there or not; else where an installation has it, relative to the program (../share/tessary,
  /// as in a build).
  [[nodiscard]] static StandardComponents located();

  [[nodiscard]] const QString& folder() const { return m_folder; }
  /// The file of a component such as "Renderer", or nothing when there is none.
  [[nodiscard]] std::optional<QString> pathOf(const QString& name) const;
  [[nodiscard]] foundation::Result<std::unique_ptr<quartz::QuartzComposition>> load(
      const QString& name) const;

 private:
  QString m_folder;
};

}  // namespace model
