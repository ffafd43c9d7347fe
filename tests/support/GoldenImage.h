#pragma once

#include <QImage>
#include <QString>

namespace support {

/// Compares a picture with tests/golden/<name>.png and fails the running test where a premultiplied
/// channel of a pixel differs by more than 1/255. On failure <name>-actual.png and
/// <name>-difference.png (brightened) are written to the build folder's golden/. With
/// TESSARY_REBASELINE=1 in the environment the picture becomes the new reference instead.
void expectGolden(const QImage& image, const QString& name);

/// The largest difference of a premultiplied channel, 0…255; 256 when the sizes differ.
[[nodiscard]] int largestDifference(const QImage& a, const QImage& b);

}  // namespace support
