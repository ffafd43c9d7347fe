#pragma once

#include <QImage>
#include <QStringList>
#include <vector>

namespace document {

/// One decoded layer with all that its groups add to it.
struct PsdPicture {
  QImage image;  ///< straight alpha, sRGB
  QString name;
  QPoint topLeft;  ///< canvas, y down; the picture may reach beyond the canvas
  double opacity = 1;
  bool visible = true;
};

/// The content of a layered image file. Reading never fails: what cannot be read is missing and
/// told in the warnings.
struct PsdDocument {
  QSize size;                      ///< of the canvas; empty when the file could not be read at all
  std::vector<PsdPicture> layers;  ///< topmost first, groups resolved
  QStringList warnings;            ///< sentences for the person who imports

  [[nodiscard]] static PsdDocument read(QByteArrayView data);
};

}  // namespace document
