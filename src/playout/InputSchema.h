#pragma once

#include "runtime/CompositionRenderer.h"

namespace playout {

/// The published inputs of a composition as a JSON Schema (draft 2020-12) of its values files: what
/// it lets pass is what `tessary render --values` takes, apart from pictures that cannot be read.
class InputSchema {
 public:
  InputSchema(QString title, const runtime::CompositionRenderer& renderer);
  /// The schema, its properties in the order of the file.
  [[nodiscard]] QString json() const;

 private:
  QString m_title;
  std::vector<runtime::PortAttributes> m_inputs;
};

}  // namespace playout
