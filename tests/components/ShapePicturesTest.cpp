#include "ComponentPlayer.h"
#include "support/GoldenImage.h"

namespace {

using namespace support;

TEST(ShapePictures, Plates) {
  expectGolden(ComponentPlayer("Rectangle").picture(), QStringLiteral("components/rectangle"));
  expectGolden(ComponentPlayer("RoundedRectangle").picture(),
               QStringLiteral("components/rounded-rectangle"));
  expectGolden(ComponentPlayer("Line").picture(), QStringLiteral("components/line"));
  expectGolden(ComponentPlayer("Ellipse").picture(), QStringLiteral("components/ellipse"));
}

/// Half transparent, so that a part that is drawn twice would show.
TEST(ShapePictures, RoundCornersAndEnds) {
  ComponentPlayer plate("RoundedRectangle", {{"inputWidth", size(300)},
                                             {"inputHeight", size(160)},
                                             {"Radius", 40.0},
                                             {"Color", color(0x80FFB02E)}});
  expectGolden(plate.picture(), QStringLiteral("components/rounded-rectangle-40"));
  plate.set("Radius", 1000.0);  // no more than half the shorter side
  expectGolden(plate.picture(), QStringLiteral("components/rounded-rectangle-full"));
  ComponentPlayer line("Line", {{"inputHeight", size(12)}, {"Ends", menu(1)}});
  expectGolden(line.picture(), QStringLiteral("components/line-round"));
  ComponentPlayer ellipse("Ellipse", {{"inputWidth", size(300)}, {"inputHeight", size(120)}});
  expectGolden(ellipse.picture(), QStringLiteral("components/ellipse-wide"));
}

TEST(ShapePictures, GradientsRunTheWayTheyAreTold) {
  ComponentPlayer bar("GradientBar", {{"inputWidth", size(240)}, {"inputHeight", size(80)}});
  const QColor first(0x0A, 0x1B, 0x44);
  const QPoint starts[] = {{0, 40}, {239, 40}, {120, 79}, {120, 0}};
  for (int direction = 0; direction < 4; ++direction) {
    bar.set("Direction", menu(direction));
    const QImage image = bar.image();
    EXPECT_LT(std::abs(image.pixelColor(starts[direction]).blue() - first.blue()), 6) << direction;
  }
  bar.set("Direction", menu(0));
  expectGolden(bar.picture(), QStringLiteral("components/gradient-right"));
  bar.set("Direction", menu(4));
  bar.set("Color_1", color(0xFFFFFFFF));
  bar.set("Opacity_1", 0.0);
  bar.set("Color_2", color(0xFFFFFFFF));
  bar.set("Opacity_2", 0.8);
  expectGolden(bar.picture(), QStringLiteral("components/gradient-reflected"));
}

QImage target() {
  QImage image(320, 160, QImage::Format_ARGB32_Premultiplied);
  image.fill(QColor(0x1A, 0x58, 0xC4));
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(0, 0, 40, 40, QColor(0xFF, 0xB0, 0x2E));
  painter.setPen(QPen(Qt::white, 6));
  painter.drawEllipse(QPoint(160, 80), 70, 70);
  return image;
}

TEST(ShapePictures, ImagesFillFitOrStretch) {
  ComponentPlayer component("ImageComponent");
  EXPECT_EQ(component.image().pixel(100, 100), 0u);  // nothing without an image
  component.set("Image", runtime::Image::fromQImage(target()));
  expectGolden(component.picture(), QStringLiteral("components/image-fit"));
  component.set("Fit", menu(0));
  expectGolden(component.picture(), QStringLiteral("components/image-fill"));
  component.set("Fit", menu(2));
  component.set("Color", color(0xFFFF8080));
  expectGolden(component.picture(), QStringLiteral("components/image-stretch-tinted"));
  component.set("inputWidth", size(320));
  component.set("inputHeight", size(160));
  component.set("Color", color(0xFFFFFFFF));
  EXPECT_LE(largestDifference(component.image(), target()), 1);  // at its own size, untouched
}

}  // namespace
