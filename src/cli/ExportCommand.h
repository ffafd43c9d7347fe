#pragma once

#include <QStringList>

#include "cli/ExitStatus.h"

namespace cli {

/// `tessary export`: one playout composition from a document's source.
class ExportCommand {
 public:
  [[nodiscard]] static ExitStatus run(const QStringList& arguments);
};

}  // namespace cli
