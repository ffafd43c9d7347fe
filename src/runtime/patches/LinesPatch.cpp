#include <cmath>

#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/RendererPorts.h"

namespace runtime::patches {

namespace {

constexpr quint64 maximumLines = 1000;
constexpr int piecesPerLine = 16;

foundation::Color mixed(const foundation::Color& a, const foundation::Color& b, double f) {
  return {a.red + (b.red - a.red) * f, a.green + (b.green - a.green) * f,
          a.blue + (b.blue - a.blue) * f, a.alpha + (b.alpha - a.alpha) * f};
}

QVector3D pointAt(const Execution& x, int first) {
  return {static_cast<float>(x.number(first)), static_cast<float>(x.number(first + 1)),
          static_cast<float>(x.number(first + 2))};
}

/// A fan of lines from one segment to another, bent towards a point.
class LinesEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    enum { Start, StartColor = 7, Force, Attraction, End = 12, EndColor = 19, Phase, Count, Depth };
    const auto count = static_cast<int>(std::min(x.index(Count), maximumLines));
    const QVector3D attraction = pointAt(x, Attraction);
    const auto force = static_cast<float>(x.number(Force));
    LineItem piece;
    piece.state = x.context().state;
    piece.state.depth = depthOf(x.index(Depth));
    piece.state.lighting.reset();
    for (int i = 0; i < count; ++i) {
      double place = (i + 0.5) / count + x.number(Phase);
      place = std::isfinite(place) ? place - std::floor(place) : 0;
      const QVector3D a = onSegment(x, Start, place);
      const QVector3D c = onSegment(x, End, place);
      const QVector3D middle = (a + c) / 2;
      const QVector3D b = middle + (attraction - middle) * force;
      const bool isStraight = force == 0;
      const int pieces = isStraight ? 1 : piecesPerLine;
      for (int k = 0; k < pieces; ++k) {
        const double from = static_cast<double>(k) / pieces;
        const double to = static_cast<double>(k + 1) / pieces;
        piece.start = x.context().transform.map(curveAt(a, b, c, static_cast<float>(from)));
        piece.end = x.context().transform.map(curveAt(a, b, c, static_cast<float>(to)));
        piece.startColor = mixed(x.color(StartColor), x.color(EndColor), from);
        piece.endColor = mixed(x.color(StartColor), x.color(EndColor), to);
        x.draw(piece);
      }
    }
  }

 private:
  static QVector3D onSegment(const Execution& x, int first, double place) {
    const QMatrix4x4 matrix = placed({}, x.number(first), x.number(first + 1), x.number(first + 2),
                                     x.number(first + 3), x.number(first + 4), x.number(first + 5));
    const double length = x.number(first + 6);
    return matrix.map(QVector3D(static_cast<float>((place - 0.5) * length), 0, 0));
  }
  static QVector3D curveAt(const QVector3D& a, const QVector3D& b, const QVector3D& c, float u) {
    return a * (1 - u) * (1 - u) + b * 2 * u * (1 - u) + c * u * u;
  }
};

QList<Port> segment(const char* name, double x) {
  const QByteArray key = QByteArray("input") + name;
  const QByteArray label(name);
  QList<Port> ports;
  for (const char axis : {'X', 'Y', 'Z'})
    ports.append(numberPort((key + axis).constData(), axis == 'X' ? x : 0,
                            (label + " Position " + axis).constData()));
  for (const char axis : {'X', 'Y', 'Z'})
    ports.append(numberPort((key + 'R' + axis).constData(), 0,
                            (label + " Orientation " + axis).constData()));
  ports.append(numberPort((key + "Length").constData(), 1, (label + " Length").constData()));
  ports.append(colorPort((key + "Color").constData(), foundation::Color::white(),
                         (label + " Color").constData()));
  return ports;
}

}  // namespace

void registerLinesPatch(PatchRegistry& registry) {
  registry.add(
      {.className = QStringLiteral("QCLines"),
       .title = QStringLiteral("Lines"),
       .kind = PatchClass::Kind::Consumer,
       .ports = {segment("Start", -0.5) +
                     QList<Port>{numberPort("inputAttractionAmount", 0, "Attraction Force"),
                                 numberPort("inputAttractionX", 0, "Attraction Point X"),
                                 numberPort("inputAttractionY", 0, "Attraction Point Y"),
                                 numberPort("inputAttractionZ", 0, "Attraction Point Z")} +
                     segment("End", 0.5) +
                     QList<Port>{numberPort("inputPhase", 0, "Line Phase"),
                                 indexPort("inputNumLines", 10, "Line Count"),
                                 depthPort(DepthTesting::ReadWrite)},
                 {}},
       .status = QStringLiteral("lines bend by a law of our own"),
       .make = makeEvaluator<LinesEvaluator>});
}

}  // namespace runtime::patches
