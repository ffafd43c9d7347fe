#include "canvas/CanvasCursors.h"

namespace canvas {

Qt::CursorShape cursorForHandle(int handle) {
  switch (handle) {
    case 0:
      return Qt::OpenHandCursor;
    case 1:
    case 8:
      return Qt::SizeBDiagCursor;
    case 2:
    case 7:
      return Qt::SizeHorCursor;
    case 3:
    case 6:
      return Qt::SizeFDiagCursor;
    case 4:
    case 5:
      return Qt::SizeVerCursor;
    default:
      return Qt::ArrowCursor;
  }
}

Qt::CursorShape cursorForGuide(bool horizontal) {
  return horizontal ? Qt::SplitVCursor : Qt::SplitHCursor;
}

}  // namespace canvas
