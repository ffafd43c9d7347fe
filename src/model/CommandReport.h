#pragma once

#include <QString>

namespace model {

/// What a command has to tell its user: shown as an alert by windows, printed by the command line.
struct CommandReport {
  QString title;
  QString text;
  QString preferenceKey = {};  ///< under which the user may suppress it; empty: never
};

}  // namespace model
