#pragma once

#include <QStringList>

namespace cli {

/// For messages about names that are not known: those that may have been meant, the nearest first,
/// or all where none is near. "did you mean Color, Color_1?" or "there are: Color, Text".
[[nodiscard]] QString nearNames(const QString& wanted, const QStringList& names);

}  // namespace cli
