#pragma once

#include <QList>
#include <QString>

namespace foundation {

/// Something about a file that its maker should look at: it opens, but not everything in it can
/// work as meant.
struct Finding {
  QString code;      ///< stable word for programs, e.g. "connection-to-missing-port"
  QString object;    ///< where: names from the outside in, e.g. "Root/Macro_1/Sprite_2"
  QString sentence;  ///< what is wrong, for people; without the object and a full stop

  friend bool operator==(const Finding&, const Finding&) = default;
};

using Findings = QList<Finding>;

}  // namespace foundation
