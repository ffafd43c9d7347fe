#pragma once

#include <QStringList>

#include "cli/ExitStatus.h"

namespace cli {

/// `tessary render`: frames of a composition as pictures or as raw RGBA.
class RenderCommand {
 public:
  [[nodiscard]] static ExitStatus run(const QStringList& arguments);
};

}  // namespace cli
