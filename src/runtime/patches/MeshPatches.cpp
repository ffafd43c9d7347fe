#include <cmath>

#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/StructureMember.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/RendererPorts.h"

namespace runtime::patches {

namespace {

constexpr qsizetype maximumVertices = 1'000'000;

/// A vector out of a structure: its first members, or those called X, Y and Z.
QVector3D vectorOf(const Value& value) {
  const Structure s = value.toStructure();
  const auto part = [&](qsizetype index, const QString& key) {
    const Value& named = s.isKeyed() ? s.value(key) : s.at(index);
    return static_cast<float>((named.isEmpty() ? s.at(index) : named).toNumber());
  };
  return {part(0, QStringLiteral("X")), part(1, QStringLiteral("Y")), part(2, QStringLiteral("Z"))};
}

foundation::Color colorOf(const Value& value) {
  if (!value.as<Structure>()) return value.toColor();
  const Structure s = value.toStructure();
  const double alpha = s.size() > 3 ? s.at(3).toNumber() : 1;
  return {s.at(0).toNumber(), s.at(1).toNumber(), s.at(2).toNumber(), alpha};
}

/// Normals of vertices as the mean of those of the triangles around them.
void addNormals(Mesh& mesh) {
  mesh.normals.assign(mesh.vertices.size(), {});
  for (size_t i = 0; i + 2 < mesh.indices.size(); i += 3) {
    const QVector3D& a = mesh.vertices[mesh.indices[i]];
    const QVector3D normal = QVector3D::crossProduct(mesh.vertices[mesh.indices[i + 1]] - a,
                                                     mesh.vertices[mesh.indices[i + 2]] - a);
    for (size_t k = 0; k < 3; ++k) mesh.normals[mesh.indices[i + k]] += normal;
  }
  for (QVector3D& normal : mesh.normals) normal.normalize();
}

/// Makes a mesh of triangles out of structures.
class MeshCreatorEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    enum { Vertices, Colors, Normals, Indices, TextureCoordinates };
    auto mesh = std::make_shared<Mesh>();
    const Structure vertices = x.structure(Vertices);
    const qsizetype count = std::min(vertices.size(), maximumVertices);
    for (qsizetype i = 0; i < count; ++i) mesh->vertices.push_back(vectorOf(vertices.at(i)));
    readIndices(*mesh, x.structure(Indices));
    const Structure normals = x.structure(Normals);
    if (normals.size() >= count)
      for (qsizetype i = 0; i < count; ++i) mesh->normals.push_back(vectorOf(normals.at(i)));
    else
      addNormals(*mesh);
    const Structure places = x.structure(TextureCoordinates);
    for (qsizetype i = 0; i < count && places.size() >= count; ++i)
      mesh->textureCoordinates.push_back(vectorOf(places.at(i)).toVector2D());
    const Structure colors = x.structure(Colors);
    for (qsizetype i = 0; i < count && colors.size() >= count; ++i)
      mesh->colors.push_back(colorOf(colors.at(i)));
    x.setOutput(0, std::shared_ptr<const Mesh>(std::move(mesh)));
  }

 private:
  static void readIndices(Mesh& mesh, const Structure& indices) {
    const auto count = static_cast<quint32>(mesh.vertices.size());
    if (indices.isEmpty())
      for (quint32 i = 0; i < count / 3 * 3; ++i) mesh.indices.push_back(i);
    const qsizetype whole = std::min(indices.size(), 6 * maximumVertices) / 3 * 3;
    for (qsizetype i = 0; i < whole; i += 3) {
      quint64 corners[3];
      for (qsizetype k = 0; k < 3; ++k) corners[k] = indices.at(i + k).toIndex();
      if (std::max({corners[0], corners[1], corners[2]}) >= count) continue;
      for (const quint64 corner : corners) mesh.indices.push_back(static_cast<quint32>(corner));
    }
  }
};

/// Scales, turns and moves the vertices of a mesh.
class MeshTransformEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const auto mesh = x.value(0).toMesh();
    if (!mesh) {
      x.setOutput(0, Value());
      return;
    }
    const auto vector = [&](int first) {
      return QVector3D(static_cast<float>(x.number(first)), static_cast<float>(x.number(first + 1)),
                       static_cast<float>(x.number(first + 2)));
    };
    enum { Origin = 1, Scale = 4, Rotate = 7, Translate = 10 };
    const QVector3D way = vector(Origin) + vector(Translate);
    QMatrix4x4 matrix = placed({}, way.x(), way.y(), way.z(), x.number(Rotate),
                               x.number(Rotate + 1), x.number(Rotate + 2));
    matrix.scale(vector(Scale));
    matrix.translate(-vector(Origin));
    auto moved = std::make_shared<Mesh>(*mesh);
    for (QVector3D& vertex : moved->vertices) vertex = matrix.map(vertex);
    const QMatrix3x3 turn = matrix.normalMatrix();
    for (QVector3D& n : moved->normals)
      n = QVector3D(turn(0, 0) * n.x() + turn(0, 1) * n.y() + turn(0, 2) * n.z(),
                    turn(1, 0) * n.x() + turn(1, 1) * n.y() + turn(1, 2) * n.z(),
                    turn(2, 0) * n.x() + turn(2, 1) * n.y() + turn(2, 2) * n.z())
              .normalized();
    x.setOutput(0, std::shared_ptr<const Mesh>(std::move(moved)));
  }
};

QList<Port> transformPorts() {
  QList<Port> ports{portOf(PortType::Mesh, "inputMesh", "Mesh")};
  const std::pair<const char*, const char*> groups[] = {{"Origin", "Origin"},
                                                        {"Scale", "Scaling"},
                                                        {"Rotate", "Rotation"},
                                                        {"Translate", "Translation"}};
  for (const auto& [key, label] : groups)
    for (const char axis : {'X', 'Y', 'Z'})
      ports.append(numberPort((QByteArray("inputTransform_") + key + axis).constData(),
                              qstrcmp(key, "Scale") == 0 ? 1 : 0,
                              (QByteArray(label) + ' ' + axis).constData()));
  return ports;
}

}  // namespace

void registerMeshPatches(PatchRegistry& registry) {
  registry.add({.className = QStringLiteral("QCMeshCreator"),
                .title = QStringLiteral("Mesh Creator"),
                .ports = {{portOf(PortType::Structure, "inputVertices", "Vertices"),
                           portOf(PortType::Structure, "inputColors", "Colors"),
                           portOf(PortType::Structure, "inputNormals", "Normals"),
                           portOf(PortType::Structure, "inputIndices", "Indices"),
                           portOf(PortType::Structure, "inputTexcoords", "Texture Coordinates")},
                          {portOf(PortType::Mesh, "outputMesh", "Mesh")}},
                .status = QStringLiteral("triangles only: no points, volumes or textures"),
                .make = makeEvaluator<MeshCreatorEvaluator>});
  registry.add(
      {.className = QStringLiteral("QCMeshTransform"),
       .title = QStringLiteral("Mesh Transform"),
       .ports = {transformPorts(), {portOf(PortType::Mesh, "outputMesh", "Transformed Mesh")}},
       .make = makeEvaluator<MeshTransformEvaluator>});
}

}  // namespace runtime::patches
