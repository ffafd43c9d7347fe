#include <cmath>
#include <numbers>

#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/Easing.h"
#include "runtime/patches/PortHelpers.h"

namespace runtime::patches {

namespace {

QVector3D vectorAt(const Execution& x, int first) {
  return {static_cast<float>(x.number(first)), static_cast<float>(x.number(first + 1)),
          static_cast<float>(x.number(first + 2))};
}

void rotate(QMatrix4x4& m, const QVector3D& degrees) {
  if (degrees.x() != 0) m.rotate(degrees.x(), 1, 0, 0);
  if (degrees.y() != 0) m.rotate(degrees.y(), 0, 1, 0);
  if (degrees.z() != 0) m.rotate(degrees.z(), 0, 0, 1);
}

/// Turns its content about a point, moves it, then scales it about that point.
class CameraEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const QVector3D origin = vectorAt(x, 0);
    ContentContext context = x.context();
    QMatrix4x4& m = context.transform;
    m.translate(origin);
    m.scale(vectorAt(x, 9));
    m.translate(vectorAt(x, 6));
    rotate(m, vectorAt(x, 3));
    m.translate(-origin);
    x.runContent(context);
  }
};

/// How far (0…1) a copy is on the way from the first to the last.
double copyFraction(quint64 curve, qint64 index, qint64 count) {
  return count > 1 ? eased(curve, static_cast<double>(index) / static_cast<double>(count - 1)) : 0;
}

qint64 copiesOf(const Execution& x, int input) {
  return std::min(static_cast<qint64>(x.index(input)), x.budget().iterations);
}

/// Draws its content several times, each copy further on the way to a final place.
class ReplicatorEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    enum { Copies, Curve, Scale, Orientation = 3, Origin = 6, Rotation = 9, Translation = 12 };
    const qint64 count = copiesOf(x, Copies);
    const ContentContext around = x.context();
    for (qint64 i = 0; i < count; ++i) {
      const auto f = static_cast<float>(copyFraction(x.index(Curve), i, count));
      ContentContext context = around;
      QMatrix4x4& m = context.transform;
      m.translate(vectorAt(x, Translation) * f);
      rotate(m, vectorAt(x, Rotation) * f);
      m.translate(vectorAt(x, Origin));
      rotate(m, vectorAt(x, Orientation) * f);
      m.scale(1 + (static_cast<float>(x.number(Scale)) - 1) * f);
      x.runIteration(context, i, 0);
    }
    x.endIterations();
  }
};

/// Draws its content several times, each copy at another time.
class TimeLoopEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    enum { Count, Curve, Start, End };
    const qint64 count = copiesOf(x, Count);
    const ContentContext context = x.context();
    for (qint64 i = 0; i < count; ++i) {
      const double f = copyFraction(x.index(Curve), i, count);
      const double shift = x.number(Start) + (x.number(End) - x.number(Start)) * f;
      const double time = x.time() + shift;
      x.runContentAtTime(context, time > 0 && std::isfinite(time) ? time : 0, i);
    }
    x.endIterations();
  }
};

/// Without a mouse that drags it stays as it is.
class TrackBallEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override { x.runContent(x.context()); }
};

/// Gives its content another field of view; the plane z = 0 stays where it is.
class ProjectionEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const double degrees = std::clamp(std::isfinite(x.number(0)) ? x.number(0) : 60.0, 0.01, 179.0);
    ContentContext context = x.context();
    context.state.eyeDistance = static_cast<float>(1 / std::tan(degrees * std::numbers::pi / 360));
    x.runContent(context);
  }
};

QList<Port> axes(const char* key, double defaultValue, const char* label) {
  QList<Port> ports;
  for (const char axis : {'X', 'Y', 'Z'}) {
    const QByteArray name = QByteArray(key) + axis;
    const QByteArray title = QByteArray(label) + ' ' + axis;
    ports.append(numberPort(name.constData(), defaultValue, title.constData()));
  }
  return ports;
}

QList<Port> replicatorPorts() {
  return QList<Port>{indexPort("inputCopies", 10, "Copies"),
                     curvePort("inputInterpolation", "Interpolation"),
                     numberPort("inputScale", 1, "Final Scale")} +
         axes("inputOrientation", 0, "Final Orientation") + axes("inputOrigin", 0, "Origin") +
         axes("inputRotation", 0, "Final Rotation") +
         axes("inputTranslation", 0, "Final Translation");
}

PatchClass macro(const char* className, const char* title, QList<Port> inputs) {
  PatchClass patch;
  patch.className = QString::fromLatin1(className);
  patch.title = QString::fromLatin1(title);
  patch.kind = PatchClass::Kind::Macro;
  patch.ports.inputs = std::move(inputs);
  patch.dynamicPorts = QStringLiteral("its published ports");
  patch.alwaysConsumer = true;
  return patch;
}

}  // namespace

void registerTransformMacros(PatchRegistry& registry) {
  PatchClass camera =
      macro("QCCamera", "3D Transformation",
            axes("inputOrigin", 0, "Origin") + axes("inputRotate", 0, "Rotation") +
                axes("inputTranslate", 0, "Translation") + axes("inputScale", 1, "Scale"));
  camera.make = makeEvaluator<CameraEvaluator>;
  registry.add(std::move(camera));

  PatchClass replicator = macro("QCReplicator", "Replicate in Space", replicatorPorts());
  replicator.repeatsContent = true;
  replicator.make = makeEvaluator<ReplicatorEvaluator>;
  registry.add(std::move(replicator));

  PatchClass timeLoop = macro(
      "QCTimeLoop", "Replicate in Time",
      {indexPort("inputCount", 10, "Copies"), curvePort("inputInterpolation", "Interpolation"),
       numberPort("inputStart", 0, "Start Time"), numberPort("inputEnd", 1, "End Time")});
  timeLoop.timeMode = PatchClass::TimeMode::TimeBase;
  timeLoop.repeatsContent = true;
  timeLoop.make = makeEvaluator<TimeLoopEvaluator>;
  registry.add(std::move(timeLoop));

  PatchClass trackBall = macro("QCTrackBall", "Trackball",
                               QList<Port>{booleanPort("inputTrack", true, "Track Mouse"),
                                           booleanPort("inputResetSignal", false, "Reset Signal")} +
                                   axes("inputOrigin", 0, "Rotation Origin"));
  trackBall.status = QStringLiteral("does not follow the mouse");
  trackBall.make = makeEvaluator<TrackBallEvaluator>;
  registry.add(std::move(trackBall));

  PatchClass projection =
      macro("QCProjection", "Projection", {numberPort("inputFieldOfView", 60, "Field Of View")});
  projection.make = makeEvaluator<ProjectionEvaluator>;
  registry.add(std::move(projection));
}

}  // namespace runtime::patches
