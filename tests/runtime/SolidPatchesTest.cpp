#include <gtest/gtest.h>

#include "support/GraphBuilder.h"

namespace {

using foundation::Color;
using foundation::PropertyDictionary;
using support::GraphBuilder;

QString s(const char* text) {
  return QString::fromLatin1(text);
}

runtime::DrawList drawnBy(const char* patch, const PropertyDictionary& inputs,
                          const PropertyDictionary& state = {}) {
  GraphBuilder graph;
  graph.node(s(patch), state, inputs);
  return graph.renderer()->renderAtTime(0, QSize(200, 100));
}

/// The lowest and highest coordinates of a mesh where it is drawn.
std::pair<QVector3D, QVector3D> bounds(const runtime::MeshItem& item) {
  QVector3D low(1e9F, 1e9F, 1e9F);
  QVector3D high = -low;
  for (const QVector3D& vertex : item.mesh->vertices) {
    const QVector3D p = item.matrix.map(vertex);
    for (int i = 0; i < 3; ++i) {
      low[i] = std::min(low[i], p[i]);
      high[i] = std::max(high[i], p[i]);
    }
  }
  return {low, high};
}

bool isNear(const QVector3D& a, const QVector3D& b) {
  return (a - b).length() < 1e-4F;
}

TEST(SolidPatches, AGridHasItsCellsAndItsSize) {
  const auto list = drawnBy("QCGrid", {{s("inputX"), 1.0},
                                       {s("inputWidth"), 3.0},
                                       {s("inputHeight"), 2.0},
                                       {s("inputWidthResolution"), 3},
                                       {s("inputHeightResolution"), 2}});
  ASSERT_EQ(list.items.size(), 1u);
  const auto& grid = std::get<runtime::MeshItem>(list.items[0]);
  EXPECT_EQ(grid.mesh->indices.size(), 3u * 2 * 6);  // two triangles a cell
  const auto [low, high] = bounds(grid);
  EXPECT_TRUE(isNear(low, {-0.5F, -1, 0}));
  EXPECT_TRUE(isNear(high, {2.5F, 1, 0}));
}

TEST(SolidPatches, ATeapotIsAClosedSurfaceOfItsSize) {
  const auto list = drawnBy("QCTeapot", {{s("inputScale"), 2.0}, {s("inputY"), 3.0}});
  ASSERT_EQ(list.items.size(), 1u);
  const auto& pot = std::get<runtime::MeshItem>(list.items[0]);
  ASSERT_EQ(pot.mesh->normals.size(), pot.mesh->vertices.size());
  for (const QVector3D& normal : pot.mesh->normals) EXPECT_NEAR(normal.length(), 1, 1e-3);
  for (const quint32 index : pot.mesh->indices) ASSERT_LT(index, pot.mesh->vertices.size());
  EXPECT_EQ(pot.mesh->indices.size() % 3, 0u);
  const auto [low, high] = bounds(pot);
  for (int i = 0; i < 3; ++i) EXPECT_LE(high[i] - low[i], 2.001F);
  EXPECT_GT(high.x() - low.x(), 1.5F);
  EXPECT_GE(low.y(), 1.999F);  // 3 − 1
}

TEST(SolidPatches, ATrackballNobodyTurnsChangesNothing) {
  GraphBuilder sprite;
  sprite.node(s("QCSprite"), {}, {{s("inputX"), 0.5}});
  GraphBuilder turned;
  turned.macro(s("QCTrackBall"), sprite, {{s("inputOriginX"), 4.0}, {s("inputOriginZ"), -2.0}});
  const runtime::DrawList inside = turned.renderer()->renderAtTime(0, QSize(200, 100));
  EXPECT_TRUE(inside == sprite.renderer()->renderAtTime(0, QSize(200, 100)));
  EXPECT_EQ(inside.items.size(), 1u);
}

TEST(SolidPatches, FogLetsItsContentThrough) {
  GraphBuilder sprite;
  sprite.node(s("QCSprite"));
  GraphBuilder fog;
  fog.macro(s("QCFog"), sprite);
  EXPECT_EQ(fog.renderer()->renderAtTime(0, QSize(200, 100)).items.size(), 1u);
}

TEST(SolidPatches, AGradientFillsFromItsFirstColourToItsLast) {
  const auto color = [](double r, double b) {
    return PropertyDictionary{{s("red"), r}, {s("green"), 0.0}, {s("blue"), b}, {s("alpha"), 1.0}};
  };
  for (const int direction : {0, 1, 2, 3}) {
    GraphBuilder graph;
    graph.node(s("QCGradient"), {},
               {{s("inputColor1"), color(1, 0)},
                {s("inputColor2"), color(0, 1)},
                {s("inputDirection"), direction}});
    const QImage image = graph.renderer()->imageAtTime(0, QSize(40, 40));
    const QPoint ends[] = {{20, 39}, {0, 20}, {20, 0}, {39, 20}};  // where the first colour lies
    const QColor first = image.pixelColor(ends[direction]);
    const QColor last = image.pixelColor(ends[(direction + 2) % 4]);
    EXPECT_GT(first.red(), 245) << direction;
    EXPECT_LT(first.blue(), 10) << direction;
    EXPECT_GT(last.blue(), 245) << direction;
    EXPECT_NEAR(image.pixelColor(20, 20).red(), 127, 5);
  }
  const auto three = drawnBy("QCGradient", {}, {{s("numberOfPoints"), 3}});
  const auto& item = std::get<runtime::GradientItem>(three.items.at(0));
  ASSERT_EQ(item.colors.size(), 3u);  // black, grey, white with the grey in the middle
  EXPECT_EQ(item.colors[1], (Color{0.5, 0.5, 0.5, 1}));
  EXPECT_EQ(item.middle, 0.5);
}

TEST(SolidPatches, ALineGoesFromPointToPoint) {
  const auto list = drawnBy("QCLine", {{s("inputStartX"), -0.25},
                                       {s("inputStartY"), 0.5},
                                       {s("inputEndX"), 0.75},
                                       {s("inputEndZ"), -1.0},
                                       {s("inputLineWidth"), 3.0}});
  const auto& line = std::get<runtime::LineItem>(list.items.at(0));
  EXPECT_TRUE(isNear(line.start, {-0.25F, 0.5F, 0}));
  EXPECT_TRUE(isNear(line.end, {0.75F, 0, -1}));
  EXPECT_EQ(line.width, 3);
}

/// A billboard with an image of 40 × 20 pixels on 200 × 100, which are 100 pixels a unit.
QSizeF billboardSize(const char* mode, const PropertyDictionary& inputs) {
  GraphBuilder graph;
  const QString color = graph.node(s("QCImageFilter:CIConstantColorGenerator"));
  const QString crop = graph.node(s("QCImageCrop"), {},
                                  {{s("inputRectangle_Z"), 40.0}, {s("inputRectangle_W"), 20.0}});
  const QString billboard = graph.node(s("QCBillboard"), {{s("sizeMode"), s(mode)}}, inputs);
  graph.connect(color, s("outputImage"), crop, s("inputImage"));
  graph.connect(crop, s("outputImage"), billboard, s("inputImage"));
  const auto list = graph.renderer()->renderAtTime(0, QSize(200, 100));
  const QMatrix4x4& m = std::get<runtime::QuadItem>(list.items.at(0)).matrix;
  return {m.mapVector(QVector3D(1, 0, 0)).length(), m.mapVector(QVector3D(0, 1, 0)).length()};
}

TEST(SolidPatches, BillboardsTakeTheirSizeByTheirMode) {
  const auto near = [](const QSizeF& a, const QSizeF& b) {
    return std::abs(a.width() - b.width()) + std::abs(a.height() - b.height()) < 1e-4;
  };
  EXPECT_TRUE(near(billboardSize("real", {}), {0.4, 0.2}));
  EXPECT_TRUE(near(billboardSize("autoHeight", {{s("inputScale"), 1.0}}), {1, 0.5}));
  EXPECT_TRUE(near(billboardSize("autoWidth", {{s("inputScale"), 0.5}}), {1, 0.5}));
  EXPECT_TRUE(
      near(billboardSize("custom", {{s("inputWidth"), 0.3}, {s("inputHeight"), 0.7}}), {0.3, 0.7}));
}

/// One fact about an image of 30 × 20 pixels whose lower left corner is at (5, 7).
runtime::Value factOf(const char* patch, const char* output) {
  GraphBuilder graph;
  const QString color = graph.node(s("QCImageFilter:CIConstantColorGenerator"));
  const QString crop = graph.node(s("QCImageCrop"), {},
                                  {{s("inputRectangle_X"), 5.0},
                                   {s("inputRectangle_Y"), 7.0},
                                   {s("inputRectangle_Z"), 30.0},
                                   {s("inputRectangle_W"), 20.0}});
  const QString fact = graph.node(s(patch));
  graph.connect(color, s("outputImage"), crop, s("inputImage"));
  graph.connect(crop, s("outputImage"), fact, s("inputImage"));
  graph.publishOutput(fact, s(output), s("result"));
  const auto renderer = graph.renderer();
  (void)renderer->renderAtTime(0, QSize(200, 100));
  return renderer->valueForOutputKey(s("result"));
}

TEST(ImageFacts, OriginSizeAndPixelsOfAPlacedImage) {
  EXPECT_EQ(factOf("QCImageOrigin", "outputPixelsOriginX").toNumber(), 5);
  EXPECT_EQ(factOf("QCImageOrigin", "outputPixelsOriginY").toNumber(), 7);
  EXPECT_EQ(factOf("QCImageInfo", "outputPixelsOriginY").toNumber(), 7);
  EXPECT_EQ(factOf("QCImageInfo", "outputPixelsSizeH").toNumber(), 30);
  EXPECT_EQ(factOf("QCImageInfo", "outputPixelsSizeV").toNumber(), 20);
  EXPECT_TRUE(factOf("QCImageInfo", "outputHasAlpha").toBoolean());
  const QRect place(5, 7, 30, 20);
  EXPECT_EQ(factOf("QCImageInfo", "outputDomainOfDefinition").toImage().extent(), place);
  EXPECT_EQ(factOf("QCImageColorMatchingProperties", "outputImage").toImage().extent(), place);
  EXPECT_EQ(factOf("QCImageTexturingProperties", "outputImage").toImage().extent(), place);
  EXPECT_EQ(factOf("QCImageTransform", "outputImage").toImage().extent(), place);
}

}  // namespace
