#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/RendererPorts.h"

namespace runtime::patches {

namespace {

class ClearEvaluator : public PatchEvaluator {
 public:
  explicit ClearEvaluator(const NodeDescription& node)
      : m_clearsColor(node.state.value(u"clearColorBuffer").toBool(true)),
        m_clearsDepth(node.state.value(u"clearDepthBuffer").toBool(true)) {}
  void execute(Execution& x) override {
    x.draw(ClearItem{x.color(0), m_clearsColor, m_clearsDepth});
  }

 private:
  bool m_clearsColor;
  bool m_clearsDepth;
};

class SpriteEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    enum { X, Y, Z, RX, RY, RZ, Width, Height, Color, Picture, Mask, Blend, Depth, Culling };
    // An image with nothing in it, or one that has no bounds, draws nothing.
    const Image image = x.image(Picture);
    if (x.isConnected(Picture) && image.isNull()) return;
    if (image.isInfinite()) return;
    QuadItem quad;
    quad.matrix = placed(x.context().transform, x.number(X), x.number(Y), x.number(Z), x.number(RX),
                         x.number(RY), x.number(RZ));
    quad.matrix.scale(static_cast<float>(x.number(Width)), static_cast<float>(x.number(Height)));
    quad.color = x.color(Color);
    quad.image = image;
    quad.mask = x.image(Mask);
    quad.state = drawState(x, Blend, Depth, Culling);
    x.draw(std::move(quad));
  }
};

/// A quad that faces the viewer at depth 0, whatever turns the space around it.
class BillboardEvaluator : public PatchEvaluator {
 public:
  explicit BillboardEvaluator(const NodeDescription& node)
      : m_sizeMode(node.state.value(u"sizeMode").toString()) {}

  void execute(Execution& x) override {
    enum { Picture, Mask, X, Y, Rotation, Color, Blend, PixelAligned, FirstSize };
    const Image image = x.image(Picture);
    if (image.isNull() || image.isInfinite() || image.size().isEmpty()) return;
    const QSizeF size = sizeOf(x, image.size(), FirstSize);
    const QMatrix4x4& around = x.context().transform;
    const QVector3D place =
        around.map(QVector3D(static_cast<float>(x.number(X)), static_cast<float>(x.number(Y)), 0));
    const double scaleX = around.column(0).toVector3D().length();
    const double scaleY = around.column(1).toVector3D().length();
    double left = place.x();
    double bottom = place.y();
    const double width = size.width() * scaleX;
    const double height = size.height() * scaleY;
    if (x.boolean(PixelAligned) && x.number(Rotation) == 0) {
      const Destination& d = x.destination();
      const double p = d.pixelsPerUnit();
      left = aligned(left - width / 2, 1.0, p) + width / 2;
      bottom = aligned(bottom - height / 2, d.height() / 2, p) + height / 2;
    }
    QuadItem quad;
    quad.matrix.translate(static_cast<float>(left), static_cast<float>(bottom));
    quad.matrix.rotate(static_cast<float>(x.number(Rotation)), 0, 0, 1);
    quad.matrix.scale(static_cast<float>(width), static_cast<float>(height));
    quad.color = x.color(Color);
    quad.image = image;
    quad.mask = x.image(Mask);
    quad.state.blending = blendingOf(x.index(Blend));
    quad.state.colorMask = x.context().state.colorMask;
    x.draw(std::move(quad));
  }

 private:
  /// Rounds a coordinate so that its distance from the destination's edge is whole pixels.
  static double aligned(double value, double half, double pixelsPerUnit) {
    return std::round((value + half) * pixelsPerUnit) / pixelsPerUnit - half;
  }
  [[nodiscard]] QSizeF sizeOf(const Execution& x, const QSize& pixels, int firstSize) const {
    const double aspect = static_cast<double>(pixels.width()) / pixels.height();
    const double scale = x.number(firstSize);
    if (m_sizeMode == QLatin1String("real"))
      return QSizeF(pixels) / x.destination().pixelsPerUnit();
    if (m_sizeMode == QLatin1String("autoHeight")) return {scale, scale / aspect};
    if (m_sizeMode == QLatin1String("autoWidth")) return {scale * aspect, scale};
    return {scale, x.number(firstSize + 1)};
  }
  QString m_sizeMode;
};

