#include "document/psd/PsdClipping.h"

namespace document {

namespace {

/// The alpha of a row of the base, seen from a row of the picture; 0 beside the base.
class BaseAlpha {
 public:
  BaseAlpha(const QImage& base, int y, int offset)
      : m_row(y >= 0 && y < base.height() ? reinterpret_cast<const QRgb*>(base.constScanLine(y))
                                          : nullptr),
        m_width(base.width()),
        m_offset(offset) {}
  [[nodiscard]] int at(int x) const {
    const int column = x - m_offset;
    return m_row && column >= 0 && column < m_width ? qAlpha(m_row[column]) : 0;
  }

 private:
  const QRgb* m_row;
  int m_width;
  int m_offset;
};

}  // namespace

void clipPsdPicture(PsdPicture& picture, const PsdPicture& base) {
  const QPoint offset = base.topLeft - picture.topLeft;
  for (int y = 0; y < picture.image.height(); ++y) {
    const BaseAlpha alpha(base.image, y - offset.y(), offset.x());
    auto* row = reinterpret_cast<QRgb*>(picture.image.scanLine(y));
    for (int x = 0; x < picture.image.width(); ++x) {
      const int clipped = (qAlpha(row[x]) * alpha.at(x) + 127) / 255;
      row[x] = (row[x] & 0x00FFFFFF) | static_cast<QRgb>(clipped) << 24;
    }
  }
}

}  // namespace document
