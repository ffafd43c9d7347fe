#pragma once

#include <QMatrix4x4>
#include <QSize>
#include <QVector2D>
#include <QVector3D>
#include <memory>
#include <variant>
#include <vector>

#include "foundation/Color.h"
#include "runtime/Image.h"

namespace runtime {

enum class Blending : quint8 { Replace, Over, Add, Alpha };
enum class DepthTesting : quint8 { None, ReadWrite, ReadOnly };
enum class FaceCulling : quint8 { None, Back, Front };

struct Light {
  foundation::Color color = foundation::Color::white();
  QVector3D position;  ///< destination's units, as the matrices of items yield them
  float attenuation = 0;
  friend bool operator==(const Light&, const Light&) = default;
};

/// Lights around a group of objects (fixed-function model).
struct Lighting {
  std::vector<Light> lights;
  foundation::Color ambient;
  float specular = 0;
  float shininess = 1;
  friend bool operator==(const Lighting&, const Lighting&) = default;
};

/// How an object is combined with what is there already.
struct DrawState {
  Blending blending = Blending::Over;
  DepthTesting depth = DepthTesting::None;
  FaceCulling culling = FaceCulling::None;
  quint8 colorMask = 15;  ///< 1 red, 2 green, 4 blue, 8 alpha
  /// Distance of the eye from the plane z = 0, in units: 1 / tan(half the field of view).
  float eyeDistance = 1.7320508F;
  std::shared_ptr<const Lighting> lighting;  ///< none: unlit
  friend bool operator==(const DrawState&, const DrawState&) = default;
};

/// Fills the destination; the colour is straight and written premultiplied.
struct ClearItem {
  foundation::Color color;
  bool clearsColor = true;
  bool clearsDepth = true;
  friend bool operator==(const ClearItem&, const ClearItem&) = default;
};

/// The unit square (−½…½, z = 0), textured, under a matrix into the destination's units: origin in
/// the centre, x right, y up, z towards the viewer, the destination 2 units wide.
struct QuadItem {
  QMatrix4x4 matrix;
  foundation::Color color = foundation::Color::white();  ///< straight; multiplies the image
  Image image;                                           ///< none: plain colour
  Image mask;                                            ///< luminance multiplies the image
  DrawState state;
  friend bool operator==(const QuadItem&, const QuadItem&) = default;
};

/// A linear gradient over the whole destination, ignoring every transformation.
struct GradientItem {
  enum class Direction : quint8 { Up, Right, Down, Left };
  std::vector<foundation::Color> colors;  ///< two or three, straight
  double middle = 0.5;                    ///< place of the second of three
  Direction direction = Direction::Up;
  Blending blending = Blending::Replace;
  bool clearsDepth = true;
  friend bool operator==(const GradientItem&, const GradientItem&) = default;
};

struct LineItem {
  QVector3D start, end;  ///< units, transformed
  foundation::Color startColor, endColor;
  float width = 1;  ///< pixels
  DrawState state;
  friend bool operator==(const LineItem&, const LineItem&) = default;
};

/// Triangles with per-vertex normals and texture coordinates, in object space.
struct Mesh {
  std::vector<QVector3D> vertices;
  std::vector<QVector3D> normals;             ///< as many as vertices, or none
  std::vector<QVector2D> textureCoordinates;  ///< as many as vertices, or none
  std::vector<foundation::Color> colors;      ///< as many as vertices, or none
  std::vector<quint32> indices;               ///< three a triangle, counter-clockwise front
};

struct MeshItem {
  QMatrix4x4 matrix;
  std::shared_ptr<const Mesh> mesh;
  foundation::Color color = foundation::Color::white();
  Image image;
  DrawState state;
  friend bool operator==(const MeshItem&, const MeshItem&) = default;
};

using DrawItem = std::variant<ClearItem, QuadItem, GradientItem, LineItem, MeshItem>;

/// One frame as plain values, lowest layer first: what evaluation hands to a back end. Can be drawn
/// later and on any thread.
struct DrawList {
  std::vector<DrawItem> items;
  friend bool operator==(const DrawList&, const DrawList&) = default;
};

}  // namespace runtime
