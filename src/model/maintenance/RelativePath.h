#pragma once

#include <QString>

namespace model {

/// The path as seen from the folder that holds the base file. Unchanged when either path is
/// relative already, or when both lie on different volumes (under "/Volumes").
[[nodiscard]] QString pathRelativeTo(const QString& path, const QString& base);

}  // namespace model
