#pragma once

#include <QByteArray>

#include "foundation/Color.h"

namespace quartz {

/// A colour in the non-keyed archive format, as time lines keep the display colours of curves.
[[nodiscard]] QByteArray archivedColor(const foundation::Color& color);

}  // namespace quartz
