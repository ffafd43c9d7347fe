#pragma once

#include <QBrush>

namespace widgets {

/// What shows through where nothing is drawn: squares of that many logical units.
[[nodiscard]] QBrush chessboardBrush(int square);

}  // namespace widgets
