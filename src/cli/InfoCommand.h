#pragma once

#include <QStringList>

#include "cli/ExitStatus.h"

namespace cli {

/// `tessary info`: what a composition file or a graphic's source holds. `tessary patches`: what the
/// runtime knows.
class InfoCommand {
 public:
  [[nodiscard]] static ExitStatus run(const QStringList& arguments);
  [[nodiscard]] static ExitStatus runPatches(const QStringList& arguments);
};

}  // namespace cli
