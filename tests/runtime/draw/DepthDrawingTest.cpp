#include <gtest/gtest.h>

#include <cmath>

#include "runtime/draw/DepthOrder.h"
#include "runtime/draw/VertexLighting.h"
#include "support/DrawTools.h"
#include "support/GoldenImage.h"

namespace {

using namespace drawing;
using namespace runtime;

constexpr QSize size(64, 36);
constexpr Color red{1, 0, 0, 1};
constexpr Color green{0, 1, 0, 1};

QuadItem at(float z, const Color& color, DepthTesting depth = DepthTesting::ReadWrite) {
  QuadItem quad;
  quad.matrix.translate(0, 0, z);
  quad.color = color;
  quad.state.depth = depth;
  return quad;
}

QRgb middle(const DrawList& list) {
  return drawn(list, canvas(64, 36)).pixel(32, 18);
}

TEST(DepthDrawing, TestsLessOrEqualInAllCombinations) {
  const QRgb r = 0xFFFF0000U;
  const QRgb g = 0xFF00FF00U;
  using D = DepthTesting;
  EXPECT_EQ(middle(listOf({at(0, red), at(0, green)})), g);
  EXPECT_EQ(middle(listOf({at(0.2F, red), at(0, green)})), r);
  EXPECT_EQ(middle(listOf({at(0, red), at(0.2F, green)})), g);
  EXPECT_EQ(middle(listOf({at(0.2F, red), at(0, green, D::None)})), g);
  EXPECT_EQ(middle(listOf({at(0.2F, red, D::None), at(0, green)})), g);
  EXPECT_EQ(middle(listOf({at(0.2F, red, D::ReadOnly), at(0, green)})), g);
  EXPECT_EQ(middle(listOf({at(0.2F, red), at(0, green, D::ReadOnly)})), r);
  EXPECT_EQ(middle(listOf({at(0.2F, red), ClearItem{{}, false, true}, at(0, green)})), g);
  EXPECT_EQ(middle(listOf({at(0.2F, red), ClearItem{{}, true, false}, at(0, green)})), 0U);
}

TEST(DepthDrawing, InvisibleThingsHideNothing) {
  EXPECT_EQ(middle(listOf({at(0.2F, {1, 0, 0, 0.005}), at(0, green)})), 0xFF00FF00U);
  QuadItem replacing = at(0.2F, {1, 0, 0, 0});
  replacing.state.blending = Blending::Replace;
  EXPECT_EQ(middle(listOf({replacing, at(0, green)})), 0U);
}

TEST(DepthDrawing, SpritesOfOnePlaneArePaintedInOrder) {
  QuadItem tilted = at(0, red);
  tilted.matrix.rotate(40, 1, 1, 0);
  QuadItem small = tilted;
  small.matrix.scale(0.3F);
  small.matrix.translate(0.4F, 0.2F);
  EXPECT_TRUE(paintersOrderSuffices(listOf({tilted, small, tilted})));
  EXPECT_TRUE(paintersOrderSuffices(listOf({at(0, red), at(0, green), at(0.1F, red)})));
  EXPECT_FALSE(paintersOrderSuffices(listOf({at(0.1F, red), at(0, green)})));
  EXPECT_FALSE(paintersOrderSuffices(listOf({at(0, red), tilted})));
  QuadItem aside = at(-0.5F, green);
  aside.matrix.translate(3, 0);
  EXPECT_TRUE(paintersOrderSuffices(listOf({at(0, red), aside})));
  // The tilted ones in one plane also survive the depth buffer.
  tilted.color = green;
  const QImage sampled = drawn(listOf({at(-3, red), at(-5, red), small, tilted}), canvas(64, 36));
  const QImage painted = drawn(listOf({small, tilted}), canvas(64, 36));
  EXPECT_EQ(sampled.pixel(36, 16), painted.pixel(36, 16));
}

TEST(DepthDrawing, ImagesKeepTheirPixelsUnderADepthBuffer) {
  const QImage image = noise(20, 10);
  QuadItem quad = textured(QRectF(13, 7, 20, 10), size, image);
  quad.state.depth = DepthTesting::ReadWrite;
  const DrawList list = listOf({at(0.3F, {0, 0, 0, 0}), quad, at(-0.5F, {0, 0, 0, 0})});
  ASSERT_FALSE(paintersOrderSuffices(list));
  // Up to an alpha of 2 / 255 a pixel counts as invisible.
  EXPECT_LE(support::largestDifference(drawn(list, canvas(64, 36)).copy(13, 7, 20, 10), image), 2);
}

TEST(DepthDrawing, CrossingSpritesCutEachOther) {
  constexpr QSize wide(240, 135);
  QuadItem a = textured(QRectF(60, 20, 120, 95), wide, noise(4, 3));
  QuadItem b = plain(QRectF(60, 20, 120, 95), wide, {1, 0.8, 0, 0.8});
  a.state.depth = b.state.depth = DepthTesting::ReadWrite;
  a.matrix.rotate(50, 0, 1, 0);
  b.matrix.rotate(-50, 0, 1, 0);
  GradientItem sky;
  sky.colors = {{0.1, 0.1, 0.3, 1}, {0.3, 0.5, 0.9, 1}};
  support::expectGolden(drawn(listOf({sky, a, b}), canvas(240, 135)),
                        QStringLiteral("depth-crossing"));
}

/// A ball of the diameter 1 with outward normals.
std::shared_ptr<const Mesh> ball(int slices, int stacks) {
  auto mesh = std::make_shared<Mesh>();
  for (int j = 0; j <= stacks; ++j) {
    for (int i = 0; i <= slices; ++i) {
      const float u = static_cast<float>(i) / static_cast<float>(slices);
      const float v = static_cast<float>(j) / static_cast<float>(stacks);
      const float around = 2 * static_cast<float>(M_PI) * u;
      const float up = static_cast<float>(M_PI) * (v - 0.5F);
      const QVector3D n(std::sin(around) * std::cos(up), std::sin(up),
                        std::cos(around) * std::cos(up));
      mesh->vertices.push_back(n / 2);
      mesh->normals.push_back(n);
      mesh->textureCoordinates.emplace_back(u, v);
    }
  }
  const auto index = [slices](int i, int j) { return static_cast<quint32>(j * (slices + 1) + i); };
  for (int j = 0; j < stacks; ++j)
    for (int i = 0; i < slices; ++i)
      for (const quint32 k : {index(i, j), index(i + 1, j), index(i + 1, j + 1), index(i, j),
                              index(i + 1, j + 1), index(i, j + 1)})
        mesh->indices.push_back(k);
  return mesh;
}

TEST(DepthDrawing, LitBallsBehindGlass) {
  MeshItem item;
  item.mesh = ball(24, 12);
  item.matrix.rotate(20, 1, 0, 0);
  QImage checks = canvas(128, 64, Qt::white);
  for (int y = 0; y < 64; ++y)
    for (int x = 0; x < 128; ++x)
      if ((x / 8 + y / 8) % 2) checks.setPixel(x, y, 0xFF2060C0U);
  item.image = Image::fromQImage(checks);
  item.state.depth = DepthTesting::ReadWrite;
  item.state.culling = FaceCulling::Back;
  auto lighting = std::make_shared<Lighting>();
  lighting->ambient = {0.15, 0.15, 0.15, 1};
  lighting->lights = {{Color::white(), QVector3D(-1, 1, 1), 0}};
  lighting->specular = 0.6F;
  lighting->shininess = 30;
  item.state.lighting = lighting;
  QuadItem glass = at(0.6F, {1, 0.3, 0, 0.5});
  glass.matrix.scale(0.5F, 0.1F);
  MeshItem dark = item;
  dark.matrix.translate(0.6F, 0, 0);
  dark.matrix.scale(0.4F);
  const QImage image =
      drawn(listOf({ClearItem{{0.1, 0.1, 0.1, 1}}, item, dark, glass}), canvas(240, 135));
  support::expectGolden(image, QStringLiteral("depth-ball"));
  // No cracks between triangles: inside the ball's outline nothing of the background is seen.
  for (int y = 30; y < 105; ++y) EXPECT_GT(qBlue(image.pixel(110, y)), 27) << y;
}

TEST(DepthDrawing, UnsoundMeshesAreNotDrawn) {
  MeshItem item;
  EXPECT_EQ(middle(listOf({item})), 0U);
  auto mesh = std::make_shared<Mesh>();
  mesh->vertices = {{-1, -1, 0}, {1, -1, 0}, {0, 1, 0}};
  mesh->indices = {0, 1, 7};
  item.mesh = mesh;
  EXPECT_EQ(middle(listOf({item})), 0U);
  mesh->indices = {0, 1, 2, 0};
  EXPECT_EQ(middle(listOf({item})), 0xFFFFFFFFU);
  mesh->normals.resize(2);
  EXPECT_EQ(middle(listOf({item})), 0U);
  mesh->normals.clear();
  mesh->vertices[2].setY(std::nanf(""));
  EXPECT_EQ(middle(listOf({item})), 0U);
}

TEST(DepthDrawing, LightFollowsTheFixedFunctionModel) {
  Lighting lighting;
  lighting.ambient = {0.2, 0.2, 0.2, 1};
  lighting.lights = {{Color::white(), QVector3D(0, 0, 2), 0}};
  const Color half{0.5, 0.5, 0.5, 0.7};
  const auto lit = [&](const QVector3D& normal) {
    return litVertex(lighting, QVector3D(), normal, half).color;
  };
  EXPECT_NEAR(lit(QVector3D(0, 0, 1)).red, 0.6, 1e-5);
  EXPECT_NEAR(lit(QVector3D(0.6F, 0, 0.8F)).red, 0.5, 1e-5);
  EXPECT_NEAR(lit(QVector3D(0, 0, -1)).red, 0.1, 1e-5);
  EXPECT_NEAR(lit(QVector3D(0, 0, 1)).alpha, 0.7, 1e-9);
  lighting.lights[0].attenuation = 0.25F;
  EXPECT_NEAR(lit(QVector3D(0, 0, 1)).red, 0.5 * (0.2 + 0.5), 1e-5);
  lighting.specular = 0.8F;
  lighting.shininess = 10;
  EXPECT_NEAR(litVertex(lighting, QVector3D(), QVector3D(0, 0, 1), half).highlight.x(), 0.4, 1e-5);
}

}  // namespace
