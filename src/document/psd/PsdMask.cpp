#include "document/psd/PsdMask.h"

#include <algorithm>

namespace document {

namespace {

quint8 product(quint8 a, quint8 b) {
  return static_cast<quint8>((a * b + 127) / 255);
}

void multiply(quint8* alpha, int count, quint8 factor) {
  if (factor == 255) return;
  for (int i = 0; i < count; ++i) alpha[i] = product(alpha[i], factor);
}

}  // namespace

void PsdMask::applyTo(quint8* alpha, int x, int y, int width) const {
  if (rect.isEmpty() || y < rect.y() || y >= rect.y() + rect.height()) {
    multiply(alpha, width, outside);
    return;
  }
  const int begin = std::clamp(rect.x() - x, 0, width);
  const int end = std::clamp(rect.x() + rect.width() - x, begin, width);
  multiply(alpha, begin, outside);
  if (begin < end) {
    const auto* row = reinterpret_cast<const quint8*>(samples.constData()) +
                      qint64(y - rect.y()) * rect.width() + (x + begin - rect.x());
    for (int i = begin; i < end; ++i) alpha[i] = product(alpha[i], row[i - begin]);
  }
  multiply(alpha + end, width - end, outside);
}

}  // namespace document
