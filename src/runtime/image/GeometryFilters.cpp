#include <QPolygonF>
#include <QtMath>

#include "runtime/image/ComputedImage.h"
#include "runtime/image/ImageFilter.h"
#include "runtime/image/Resampling.h"

namespace runtime::image {

namespace {

Image affineClamp(const FilterArguments& a) {
  return clampedTo(a.image(0), a.transform(1));
}

Image affineTile(const FilterArguments& a) {
  return tiled(a.image(0), a.transform(1));
}

Image scale(const FilterArguments& a) {
  const QRect e = a.image(0).extent();
  const double y = a.number(1);
  const double x = y * a.number(2);
  if (a.image(0).isInfinite()) return transformed(a.image(0), QTransform::fromScale(x, y));
  const QRect target = pixelRect(QRectF(e.x() * x, e.y() * y, e.width() * x, e.height() * y));
  const QSize size(std::min(target.width(), ComputedImage::largestSide),
                   std::min(target.height(), ComputedImage::largestSide));
  return resized(a.image(0), size, target.topLeft());
}

Image perspective(const FilterArguments& a) {
  const Image& image = a.image(0);
  if (image.isInfinite()) return {};
  const QRectF e = image.extent();  // its "top" is the lower edge, as y runs up
  const QPolygonF from({e.topLeft(), e.topRight(), e.bottomRight(), e.bottomLeft()});
  const QPolygonF to({a.point(4), a.point(3), a.point(2), a.point(1)});
  QTransform map;
  return QTransform::quadToQuad(from, to, map) ? transformed(image, map) : Image();
}

/// Turned about its centre and enlarged until it fills its own rectangle again.
Image straighten(const FilterArguments& a) {
  const Image& image = a.image(0);
  if (image.isInfinite() || a.number(1) == 0) return image;
  const QRectF e = image.extent();
  const double sine = std::abs(std::sin(a.number(1)));
  const double cosine = std::abs(std::cos(a.number(1)));
  const double factor = std::max((e.width() * cosine + e.height() * sine) / e.width(),
                                 (e.width() * sine + e.height() * cosine) / e.height());
  const QTransform map =
      imageTransform(e.center(), factor, factor, qRadiansToDegrees(a.number(1)), {});
  return cropped(transformed(image, map), image.extent());
}

}  // namespace

ImageFilters geometryFilters() {
  using namespace inputs;
  return {
      {"CIAffineClamp", {image(), transform()}, affineClamp},
      {"CIAffineTile", {image(), transform()}, affineTile},
      {"CILanczosScaleTransform",
       {image(), number("inputScale", 1), number("inputAspectRatio", 1)},
       scale,
       "averages where it shrinks and interpolates linearly where it enlarges"},
      {"CIPerspectiveTransform",
       {image(), point("inputTopLeft", 118, 484), point("inputTopRight", 646, 507),
        point("inputBottomRight", 548, 140), point("inputBottomLeft", 155, 153)},
       perspective},
      {"CIStraightenFilter", {image(), angle()}, straighten},
  };
}

}  // namespace runtime::image
