#include <cmath>

#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/PortHelpers.h"

namespace runtime::patches {

namespace {

int valuesOf(const NodeDescription& node) {
  return stateCount(node, u"numberOfInputs", 1, 1, 64);
}

/// Follows its inputs while sampling; after that goes on at the speed measured last, which friction
/// brings down: with friction f the speed falls by the factor exp(−f) each second.
class PhysicsEvaluator : public PatchEvaluator {
 public:
  explicit PhysicsEvaluator(const NodeDescription& node)
      : m_bodies(static_cast<size_t>(valuesOf(node))) {}

  void execute(Execution& x) override {
    enum { Sampling, Friction, FirstInput };
    const bool restarts = x.firstExecution() || x.timeStep() < 0;
    const double step = std::max(x.timeStep(), 0.0);
    const double friction = std::fmax(x.number(Friction), 0);
    for (size_t i = 0; i < m_bodies.size(); ++i) {
      Body& body = m_bodies[i];
      const double input = x.number(FirstInput + static_cast<int>(i));
      if (restarts)
        body = {input, 0};
      else if (x.boolean(Sampling))
        follow(body, input, step);
      else
        coast(body, friction, step);
      x.setOutput(static_cast<int>(i), body.place);
    }
  }

 private:
  struct Body {
    double place = 0;
    double speed = 0;
  };
  static void follow(Body& body, double input, double step) {
    if (step > 0) body.speed = (input - body.place) / step;
    if (!std::isfinite(body.speed)) body.speed = 0;
    body.place = input;
  }
  static void coast(Body& body, double friction, double step) {
    // The exact way of an exponentially falling speed: stable however long the step.
    const double decay = std::exp(-friction * step);
    body.place += friction > 0 ? body.speed * (1 - decay) / friction : body.speed * step;
    body.speed *= decay;
  }
  std::vector<Body> m_bodies;
};

void addPhysicsPorts(const NodeDescription& node, PatchPorts& ports) {
  for (int i = 0; i < valuesOf(node); ++i) {
    ports.inputs.append(Port(QStringLiteral("input_%1").arg(i + 1), PortType::Number, {},
                             QStringLiteral("Input #%1").arg(i + 1)));
    ports.outputs.append(Port(QStringLiteral("output_%1").arg(i + 1), PortType::Number, {},
                              QStringLiteral("Output #%1").arg(i + 1)));
  }
}

/// A spring: its outputs are drawn to the inputs by a force with damping and come to rest there.
class SpringEvaluator : public PatchEvaluator {
 public:
  explicit SpringEvaluator(const NodeDescription& node)
      : m_bodies(static_cast<size_t>(valuesOf(node))) {}

  void execute(Execution& x) override {
    enum { Sampling, Force, FirstTarget };
    const bool restarts = x.firstExecution() || x.timeStep() < 0;
    for (size_t i = 0; i < m_bodies.size(); ++i) {
      const double target = x.number(FirstTarget + static_cast<int>(i));
      Body& body = m_bodies[i];
      if (restarts || x.boolean(Sampling) || !std::isfinite(body.place + body.speed))
        body = {target, 0};
      else
        swing(body, target, x.number(Force), x.timeStep());
      x.setOutput(static_cast<int>(i), body.place);
    }
  }

 private:
  struct Body {
    double place = 0;
    double speed = 0;
  };
  /// Semi-implicit steps that are short against the spring's period.
  static void swing(Body& body, double target, double force, double seconds) {
    const double stiffness = std::clamp(std::isfinite(force) ? std::abs(force) : 1, 0.0, 1e4);
    const double damping = 0.5 * std::sqrt(stiffness);
    const double longest = 0.1 / std::sqrt(std::max(stiffness, 1.0));
    const int steps =
        static_cast<int>(std::clamp(std::ceil(std::min(seconds, 60.0) / longest), 0.0, 1e5));
    const double step = steps > 0 ? std::min(seconds, 60.0) / steps : 0;
    for (int i = 0; i < steps; ++i) {
      body.speed += step * (stiffness * (target - body.place) - damping * body.speed);
      body.place += step * body.speed;
    }
  }
  std::vector<Body> m_bodies;
};

void addSpringPorts(const NodeDescription& node, PatchPorts& ports) {
  ports.inputs.append(numberPort("input_0", 10, "Force"));
  for (int i = 1; i <= valuesOf(node); ++i) {
    ports.inputs.append(Port(QStringLiteral("effect_%1").arg(i), PortType::Number, {},
                             QStringLiteral("Input #%1").arg(i)));
    ports.outputs.append(Port(QStringLiteral("output_%1").arg(i), PortType::Number, {},
                              QStringLiteral("Output #%1").arg(i)));
  }
}

}  // namespace

void registerPhysicsPatches(PatchRegistry& registry) {
  registry.add({.className = QStringLiteral("QCPhysics"),
                .title = QStringLiteral("Momentum"),
                .timeMode = PatchClass::TimeMode::TimeBase,
                .ports = {{booleanPort("inputSampling", false, "Sampling"),
                           numberPort("inputFriction", 0, "Friction")},
                          {}},
                .dynamicPorts = QStringLiteral("input_n, output_n"),
                .status = QStringLiteral("the law of motion is our own: friction lowers the speed "
                                         "exponentially"),
                .addPorts = addPhysicsPorts,
                .make = makeFromNode<PhysicsEvaluator>});
  registry.add({.className = QStringLiteral("QCPhysicsEffect"),
                .identifier = QStringLiteral("force"),
                .title = QStringLiteral("Attraction"),
                .timeMode = PatchClass::TimeMode::TimeBase,
                .ports = {{booleanPort("inputSampling", false, "Sampling")}, {}},
                .dynamicPorts = QStringLiteral("input_0, effect_n, output_n"),
                .status = QStringLiteral("the law of motion is our own: a damped spring"),
                .addPorts = addSpringPorts,
                .make = makeFromNode<SpringEvaluator>});
}

}  // namespace runtime::patches
