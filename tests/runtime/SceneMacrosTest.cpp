#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cmath>

#include "foundation/PropertyList.h"
#include "support/GraphBuilder.h"

namespace {

using runtime::Value;
using support::GraphBuilder;
using Dictionary = GraphBuilder::Dictionary;

const runtime::QuadItem& quad(const runtime::DrawList& list, size_t index) {
  return std::get<runtime::QuadItem>(list.items.at(index));
}

bool isNear(const QVector3D& a, const QVector3D& b) {
  return (a - b).length() < 1e-5F;
}

GraphBuilder oneSprite() {
  GraphBuilder g;
  g.node("QCSprite", {}, {{"inputX", 1.0}});
  return g;
}

runtime::DrawList around(const QString& macro, const GraphBuilder& content,
                         const Dictionary& inputs, const Dictionary& state = {}, double time = 0) {
  GraphBuilder root;
  root.macro(macro, content, inputs, state);
  return root.renderer()->renderAtTime(time, {160, 90});
}

TEST(TransformMacros, cameraTurnsMovesThenScalesAboutItsOrigin) {
  const auto list = around("QCCamera", oneSprite(),
                           {{"inputOriginX", 1.0},
                            {"inputRotateZ", 90.0},
                            {"inputTranslateX", 2.0},
                            {"inputScaleX", 3.0}});
  // The sprite's centre is the origin: it turns in place and moves by 2, tripled about the origin.
  EXPECT_TRUE(isNear(quad(list, 0).matrix.map(QVector3D(0, 0, 0)), {7, 0, 0}));
  EXPECT_TRUE(isNear(quad(list, 0).matrix.map(QVector3D(1, 0, 0)), {7, 1, 0}));
}

TEST(TransformMacros, replicatorLeavesTheFirstCopyAndEndsAtTheFinalPlace) {
  const auto list = around("QCReplicator", oneSprite(),
                           {{"inputCopies", 3},
                            {"inputTranslationY", 4.0},
                            {"inputScale", 2.0},
                            {"inputRotationZ", 180.0}});
  ASSERT_EQ(list.items.size(), 3U);
  EXPECT_TRUE(isNear(quad(list, 0).matrix.map(QVector3D()), {1, 0, 0}));
  EXPECT_TRUE(isNear(quad(list, 1).matrix.map(QVector3D()), {0, 3.5F, 0}));
  EXPECT_TRUE(isNear(quad(list, 2).matrix.map(QVector3D()), {-2, 4, 0}));
  EXPECT_EQ(around("QCReplicator", oneSprite(), {{"inputCopies", 1}}).items.size(), 1U);
  EXPECT_TRUE(around("QCReplicator", oneSprite(), {{"inputCopies", 0}}).items.empty());
}

TEST(TransformMacros, timeLoopDrawsItsContentAtSeveralTimes) {
  GraphBuilder content;
  const QString time = content.node("QCTime");
  const QString sprite = content.node("QCSprite");
  content.connect(time, "outputTime", sprite, "inputX");
  const auto list = around("QCTimeLoop", content,
                           {{"inputCount", 3}, {"inputStart", -4.0}, {"inputEnd", 2.0}}, {}, 3);
  ASSERT_EQ(list.items.size(), 3U);
  const float expected[] = {0, 2, 5};  // never before the beginning
  for (size_t i = 0; i < 3; ++i)
    EXPECT_FLOAT_EQ(quad(list, i).matrix.map(QVector3D()).x(), expected[i]);
}

TEST(EnvironmentMacros, stateReachesTheContentOnly) {
  GraphBuilder lit;
  lit.macro("QCColorMask", oneSprite(), {{"inputRed", false}});
  GraphBuilder moved;
  moved.macro("QCLighting", lit, {{"positionX_1", 3.0}, {"attenuation_1", 0.5}},
              {{"numberOfLights", 1}});
  GraphBuilder root;
  root.macro("QCCamera", moved, {{"inputTranslateY", 5.0}});
  root.macro("QCProjection", oneSprite(), {{"inputFieldOfView", 90.0}});
  root.node("QCSprite");
  const auto list = root.renderer()->renderAtTime(0, {160, 90});
  const runtime::DrawState& inside = quad(list, 0).state;
  EXPECT_EQ(inside.colorMask, 14);
  ASSERT_TRUE(inside.lighting);
  ASSERT_EQ(inside.lighting->lights.size(), 1U);
  EXPECT_TRUE(isNear(inside.lighting->lights[0].position, {3, 6, 1 - std::sqrt(3.0F)}));
  EXPECT_EQ(inside.lighting->lights[0].attenuation, 0.5F);
  EXPECT_NEAR(quad(list, 1).state.eyeDistance, 1, 1e-6);
  EXPECT_EQ(quad(list, 2).state.colorMask, 15);
  EXPECT_FALSE(quad(list, 2).state.lighting);
}

TEST(EnvironmentMacros, shaderUniformsBecomeInputs) {
  GraphBuilder g;
  g.macro("QCGLSLShader", oneSprite(), {},
          {{"vertexShader", u"uniform float theta; // uniform float no;\nvoid main() {}"},
           {"fragmentShader", u"uniform sampler2DRect tex;\nuniform  vec3 tint ;uniform int n;"}});
  const auto r = g.renderer();
  QStringList keys;
  for (const runtime::Port& port : r->compiled().nodes().front().ports.inputs) keys += port.key;
  EXPECT_EQ(keys.join(QLatin1Char(' ')), "theta tex tint_X tint_Y tint_Z n _enable");
  EXPECT_EQ(r->renderAtTime(0, {16, 9}).items.size(), 1U);
}

TEST(AnchorPatches, positionsAnObjectAtTheDestinationsEdges) {
  // 16:9: the destination is 2 × 1.125 units.
  const std::pair<double, double> places[] = {{-0.8, 0.3625},  {0.1, 0.3625},  {0.8, 0.3625},
                                              {-0.8, 0.05},    {0.1, 0.05},    {0.8, 0.05},
                                              {-0.8, -0.3625}, {0.1, -0.3625}, {0.8, -0.3625}};
  for (int mode = 0; mode < 9; ++mode) {
    GraphBuilder g;
    const QString a = g.node("QCAnchorPosition", {},
                             {{"inputMode", mode},
                              {"inputX", 0.1},
                              {"inputY", 0.05},
                              {"inputWidth", 0.2},
                              {"inputHeight", 0.3}});
    g.publishOutput(a, "outputX", "x");
    g.publishOutput(a, "outputY", "y");
    const auto r = g.renderer();
    (void)r->renderAtTime(0, {1600, 900});
    EXPECT_NEAR(r->valueForOutputKey("x").toNumber(), places[mode].first, 1e-12) << mode;
    EXPECT_NEAR(r->valueForOutputKey("y").toNumber(), places[mode].second, 1e-12) << mode;
  }
}

TEST(AnchorPatches, hotZoneTellsHitsInATurnedRectangle) {
  GraphBuilder g;
  const QString zone =
      g.node("QCHotZone", {},
             {{"inputX", 1.0}, {"inputRZ", 90.0}, {"inputWidth", 2.0}, {"inputHeight", 0.5}});
  for (const char* key : {"inputHitX", "inputHitY"}) g.publishInput(zone, key, key);
  for (const char* key : {"outputHit", "outputZoneX"}) g.publishOutput(zone, key, key);
  const auto r = g.renderer();
  const auto hit = [&](double x, double y) {
    r->setValueForInputKey(x, "inputHitX");
    r->setValueForInputKey(y, "inputHitY");
    (void)r->renderAtTime(0, {16, 9});
    return r->valueForOutputKey("outputHit").toNumber();
  };
  EXPECT_EQ(hit(1, 0.9), 1);
  EXPECT_NEAR(r->valueForOutputKey("outputZoneX").toNumber(), 0.9, 1e-6);
  EXPECT_EQ(hit(1.9, 0), 0);
  EXPECT_EQ(hit(std::nan(""), 0), 0);
}

TEST(SolidPatches, meshesFaceOutwardsAndFitTheirSize) {
  GraphBuilder g;
  g.node("QCSphere", {}, {{"inputScale", 2.0}});
  g.node("QCQuadric:cylinder", {}, {{"inputBase", 0.5}, {"inputTop", 0.25}});
  g.node("QCCube", {}, {{"inputWidth", 2.0}, {"inputHeight", 2.0}, {"inputDepth", 2.0}});
  const auto list = g.renderer()->renderAtTime(0, {16, 9});
  ASSERT_EQ(list.items.size(), 8U) << "a cube has six faces";
  for (const runtime::DrawItem& drawn : list.items) {
    const auto& item = std::get<runtime::MeshItem>(drawn);
    const runtime::Mesh& mesh = *item.mesh;
    ASSERT_EQ(mesh.normals.size(), mesh.vertices.size());
    ASSERT_EQ(mesh.textureCoordinates.size(), mesh.vertices.size());
    for (size_t i = 0; i + 2 < mesh.indices.size(); i += 3) {
      const QVector3D a = item.matrix.map(mesh.vertices[mesh.indices[i]]);
      const QVector3D b = item.matrix.map(mesh.vertices[mesh.indices[i + 1]]);
      const QVector3D c = item.matrix.map(mesh.vertices[mesh.indices[i + 2]]);
      EXPECT_LE(a.length(), 1.7322F);
      const QVector3D normal = QVector3D::crossProduct(b - a, c - a);
      EXPECT_GE(QVector3D::dotProduct(normal, a + b + c), -1e-6F) << "turned inside out";
      EXPECT_GT(QVector3D::dotProduct(item.matrix.mapVector(mesh.normals[mesh.indices[i]]), a), 0);
    }
  }
  // The top face of the cube is the fifth.
  EXPECT_TRUE(
      isNear(std::get<runtime::MeshItem>(list.items[6]).matrix.map(QVector3D()), {0, 1, 0}));
  EXPECT_TRUE(
      isNear(std::get<runtime::MeshItem>(list.items[3]).matrix.map(QVector3D()), {-1, 0, 0}));
}

TEST(ParticleSystem, anyFrameFollowsFromTheTimeAlone) {
  const auto particles = [](const Dictionary& state) {
    GraphBuilder g;
    g.node("QCParticleSystem", state,
           {{"inputCount", 10},
            {"inputLifeTime", 2.0},
            {"inputVelocityMinX", 1.0},
            {"inputVelocityMaxX", 2.0},
            {"inputFinalSize", 0.0},
            {"inputOpacityDelta", -0.5}});
    return g.renderer();
  };
  const auto straight = particles({});
  const auto late = straight->renderAtTime(7.3, {16, 9});
  EXPECT_EQ(late.items.size(), 10U);
  EXPECT_EQ(straight->renderAtTime(0.05, {16, 9}).items.size(), 1U) << "they come one by one";
  EXPECT_EQ(particles({})->renderAtTime(7.3, {16, 9}), late);
  EXPECT_NE(particles({{"randomSeed", 5}})->renderAtTime(7.3, {16, 9}), late);
  for (size_t i = 0; i < 10; ++i) {
    const double x = quad(late, i).matrix.map(QVector3D()).x();
    EXPECT_GE(x, 0);
    EXPECT_LE(x, 4);
    EXPECT_LE(quad(late, i).color.alpha, 1);
    EXPECT_GE(quad(late, i).color.alpha, 0);
  }
  EXPECT_EQ(particles({{"interpolateSizeAndColor", true}})->renderAtTime(7.3, {16, 9}).items.size(),
            10U);
}

TEST(LinesPatch, joinsTwoSegments) {
  GraphBuilder g;
  g.node("QCLines", {},
         {{"inputStartRZ", 90.0},
          {"inputStartLength", 2.0},
          {"inputEndX", 3.0},
          {"inputEndLength", 0.0},
          {"inputNumLines", 2}});
  const auto list = g.renderer()->renderAtTime(0, {16, 9});
  ASSERT_EQ(list.items.size(), 2U);
  const auto& first = std::get<runtime::LineItem>(list.items[0]);
  EXPECT_TRUE(isNear(first.start, {-0.5F, -0.5F, 0}));
  EXPECT_TRUE(isNear(first.end, {3, 0, 0}));
  EXPECT_TRUE(isNear(std::get<runtime::LineItem>(list.items[1]).start, {-0.5F, 0.5F, 0}));
}

TEST(MeshPatches, structuresBecomeAMeshAndBadIndicesAreLeftOut) {
  using List = foundation::PropertyArray;
  GraphBuilder g;
  const QString creator =
      g.node("QCMeshCreator", {},
             {{"inputVertices", List{List{0.0, 0.0, 0.0}, List{1.0, 0.0, 0.0},
                                     Dictionary{{"X", 0.0}, {"Y", 1.0}, {"Z", 0.0}}}},
              {"inputIndices", List{0.0, 1.0, 2.0, 0.0, 1.0, 7.0, -1.0}}});
  const QString transform = g.node("QCMeshTransform", {}, {{"inputTransform_TranslateZ", 2.0}});
  const QString renderer = g.node("QCMeshRenderer");
  g.connect(creator, "outputMesh", transform, "inputMesh");
  g.connect(transform, "outputMesh", renderer, "inputMesh");
  g.node("QCMeshRenderer");  // without a mesh: nothing
  const auto list = g.renderer()->renderAtTime(0, {16, 9});
  ASSERT_EQ(list.items.size(), 1U);
  const runtime::Mesh& mesh = *std::get<runtime::MeshItem>(list.items[0]).mesh;
  EXPECT_EQ(mesh.indices, (std::vector<quint32>{0, 1, 2}));
  EXPECT_TRUE(isNear(mesh.vertices[2], {0, 1, 2}));
  EXPECT_TRUE(isNear(mesh.normals[0], {0, 0, 1}));
}

TEST(InputDevicePatches, mouseAndKeysComeFromTheFramesArguments) {
  GraphBuilder g;
  const QString mouse = g.node("QCMouse");
  const QString keys = g.node("QCKeyboard", {{"keys", QByteArray("\0 \xF7\x00", 4)}});
  g.publishOutput(mouse, "outputX", "x");
  g.publishOutput(mouse, "outputY", "y");
  g.publishOutput(mouse, "outputButton2", "right");
  g.publishOutput(keys, "key_0020", "space");
  g.publishOutput(keys, "key_F700", "up");
  const auto r = g.renderer();
  runtime::FrameArguments arguments;
  arguments.mouse = {0.75, 0};
  arguments.mouseButtons[1] = true;
  arguments.pressedKeys = {u' '};
  (void)r->renderAtTime(0, {200, 100}, arguments);
  EXPECT_EQ(r->valueForOutputKey("x").toNumber(), 0.5);
  EXPECT_EQ(r->valueForOutputKey("y").toNumber(), -0.5);
  EXPECT_TRUE(r->valueForOutputKey("right").toBoolean());
  EXPECT_TRUE(r->valueForOutputKey("space").toBoolean());
  EXPECT_FALSE(r->valueForOutputKey("up").toBoolean());
}

class FilePatches : public testing::Test {
 protected:
  QString write(const QString& name, const QByteArray& bytes) const {
    QFile file(folder.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    return file.fileName();
  }
  QTemporaryDir folder;
};

TEST_F(FilePatches, scannerListsInOrderAndByType) {
  for (const char* name : {"b.png", "a.PNG", "c.txt"}) write(name, "x");
  ASSERT_TRUE(QDir(folder.path()).mkpath("inner"));
  write("inner/d.png", "x");
  for (const bool recursive : {false, true}) {
    GraphBuilder g;
    const QString scanner =
        g.node("QCDirectoryScanner", {{"fileType", u"public.image"}, {"recursive", recursive}},
               {{"inputPath", folder.path()}});
    g.publishOutput(scanner, "outputFiles", "files");
    const auto r = g.renderer();
    (void)r->renderAtTime(0, {16, 9});
    QStringList names;
    const runtime::Structure files = r->valueForOutputKey("files").toStructure();
    for (qsizetype i = 0; i < files.size(); ++i)
      names += QDir(folder.path()).relativeFilePath(files.at(i).toString());
    EXPECT_EQ(names.join(QLatin1Char(' ')), recursive ? "a.PNG b.png inner/d.png" : "a.PNG b.png");
  }
}

TEST_F(FilePatches, xmlBecomesStructuresAndFaultsAreReported) {
  const auto read = [&](const QByteArray& xml) {
    GraphBuilder g;
    g.publishOutput(g.node("QCXMLDownloader", {}, {{"inputURL", write("f.xml", xml)}}),
                    "outputStructure", "x");
    auto r = g.renderer();
    (void)r->renderAtTime(0, {16, 9});
    return r;
  };
  const auto good = read("<r name='n'><items><i>1</i><i>2</i></items><t>x</t></r>");
  const runtime::Structure root = good->valueForOutputKey("x").toStructure();
  EXPECT_EQ(root.value("name").toString(), "n");
  EXPECT_EQ(root.value("items").toStructure().at(1).toString(), "2");
  EXPECT_EQ(root.value("t").toString(), "x");
  const auto list =
      read("<plist version='1.0'><dict><key>name</key><string>p</string></dict></plist>");
  EXPECT_EQ(list->valueForOutputKey("x").toStructure().value("name").toString(), "p");
  QByteArray deep;
  for (int i = 0; i < 500; ++i) deep += "<a>";
  for (const QByteArray& bad : {QByteArray("<r><x></r>"), QByteArray(), deep}) {
    const auto r = read(bad);
    EXPECT_TRUE(r->valueForOutputKey("x").toStructure().isEmpty());
    EXPECT_EQ(r->findings().size(), 1);
  }
}

TEST_F(FilePatches, loaderRunsAnotherCompositionAndNeverItself) {
  GraphBuilder inner;
  const QString sprite = inner.node("QCSprite");
  const QString add =
      inner.node("QCMath", {{"numberOfOperations", 1}}, {{"operation_1", 0}, {"operand_1", 1.0}});
  inner.connect(add, "outputValue", sprite, "inputY");
  inner.publishInput(add, "inputValue", "inputPace");
  inner.publishOutput(add, "outputValue", "sum");
  inner.node("QCPatchRenderer", {{"compositionMode", u"consumer"}}, {{"inputPath", u"inner.qtz"}});
  const auto bytes = foundation::PropertyList::toXml(inner.composition());
  ASSERT_TRUE(bytes);
  const QString path = write("inner.qtz", *bytes);

  const auto entry = [](const char16_t* key) {
    return foundation::PropertyArray{Dictionary{{"class", u"QCNumberPort"}, {"key", key}}};
  };
  GraphBuilder content;
  const QString loader = content.node("QCPatchRenderer",
                                      {{"compositionMode", u"consumer"},
                                       {"compositionInputs", entry(u"_protocolInput_Pace")},
                                       {"compositionOutputs", entry(u"sum")}},
                                      {{"_protocolInput_Pace", 2.0}, {"inputPath", path}});
  content.publishOutput(loader, "sum", "sum");
  GraphBuilder root;
  const QString camera = root.macro("QCCamera", content, {{"inputTranslateX", 5.0}});
  root.publishOutput(camera, "sum", "sum");
  const auto r = root.renderer();
  const auto list = r->renderAtTime(0, {16, 9});
  ASSERT_EQ(list.items.size(), 1U);
  EXPECT_TRUE(isNear(quad(list, 0).matrix.map(QVector3D()), {5, 3, 0}));
  EXPECT_EQ(r->valueForOutputKey("sum").toNumber(), 3);

  GraphBuilder missing;
  missing.node("QCPatchRenderer", {{"compositionMode", u"consumer"}}, {{"inputPath", u"no.qtz"}});
  const auto none = missing.renderer();
  EXPECT_TRUE(none->renderAtTime(0, {16, 9}).items.empty());
  EXPECT_EQ(none->findings().size(), 1);
}

}  // namespace
