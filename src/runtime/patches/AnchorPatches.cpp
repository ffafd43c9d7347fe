#include <cmath>

#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/RendererPorts.h"

namespace runtime::patches {

namespace {

/// Where the centre of an object stands that keeps to a corner, a side or the middle of the
/// destination.
class AnchorPositionEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    enum { Mode, X, Y, Width, Height };
    const auto mode = static_cast<int>(std::min<quint64>(x.index(Mode), 8));
    const double halfHeight = x.destination().height() / 2;
    x.setOutput(0, anchored(1 - mode % 3, -x.number(X), 1, x.number(Width), x.number(X)));
    x.setOutput(1, anchored(mode / 3 - 1, -x.number(Y), halfHeight, x.number(Height), x.number(Y)));
  }

 private:
  /// Side 1 is the low end of the axis, −1 the high end, 0 the middle.
  static double anchored(int side, double outward, double half, double size, double inward) {
    if (side == 0) return inward;
    return side > 0 ? -half + size / 2 + inward : half - size / 2 + outward;
  }
};

/// Tells whether a point lies within a transformed rectangle.
class HotZoneEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    enum { HitX, HitY, X, Y, Z, RX, RY, RZ, Width, Height, Mask };
    const QMatrix4x4 matrix = placed(x.context().transform, x.number(X), x.number(Y), x.number(Z),
                                     x.number(RX), x.number(RY), x.number(RZ));
    const float eye = x.context().state.eyeDistance;
    const auto w = static_cast<float>(x.number(Width) / 2);
    const auto h = static_cast<float>(x.number(Height) / 2);
    const QPolygonF corners{projected(matrix, {-w, h, 0}, eye), projected(matrix, {w, h, 0}, eye),
                            projected(matrix, {w, -h, 0}, eye),
                            projected(matrix, {-w, -h, 0}, eye)};
    setCorners(x, corners);
    QTransform toUnit;
    const QPolygonF unit{{0, 1}, {1, 1}, {1, 0}, {0, 0}};
    const QPointF point(x.number(HitX), x.number(HitY));
    const bool isUsable = std::isfinite(point.x()) && std::isfinite(point.y()) &&
                          QTransform::quadToQuad(corners, unit, toUnit);
    const QPointF inside = isUsable ? toUnit.map(point) : QPointF(-1, -1);
    const bool hits = QRectF(0, 0, 1, 1).contains(inside);
    const Image mask = x.image(Mask);
    const QSize size = mask.isInfinite() ? QSize() : mask.size();
    x.setOutput(0, hits ? intensity(mask, size, inside) : 0.0);
    x.setOutput(1, hits ? (inside.x() - 0.5) * x.number(Width) : 0.0);
    x.setOutput(2, hits ? (inside.y() - 0.5) * x.number(Height) : 0.0);
    x.setOutput(3, hits ? inside.x() * size.width() : 0.0);
    x.setOutput(4, hits ? inside.y() * size.height() : 0.0);
  }

 private:
  static QPointF projected(const QMatrix4x4& matrix, const QVector3D& corner, float eye) {
    const QVector3D p = matrix.map(corner);
    const float distance = eye - p.z();
    return distance > 1e-3F ? QPointF(p.x() * eye / distance, p.y() * eye / distance)
                            : QPointF(p.x(), p.y());
  }
  static void setCorners(Execution& x, const QPolygonF& corners) {
    // In the polygon the corners go round; the ports name the bottom left one first.
    static constexpr int order[] = {0, 1, 3, 2};
    for (int i = 0; i < 4; ++i) {
      x.setOutput(5 + 2 * i, corners[order[i]].x());
      x.setOutput(6 + 2 * i, corners[order[i]].y());
    }
  }
  static double intensity(const Image& mask, const QSize& size, const QPointF& inside) {
    if (mask.isNull() || size.isEmpty()) return 1;
    const int column = std::min(static_cast<int>(inside.x() * size.width()), size.width() - 1);
    const int row = std::min(static_cast<int>(inside.y() * size.height()), size.height() - 1);
    const QPoint origin = mask.extent().topLeft();
    const QImage pixel = mask.pixels(QRect(origin + QPoint(column, row), QSize(1, 1)));
    if (pixel.isNull()) return 0;
    const QRgb p = reinterpret_cast<const QRgb*>(pixel.constScanLine(0))[0];
    return (0.299 * qRed(p) + 0.587 * qGreen(p) + 0.114 * qBlue(p)) / 255;
  }
};

QList<Port> hotZoneOutputs() {
  return {numberOutput("outputHit", "Hit Intensity"),
          numberOutput("outputZoneX", "Hit Zone X"),
          numberOutput("outputZoneY", "Hit Zone Y"),
          numberOutput("outputMaskX", "Hit Mask X"),
          numberOutput("outputMaskY", "Hit Mask Y"),
          numberOutput("outputTopLeftX", "Zone Top Left X"),
          numberOutput("outputTopLeftY", "Zone Top Left Y"),
          numberOutput("outputTopRightX", "Zone Top Right X"),
          numberOutput("outputTopRightY", "Zone Top Right Y"),
          numberOutput("outputBottomLeftX", "Zone Bottom Left X"),
          numberOutput("outputBottomLeftY", "Zone Bottom Left Y"),
          numberOutput("outputBottomRightX", "Zone Bottom Right X"),
          numberOutput("outputBottomRightY", "Zone Bottom Right Y")};
}

}  // namespace

void registerAnchorPatches(PatchRegistry& registry) {
  registry.add(
      {.className = QStringLiteral("QCAnchorPosition"),
       .title = QStringLiteral("Anchor Position"),
       .ports = {{menuPort("inputMode", 0, "Anchor Point",
                           {"Top Left", "Top Center", "Top Right", "Center Left", "Center",
                            "Center Right", "Bottom Left", "Bottom Center", "Bottom Right"}),
                  numberPort("inputX", 0, "Offset X"), numberPort("inputY", 0, "Offset Y"),
                  numberPort("inputWidth", 0, "Width"), numberPort("inputHeight", 0, "Height")},
                 {numberOutput("outputX", "X Position"), numberOutput("outputY", "Y Position")}},
       .make = makeEvaluator<AnchorPositionEvaluator>});
  registry.add({.className = QStringLiteral("QCHotZone"),
                .title = QStringLiteral("Hit Test"),
                .ports = {QList<Port>{numberPort("inputHitX", 0, "Test X"),
                                      numberPort("inputHitY", 0, "Test Y")} +
                              placePorts() +
                              QList<Port>{numberPort("inputWidth", 1, "Width"),
                                          numberPort("inputHeight", 1, "Height"),
                                          portOf(PortType::Image, "inputMask", "Mask Image")},
                          hotZoneOutputs()},
                .make = makeEvaluator<HotZoneEvaluator>});
}

}  // namespace runtime::patches