void addBillboardPorts(const NodeDescription& node, PatchPorts& ports) {
  const QString mode = node.state.value(u"sizeMode").toString();
  if (mode == QLatin1String("real")) return;
  if (mode.startsWith(QLatin1String("auto"))) {
    ports.inputs.append(Port(
        QStringLiteral("inputScale"), PortType::Number, 1.0,
        mode == QLatin1String("autoHeight") ? QStringLiteral("Width") : QStringLiteral("Height")));
    return;
  }
  ports.inputs.append(
      Port(QStringLiteral("inputWidth"), PortType::Number, 1.0, QStringLiteral("Width")));
  ports.inputs.append(
      Port(QStringLiteral("inputHeight"), PortType::Number, 1.0, QStringLiteral("Height")));
}

class GradientEvaluator : public PatchEvaluator {
 public:
  explicit GradientEvaluator(const NodeDescription& node)
      : m_points(node.state.value(u"numberOfPoints").toInteger(2) == 3 ? 3 : 2),
        m_clearsDepth(node.state.value(u"clearDepthBuffer").toBool(true)) {}
  void execute(Execution& x) override {
    enum { Direction, Blend, FirstColor };
    GradientItem item;
    for (int i = 0; i < m_points; ++i) item.colors.push_back(x.color(FirstColor + i));
    if (m_points == 3) item.middle = x.number(FirstColor + 3);
    item.direction = static_cast<GradientItem::Direction>(std::min<quint64>(x.index(Direction), 3));
    item.blending = blendingOf(x.index(Blend));
    item.clearsDepth = m_clearsDepth;
    x.draw(std::move(item));
  }

 private:
  int m_points;
  bool m_clearsDepth;
};

void addGradientPorts(const NodeDescription& node, PatchPorts& ports) {
  const int points = node.state.value(u"numberOfPoints").toInteger(2) == 3 ? 3 : 2;
  const foundation::Color grey{0.5, 0.5, 0.5, 1};
  for (int i = 1; i <= points; ++i)
    ports.inputs.append(Port(QStringLiteral("inputColor%1").arg(i), PortType::Color,
                             i == 1 ? foundation::Color::black()
                                    : (i == 2 && points == 3 ? grey : foundation::Color::white()),
                             QStringLiteral("Color %1").arg(i)));
  if (points == 3)
    ports.inputs.append(
        Port(QStringLiteral("inputPosition2"), PortType::Number, 0.5, QStringLiteral("Position 2"))
            .range(0.0, 1.0));
}

class LineEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    enum { StartX, StartY, StartZ, StartColor, EndX, EndY, EndZ, EndColor, Width, Depth };
    LineItem line;
    const QMatrix4x4& around = x.context().transform;
    line.start = around.map(point(x, StartX));
    line.end = around.map(point(x, EndX));
    line.startColor = x.color(StartColor);
    line.endColor = x.color(EndColor);
    line.width = static_cast<float>(x.number(Width));
    line.state = x.context().state;
    line.state.depth = depthOf(x.index(Depth));
    line.state.lighting.reset();
    x.draw(std::move(line));
  }

 private:
  static QVector3D point(const Execution& x, int first) {
    return {static_cast<float>(x.number(first)), static_cast<float>(x.number(first + 1)),
            static_cast<float>(x.number(first + 2))};
  }
};

