#pragma once

#include <Qt>

namespace canvas {

/// Over a component: by its handle, as the model numbers them (0 the body, 9 nothing).
[[nodiscard]] Qt::CursorShape cursorForHandle(int handle);
/// Over a guide; outside the picture it is about to be removed.
[[nodiscard]] Qt::CursorShape cursorForGuide(bool horizontal);
inline constexpr Qt::CursorShape removalCursor = Qt::ForbiddenCursor;

}  // namespace canvas
