#pragma once

#include <QString>

#include "foundation/Result.h"

namespace model {

/// Writes a copy of a composition that only draws, wrapped so that it yields its drawing as
/// "outputImage", into the cache folder as "NAME-Wrapped.qtz"; returns the copy's path.
[[nodiscard]] foundation::Result<QString> compositionWrappedWithRenderInImage(const QString& path);

/// The folder of wrapped copies, below the XDG cache folder.
[[nodiscard]] QString wrappedCompositionFolder();

}  // namespace model
