#pragma once

#include <QImage>

namespace render {

enum class Alpha { Straight, Premultiplied };

/// Turns the area's premultiplied ARGB32 pixels into R, G, B, A bytes, in place. Transparent black
/// looks the same in both, so a caller names only the area in which something was drawn.
void convertToRgba(QImage& image, Alpha alpha, const QRect& area);

}  // namespace render
