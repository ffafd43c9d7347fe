#include <cmath>

#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/RendererPorts.h"
#include "runtime/patches/SolidMeshes.h"

namespace runtime::patches {

namespace {

constexpr int placeInputs = 6;

QMatrix4x4 placeOf(const Execution& x) {
  return placed(x.context().transform, x.number(0), x.number(1), x.number(2), x.number(3),
                x.number(4), x.number(5));
}

/// Draws a mesh with the colour and image of two ports; no object with an image that has no bounds
/// or with a connected image that is not there.
void drawMesh(Execution& x, const QMatrix4x4& matrix, SharedMesh mesh, int color, int image,
              const DrawState& state) {
  MeshItem item;
  item.image = image >= 0 ? x.image(image) : Image();
  if (item.image.isInfinite() || (image >= 0 && item.image.isNull() && x.isConnected(image)))
    return;
  item.matrix = matrix;
  item.mesh = std::move(mesh);
  item.color = color >= 0 ? x.color(color) : foundation::Color::white();
  item.state = state;
  x.draw(std::move(item));
}

class CubeEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    enum {
      Width = placeInputs,
      Height,
      Depth,
      FirstFace,
      Blend = FirstFace + 12,
      ZBuffer,
      Culling
    };
    QMatrix4x4 box = placeOf(x);
    box.scale(static_cast<float>(x.number(Width)), static_cast<float>(x.number(Height)),
              static_cast<float>(x.number(Depth)));
    const DrawState state = drawState(x, Blend, ZBuffer, Culling);
    // Front, left, right, back, top, bottom: the turn that brings the front there.
    static constexpr float turns[6][3] = {{0, 0, 1},   {-90, 0, 1}, {90, 0, 1},
                                          {180, 0, 1}, {-90, 1, 0}, {90, 1, 0}};
    for (int face = 0; face < 6; ++face) {
      QMatrix4x4 matrix = box;
      matrix.rotate(turns[face][0], turns[face][1], turns[face][2], 0);
      matrix.translate(0, 0, 0.5F);
      drawMesh(x, matrix, squareMesh(), FirstFace + 2 * face, FirstFace + 2 * face + 1, state);
    }
  }
};

/// What the sphere, the teapot and the cylinder share: their ports after the place.
enum SolidPort {
  SolidColor = placeInputs,
  SolidImage,
  SolidBlend,
  SolidDepth,
  SolidCulling,
  SolidSize
};

class SphereEvaluator : public PatchEvaluator {
 public:
  explicit SphereEvaluator(const NodeDescription& node)
      : m_mesh(sphereMesh(stateCount(node, u"slices", 24, 3, 256),
                          stateCount(node, u"stacks", 12, 2, 256))) {}
  void execute(Execution& x) override {
    QMatrix4x4 matrix = placeOf(x);
    matrix.scale(static_cast<float>(x.number(SolidSize)));
    drawMesh(x, matrix, m_mesh, SolidColor, SolidImage,
             drawState(x, SolidBlend, SolidDepth, SolidCulling));
  }

 private:
  SharedMesh m_mesh;
};

class CylinderEvaluator : public PatchEvaluator {
 public:
  explicit CylinderEvaluator(const NodeDescription& node)
      : m_slices(stateCount(node, u"slices", 36, 3, 256)),
        m_stacks(stateCount(node, u"stacks", 4, 1, 256)) {}
  void execute(Execution& x) override {
    enum { Base = SolidSize, Top, Height };
    const auto base = static_cast<float>(x.number(Base));
    const auto top = static_cast<float>(x.number(Top));
    if (!m_mesh || base != m_base || top != m_top)
      m_mesh = cylinderMesh(m_slices, m_stacks, base, top);
    m_base = base;
    m_top = top;
    QMatrix4x4 matrix = placeOf(x);
    matrix.scale(1, static_cast<float>(x.number(Height)), 1);
    drawMesh(x, matrix, m_mesh, SolidColor, SolidImage,
             drawState(x, SolidBlend, SolidDepth, SolidCulling));
  }

 private:
  int m_slices;
  int m_stacks;
  float m_base = 0;
  float m_top = 0;
  SharedMesh m_mesh;
};

class TeapotEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    enum { Scale = placeInputs, Color, Picture, Blend, Depth, Culling };
    QMatrix4x4 matrix = placeOf(x);
    matrix.scale(static_cast<float>(x.number(Scale)));
    drawMesh(x, matrix, teapotMesh(), Color, Picture, drawState(x, Blend, Depth, Culling));
  }
};

class GridEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    enum { Width = placeInputs, Height, Columns, Rows, Blend, Depth, Culling };
    const QSize cells(cellsOf(x.index(Columns)), cellsOf(x.index(Rows)));
    if (!m_mesh || cells != m_cells) m_mesh = gridMesh(cells.width(), cells.height());
    m_cells = cells;
    QMatrix4x4 matrix = placeOf(x);
    matrix.scale(static_cast<float>(x.number(Width)), static_cast<float>(x.number(Height)));
    drawMesh(x, matrix, m_mesh, -1, -1, drawState(x, Blend, Depth, Culling));
  }

 private:
  static int cellsOf(quint64 count) { return static_cast<int>(std::clamp<quint64>(count, 1, 256)); }
  QSize m_cells;
  SharedMesh m_mesh;
};

class MeshRendererEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    enum { Width = placeInputs, Height, Depth, Color, Object, Blend, ZBuffer, Culling };
    const SharedMesh mesh = x.value(Object).toMesh();
    if (!mesh || mesh->indices.empty()) return;
    QMatrix4x4 matrix = placeOf(x);
    matrix.scale(static_cast<float>(x.number(Width)), static_cast<float>(x.number(Height)),
                 static_cast<float>(x.number(Depth)));
    drawMesh(x, matrix, mesh, Color, -1, drawState(x, Blend, ZBuffer, Culling));
  }
};

QList<Port> combining() {
  return {blendingPort(Blending::Replace), depthPort(DepthTesting::ReadWrite),
          cullingPort(FaceCulling::Back)};
}

QList<Port> cubePorts() {
  QList<Port> ports = placePorts() + QList<Port>{numberPort("inputWidth", 1, "Width"),
                                                 numberPort("inputHeight", 1, "Height"),
                                                 numberPort("inputDepth", 1, "Depth")};
  for (const char* face : {"Front", "Left", "Right", "Back", "Top", "Bottom"}) {
    const QByteArray name(face);
    ports.append(colorPort(("inputColor" + name).constData(), foundation::Color::white(),
                           (name + " Color").constData()));
    ports.append(
        portOf(PortType::Image, ("inputImage" + name).constData(), (name + " Image").constData()));
  }
  return ports + combining();
}

QList<Port> solidPorts() {
  return placePorts() +
         QList<Port>{colorPort("inputColor", foundation::Color::white(), "Color"),
                     portOf(PortType::Image, "inputImage", "Image")} +
         combining();
}

PatchClass solid(const char* className, const char* title, QList<Port> inputs) {
  PatchClass patch;
  patch.className = QString::fromLatin1(className);
  patch.title = QString::fromLatin1(title);
  patch.kind = PatchClass::Kind::Consumer;
  patch.ports.inputs = std::move(inputs);
  return patch;
}

void registerQuadrics(PatchRegistry& registry) {
  PatchClass sphere = solid("QCQuadric", "Sphere",
                            solidPorts() + QList<Port>{numberPort("inputScale", 1, "Diameter")});
  sphere.identifier = QStringLiteral("sphere");
  sphere.make = makeFromNode<SphereEvaluator>;
  registry.add(std::move(sphere));
  registry.addAlias(QStringLiteral("QCSphere"), {}, QStringLiteral("QCQuadric"),
                    QStringLiteral("sphere"));

  PatchClass cylinder =
      solid("QCQuadric", "Cylinder",
            solidPorts() + QList<Port>{numberPort("inputBase", 0.5, "Base Radius"),
                                       numberPort("inputTop", 0.5, "Top Radius"),
                                       numberPort("inputHeight", 1, "Height")});
  cylinder.identifier = QStringLiteral("cylinder");
  cylinder.status = QStringLiteral("the ends are open");
  cylinder.make = makeFromNode<CylinderEvaluator>;
  registry.add(std::move(cylinder));
}

}  // namespace

void registerSolidPatches(PatchRegistry& registry) {
  PatchClass cube = solid("QCCube", "Cube", cubePorts());
  cube.make = makeEvaluator<CubeEvaluator>;
  registry.add(std::move(cube));

  registerQuadrics(registry);

  QList<Port> teapotPorts = solidPorts();
  teapotPorts.insert(placeInputs, numberPort("inputScale", 1, "Scale"));
  PatchClass teapot = solid("QCTeapot", "Teapot", std::move(teapotPorts));
  teapot.status = QStringLiteral("a simpler pot of our own");
  teapot.make = makeEvaluator<TeapotEvaluator>;
  registry.add(std::move(teapot));

  PatchClass grid = solid(
      "QCGrid", "Grid",
      placePorts() +
          QList<Port>{numberPort("inputWidth", 1, "Width"), numberPort("inputHeight", 1, "Height"),
                      indexPort("inputWidthResolution", 10, "Horizontal Resolution"),
                      indexPort("inputHeightResolution", 10, "Vertical Resolution")} +
          combining());
  grid.status = QStringLiteral("drawn as a filled surface, not as wires");
  grid.make = makeEvaluator<GridEvaluator>;
  registry.add(std::move(grid));

  PatchClass mesh =
      solid("QCMeshRenderer", "Mesh Renderer",
            placePorts() +
                QList<Port>{numberPort("inputWidth", 1, "Scale X"),
                            numberPort("inputHeight", 1, "Scale Y"),
                            numberPort("inputDepth", 1, "Scale Z"),
                            colorPort("inputColor", foundation::Color::white(), "Color"),
                            portOf(PortType::Mesh, "inputMesh", "Mesh")} +
                combining() + QList<Port>{interactionPort()});
  mesh.status = QStringLiteral("no textures of the mesh and no wire frame");
  mesh.make = makeEvaluator<MeshRendererEvaluator>;
  registry.add(std::move(mesh));
}

}  // namespace runtime::patches
