#include <gtest/gtest.h>

#include <QPolygonF>
#include <cmath>
#include <limits>

#include "runtime/draw/ItemGeometry.h"
#include "support/DrawTools.h"
#include "support/GoldenImage.h"

namespace {

using namespace drawing;
using namespace runtime;

constexpr QSize size(64, 36);

TEST(QuadDrawing, ImageOnWholePixelsIsCopiedExactly) {
  const QImage image = noise(20, 10);
  for (const QPoint& at : {QPoint(0, 0), QPoint(13, 7), QPoint(44, 26)}) {
    const QImage result =
        drawn(listOf({textured(QRectF(at, image.size()), size, image)}), canvas(64, 36));
    EXPECT_EQ(result.copy(QRect(at, image.size())), image);
  }
}

TEST(QuadDrawing, WholePixelsAreFoundInLargePicturesToo) {
  const QSize large(3840, 2160);
  const QImage image = noise(1001, 333);
  const QRect place(2701, 1713, 1001, 333);
  const QImage result = drawn(listOf({textured(place, large, image)}), canvas(3840, 2160));
  EXPECT_EQ(result.copy(place), image);
}

TEST(QuadDrawing, HalfAPixelAveragesNeighbours) {
  QImage image = canvas(8, 8, Qt::black);
  for (int x = 0; x < 8; x += 2)
    for (int y = 0; y < 8; ++y) image.setPixel(x, y, 0xFFFFFFFFU);
  const QImage across =
      drawn(listOf({textured(QRectF(10.5, 4, 8, 8), size, image)}), canvas(64, 36, Qt::black));
  for (int x = 11; x < 18; ++x) EXPECT_NEAR(qRed(across.pixel(x, 8)), 128, 2) << x;
  const QImage down = drawn(
      listOf({textured(QRectF(4, 10.5, 8, 8), size, image.transformed(QTransform().rotate(90)))}),
      canvas(64, 36, Qt::black));
  for (int y = 11; y < 18; ++y) EXPECT_NEAR(qRed(down.pixel(8, y)), 128, 2) << y;
}

TEST(QuadDrawing, SlowMotionIsSmooth) {
  // One bright column wanders; what it loses on the left it gains on the right.
  QImage image = canvas(9, 9, Qt::black);
  for (int y = 0; y < 9; ++y) image.setPixel(4, y, 0xFFFFFFFFU);
  for (int step = 0; step <= 16; ++step) {
    const double shift = step / 16.0;
    const QImage result =
        drawn(listOf({textured(QRectF(20 + shift, 8, 9, 9), size, image)}), canvas(64, 36));
    EXPECT_NEAR(qRed(result.pixel(24, 12)), 255 * (1 - shift), 3) << step;
    EXPECT_NEAR(qRed(result.pixel(25, 12)), 255 * shift, 3) << step;
  }
}

TEST(QuadDrawing, StrongMinificationKeepsTheMean) {
  QImage image = canvas(512, 512, Qt::black);
  for (int y = 0; y < 512; ++y)
    for (int x = 0; x < 512; ++x)
      if ((x + y) % 2) image.setPixel(x, y, 0xFFFFFFFFU);
  const QImage result =
      drawn(listOf({textured(QRectF(10, 5, 23, 21), size, image)}), canvas(64, 36, Qt::black));
  for (int y = 6; y < 25; ++y)
    for (int x = 11; x < 32; ++x) EXPECT_NEAR(qRed(result.pixel(x, y)), 128, 6);
}

TEST(QuadDrawing, LowerLeftOfTheTextureIsLowerLeftOfTheQuad) {
  QImage image = canvas(2, 2, Qt::black);
  image.setPixel(0, 1, 0xFFFF0000U);
  const QImage stretched =
      drawn(listOf({textured(QRectF(0, 0, 64, 36), size, image)}), canvas(64, 36));
  EXPECT_EQ(stretched.pixel(2, 33), 0xFFFF0000U);
  EXPECT_EQ(stretched.pixel(2, 2), 0xFF000000U);
  QuadItem mirrored = textured(QRectF(0, 0, 64, 36), size, image);
  mirrored.matrix.scale(-1, -1);
  EXPECT_EQ(drawn(listOf({mirrored}), canvas(64, 36)).pixel(61, 2), 0xFFFF0000U);
}

TEST(QuadDrawing, NeighboursHaveNoSeam) {
  const Color color{0.2, 0.6, 1, 1};
  const QImage halves = drawn(
      listOf({plain(QRectF(3, 3, 17, 20), size, color), plain(QRectF(20, 3, 30, 20), size, color)}),
      canvas(64, 36));
  for (int x = 3; x < 50; ++x) EXPECT_EQ(halves.pixel(x, 10), halves.pixel(5, 5)) << x;
  QImage white = canvas(5, 5, Qt::white);
  const QImage scaled = drawn(listOf({textured(QRectF(3, 3, 17, 20), size, white),
                                      textured(QRectF(20, 3, 30, 20), size, white)}),
                              canvas(64, 36));
  for (int x = 3; x < 50; ++x) EXPECT_EQ(scaled.pixel(x, 10), 0xFFFFFFFFU) << x;
}

TEST(QuadDrawing, EdgesAreAntialiased) {
  const QImage result = drawn(listOf({plain(QRectF(10.25, 5, 10, 10), size, Color::white())}),
                              canvas(64, 36, Qt::black));
  EXPECT_NEAR(qRed(result.pixel(10, 9)), 191, 2);
  EXPECT_NEAR(qRed(result.pixel(20, 9)), 64, 2);
}

struct BlendingCase {
  Blending blending;
  Color source;
  QRgb expected;
};

TEST(QuadDrawing, BlendsAsStated) {
  // Over a destination of premultiplied (100, 50, 0, 200).
  const std::vector<BlendingCase> cases{
      {Blending::Replace, {1, 0.5, 0, 0.4}, qRgba(102, 51, 0, 102)},
      {Blending::Replace, {1, 1, 1, 0}, qRgba(0, 0, 0, 0)},
      {Blending::Over, {1, 0.5, 0, 0.4}, qRgba(162, 81, 0, 222)},
      {Blending::Over, {1, 1, 1, 0}, qRgba(100, 50, 0, 200)},
      {Blending::Add, {1, 0.5, 0, 0.4}, qRgba(202, 101, 0, 255)},
      {Blending::Alpha, {1, 0.5, 0, 0.4}, qRgba(101, 50, 0, 161)},
  };
  for (const BlendingCase& c : cases) {
    for (const bool withImage : {false, true}) {
      QuadItem quad = withImage ? textured(QRectF(8, 8, 8, 8), size, canvas(8, 8, Qt::white))
                                : quadOver(QRectF(8, 8, 8, 8), size);
      quad.color = c.source;
      quad.state.blending = c.blending;
      QImage target = canvas(64, 36);
      target.fill(qRgba(100, 50, 0, 200));
      const QRgb got = drawn(listOf({quad}), target).pixel(12, 12);
      const QImage a(reinterpret_cast<const uchar*>(&got), 1, 1, 4,
                     QImage::Format_ARGB32_Premultiplied);
      const QImage b(reinterpret_cast<const uchar*>(&c.expected), 1, 1, 4,
                     QImage::Format_ARGB32_Premultiplied);
      EXPECT_LE(support::largestDifference(a, b), 1)
          << "blending " << static_cast<int>(c.blending) << " image " << withImage << " got "
          << qRed(got) << ' ' << qGreen(got) << ' ' << qBlue(got) << ' ' << qAlpha(got);
    }
  }
}

TEST(QuadDrawing, ColourMultipliesImageAndMaskItsLuminance) {
  QImage image = canvas(4, 4);
  image.fill(qRgba(200, 100, 50, 200));
  QuadItem quad = textured(QRectF(8, 8, 4, 4), size, image);
  quad.color = {0.5, 1, 0, 0.5};
  QImage mask = canvas(2, 2, Qt::black);
  mask.setPixel(0, 0, 0xFFFFFFFFU);
  mask.setPixel(0, 1, 0xFFFFFFFFU);
  const QRgb tinted = drawn(listOf({quad}), canvas(64, 36)).pixel(8, 8);
  EXPECT_NEAR(qRed(tinted), 50, 1);
  EXPECT_NEAR(qGreen(tinted), 50, 1);
  EXPECT_EQ(qBlue(tinted), 0);
  EXPECT_NEAR(qAlpha(tinted), 100, 1);
  quad.mask = Image::fromQImage(mask);
  const QImage masked = drawn(listOf({quad}), canvas(64, 36));
  EXPECT_NEAR(qAlpha(masked.pixel(8, 10)), 100, 1);
  EXPECT_EQ(masked.pixel(11, 10), 0U);
  QuadItem shape = plain(QRectF(8, 8, 16, 16), size, Color::white());
  shape.mask = quad.mask;
  const QImage cut = drawn(listOf({shape}), canvas(64, 36));
  EXPECT_EQ(cut.pixel(9, 16), 0xFFFFFFFFU);
  EXPECT_EQ(cut.pixel(22, 16), 0U);
}

TEST(QuadDrawing, ColourMaskKeepsChannels) {
  QuadItem quad = plain(QRectF(8, 8, 8, 8), size, Color::white());
  quad.state.colorMask = 2 | 8;
  EXPECT_EQ(drawn(listOf({quad}), canvas(64, 36, Qt::black)).pixel(12, 12), 0xFF00FF00U);
}

TEST(QuadDrawing, TextureMatrixRepeatsOrGoesOn) {
  QImage image = canvas(2, 1, Qt::black);
  image.setPixel(1, 0, 0xFFFFFFFFU);
  QuadItem quad = textured(QRectF(0, 0, 64, 36), size, image);
  quad.image = quad.image.withTexturing(QTransform::fromScale(2, 1), true);
  const QImage repeated = drawn(listOf({quad}), canvas(64, 36));
  EXPECT_GE(qRed(repeated.pixel(24, 10)), 245);
  EXPECT_LE(qRed(repeated.pixel(40, 10)), 10);
  EXPECT_GE(qRed(repeated.pixel(56, 10)), 245);
  quad.image = quad.image.withTexturing(QTransform::fromScale(2, 1), false);
  EXPECT_EQ(drawn(listOf({quad}), canvas(64, 36)).pixel(40, 10), 0xFFFFFFFFU);
}

TEST(QuadDrawing, PerspectiveHitsTheComputedCorners) {
  constexpr QSize wide(320, 180);
  QuadItem quad = plain(QRectF(80, 30, 160, 120), wide, Color::white());
  quad.matrix.rotate(50, 0, 1, 0);
  quad.matrix.rotate(20, 1, 0, 0);
  QPolygonF outline;
  const double eye = std::sqrt(3.0);
  for (const QVector3D& corner : {QVector3D(-0.5F, -0.5F, 0), QVector3D(0.5F, -0.5F, 0),
                                  QVector3D(0.5F, 0.5F, 0), QVector3D(-0.5F, 0.5F, 0)}) {
    const QVector3D p = quad.matrix.map(corner);
    const double scale = eye / (eye - p.z());
    outline << QPointF(160 + p.x() * scale * 160, 90 - p.y() * scale * 160);
  }
  QuadItem odd = quad;  // goes the way of what the toolkit's painter cannot do
  odd.state.blending = Blending::Alpha;
  for (const QuadItem& item : {quad, odd}) {
    const QImage result = drawn(listOf({item}), canvas(320, 180, Qt::black));
    double covered = 0;
    double area = 0;
    for (int i = 0; i < 4; ++i)
      area += outline[i].x() * outline[(i + 1) % 4].y() - outline[(i + 1) % 4].x() * outline[i].y();
    for (int y = 0; y < 180; ++y)
      for (int x = 0; x < 320; ++x) covered += qRed(result.pixel(x, y)) / 255.0;
    EXPECT_NEAR(covered, std::abs(area) / 2, 0.004 * covered);
    const QPointF middle = (outline[0] + outline[2]) / 2;
    for (const QPointF& corner : outline) {
      const QPointF in = corner + (middle - corner) * 0.06;
      const QPointF out = corner - (middle - corner) * 0.06;
      EXPECT_EQ(qRed(result.pixel(in.toPoint())), 255);
      EXPECT_EQ(qRed(result.pixel(out.toPoint())), 0);
    }
  }
}

TEST(QuadDrawing, BothWaysOfDrawingAgree) {
  constexpr QSize wide(200, 120);
  const QImage image =
      noise(16, 12).scaled(160, 120, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  QuadItem quad = textured(QRectF(30, 20, 130, 80), wide, image);
  quad.matrix.rotate(25, 0, 0, 1);
  quad.matrix.rotate(35, 0, 1, 0);
  QuadItem other = quad;
  other.image = other.image.withTexturing(QTransform::fromScale(0.9999999, 1), false);
  const QImage a = drawn(listOf({quad}), canvas(200, 120));
  const QImage b = drawn(listOf({other}), canvas(200, 120));
  EXPECT_LE(support::largestDifference(a, b), 12);
  support::expectGolden(a, QStringLiteral("quad-perspective"));
}

TEST(QuadDrawing, CullsTheSideThatIsNotAsked) {
  for (const bool turned : {false, true}) {
    QuadItem quad = plain(QRectF(8, 8, 40, 20), size, Color::white());
    if (turned) quad.matrix.rotate(180, 0, 1, 0);
    quad.state.culling = FaceCulling::Back;
    EXPECT_EQ(qAlpha(drawn(listOf({quad}), canvas(64, 36)).pixel(28, 18)), turned ? 0 : 255);
    quad.state.culling = FaceCulling::Front;
    EXPECT_EQ(qAlpha(drawn(listOf({quad}), canvas(64, 36)).pixel(28, 18)), turned ? 255 : 0);
  }
}

TEST(QuadDrawing, WhatIsBehindTheEyeIsCutOff) {
  // A floor from far in front to behind the viewer, below the eye: fills the lower middle only.
  QuadItem floor;
  floor.matrix.translate(0, -0.2F, 0);
  floor.matrix.rotate(-90, 1, 0, 0);
  floor.matrix.scale(0.4F, 20);
  for (const bool withImage : {false, true}) {
    if (withImage) floor.image = Image::fromQImage(canvas(8, 8, Qt::white));
    const QImage result = drawn(listOf({floor}), canvas(64, 36));
    EXPECT_EQ(qAlpha(result.pixel(32, 35)), 255);
    EXPECT_EQ(qAlpha(result.pixel(32, 2)), 0);
    EXPECT_EQ(qAlpha(result.pixel(2, 19)), 0);
  }
  QuadItem behind = plain(QRectF(0, 0, 64, 36), size, Color::white());
  behind.matrix.translate(0, 0, 3);
  EXPECT_EQ(drawn(listOf({behind}), canvas(64, 36)), canvas(64, 36));
}

TEST(QuadDrawing, DegenerateAndHugeQuadsAreHarmless) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const float infinite = std::numeric_limits<float>::infinity();
  const QImage image = noise(7, 7);
  for (const bool withImage : {false, true}) {
    for (const float scale : {0.0F, nan, infinite, -infinite}) {
      QuadItem quad;
      if (withImage) quad.image = Image::fromQImage(image);
      quad.matrix.scale(scale, 1);
      EXPECT_EQ(drawn(listOf({quad}), canvas(64, 36)), canvas(64, 36)) << scale;
    }
    for (const float scale : {1e5F, 1e12F, -1e12F, 1e30F}) {
      QuadItem quad;
      quad.matrix.scale(scale);
      quad.state.blending = Blending::Replace;
      if (withImage) quad.image = Image::fromQImage(canvas(3, 3, Qt::white));
      EXPECT_EQ(drawn(listOf({quad}), canvas(64, 36)).pixel(20, 20), 0xFFFFFFFFU) << scale;
    }
  }
  QuadItem far = plain(QRectF(1e7, 1e7, 10, 10), size, Color::white());
  EXPECT_EQ(drawn(listOf({far}), canvas(64, 36)), canvas(64, 36));
  QuadItem odd = plain(QRectF(8, 8, 8, 8), size, {2, -1, std::nan(""), 7});
  EXPECT_EQ(drawn(listOf({odd}), canvas(64, 36)).pixel(10, 10), 0xFFFF0000U);
}

}  // namespace
