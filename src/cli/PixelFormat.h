#pragma once

#include <QImage>

namespace cli {

enum class Alpha { Straight, Premultiplied };

/// Turns premultiplied ARGB32 pixels into rows of R, G, B, A bytes, in place. What is transparent
/// or opaque, which is most of a graphic, costs next to nothing.
void convertToRgba(QImage& image, Alpha alpha);

}  // namespace cli
