#pragma once

#include <QByteArray>
#include <QRect>

namespace document {

/// A decoded mask: how much of a layer, or of a group's layers, shows where.
struct PsdMask {
  QRect rect;  ///< canvas, y down
  quint8 outside = 0;
  QByteArray samples;  ///< of the rectangle, row by row; empty when it is empty

  /// Multiplies a row of alpha that begins at the place.
  void applyTo(quint8* alpha, int x, int y, int width) const;
};

}  // namespace document