QList<Port> spritePorts() {
  QList<Port> ports = placePorts();
  ports << numberPort("inputWidth", 1, "Width") << numberPort("inputHeight", 1, "Height")
        << Port(QStringLiteral("inputColor"), PortType::Color, {}, QStringLiteral("Color"))
        << Port(QStringLiteral("inputImage"), PortType::Image, {}, QStringLiteral("Image"))
        << Port(QStringLiteral("inputMask"), PortType::Image, {}, QStringLiteral("Mask Image"))
        << blendingPort(Blending::Over) << depthPort(DepthTesting::ReadWrite)
        << cullingPort(FaceCulling::None) << interactionPort();
  return ports;
}

QList<Port> linePorts() {
  return {
      numberPort("inputStartX", -0.5, "Start Position X"),
      numberPort("inputStartY", 0, "Start Position Y"),
      numberPort("inputStartZ", 0, "Start Position Z"),
      Port(QStringLiteral("inputStartColor"), PortType::Color, {}, QStringLiteral("Start Color")),
      numberPort("inputEndX", 0.5, "End Position X"),
      numberPort("inputEndY", 0, "End Position Y"),
      numberPort("inputEndZ", 0, "End Position Z"),
      Port(QStringLiteral("inputEndColor"), PortType::Color, {}, QStringLiteral("End Color")),
      numberPort("inputLineWidth", 1, "Thickness"),
      depthPort(DepthTesting::None)};
}

}  // namespace

void registerRendererPatches(PatchRegistry& registry) {
  using K = PatchClass::Kind;
  registry.add({.className = QStringLiteral("QCClear"),
                .title = QStringLiteral("Clear"),
                .kind = K::Consumer,
                .ports = {{Port(QStringLiteral("inputColor"), PortType::Color, foundation::Color{},
                                QStringLiteral("Clear Color"))},
                          {}},
                .make = makeFromNode<ClearEvaluator>});
  registry.add({.className = QStringLiteral("QCSprite"),
                .title = QStringLiteral("Sprite"),
                .kind = K::Consumer,
                .ports = {spritePorts(), {}},
                .make = makeEvaluator<SpriteEvaluator>});
  registry.add(
      {.className = QStringLiteral("QCBillboard"),
       .title = QStringLiteral("Billboard"),
       .kind = K::Consumer,
       .ports = {{Port(QStringLiteral("inputImage"), PortType::Image, {}, QStringLiteral("Image")),
                  Port(QStringLiteral("inputMask"), PortType::Image, {},
                       QStringLiteral("Mask Image")),
                  numberPort("inputX", 0, "X Position"), numberPort("inputY", 0, "Y Position"),
                  numberPort("inputRotation", 0, "Rotation"),
                  Port(QStringLiteral("inputColor"), PortType::Color, {}, QStringLiteral("Color")),
                  blendingPort(Blending::Over),
                  Port(QStringLiteral("inputPixelAligned"), PortType::Boolean, {},
                       QStringLiteral("Pixel Aligned"))},
                 {}},
       .dynamicPorts = QStringLiteral("inputWidth, inputHeight or inputScale, by sizeMode"),
       .addPorts = addBillboardPorts,
       .make = makeFromNode<BillboardEvaluator>});
  registry.add({.className = QStringLiteral("QCGradient"),
                .title = QStringLiteral("Gradient"),
                .kind = K::Consumer,
                .ports = {{Port(QStringLiteral("inputDirection"), PortType::Index, {},
                                QStringLiteral("Direction"))
                               .titles({QStringLiteral("Vertical (Upside)"),
                                        QStringLiteral("Horizontal (Rightside)"),
                                        QStringLiteral("Vertical (Downside)"),
                                        QStringLiteral("Horizontal (Leftside)")}),
                           blendingPort(Blending::Replace)},
                          {}},
                .dynamicPorts = QStringLiteral("inputColor1 … inputColor3, inputPosition2"),
                .addPorts = addGradientPorts,
                .make = makeFromNode<GradientEvaluator>});
  registry.add({.className = QStringLiteral("QCLine"),
                .title = QStringLiteral("Line"),
                .kind = K::Consumer,
                .ports = {linePorts(), {}},
                .make = makeEvaluator<LineEvaluator>});
}

}  // namespace runtime::patches
