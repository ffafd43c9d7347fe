#include <cmath>

#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/Easing.h"
#include "runtime/patches/RendererPorts.h"
#include "runtime/patches/SeededNoise.h"

namespace runtime::patches {

namespace {

constexpr quint64 maximumParticles = 20'000;

enum Input {
  Count,
  PositionX,
  PositionY,
  PositionZ,
  ParticleColor,
  VelocityX,
  VelocityY = VelocityX + 2,
  VelocityZ = VelocityY + 2,
  MinSize = VelocityZ + 2,
  MaxSize,
  LifeTime,
  Attraction,
  Gravity,
  Picture,
  Blend,
  Change  ///< the first of the ports that the mode adds
};

/// Particles that follow from the time alone: each has its moments of birth, and at each birth the
/// seed gives it a speed and a size. So any frame can be drawn without those before it.
class ParticleSystemEvaluator : public PatchEvaluator {
 public:
  explicit ParticleSystemEvaluator(const NodeDescription& node)
      : m_noise(static_cast<quint64>(node.state.value(u"randomSeed").toInteger())),
        m_runsToFinals(node.state.value(u"interpolateSizeAndColor").toBool()) {}

  void execute(Execution& x) override {
    const auto count = static_cast<qint64>(std::min(x.index(Count), maximumParticles));
    const double life = x.number(LifeTime);
    const Image image = x.image(Picture);
    if (!(life > 0) || !std::isfinite(life) || image.isInfinite()) return;
    if (image.isNull() && x.isConnected(Picture)) return;
    for (qint64 i = 0; i < count; ++i) {
      const double lives = x.time() / life - static_cast<double>(i) / static_cast<double>(count);
      if (lives < 0 || lives > 1e12) continue;
      const auto generation = static_cast<qint64>(std::floor(lives));
      const qint64 particle = (generation * count + i) * valuesPerParticle;
      drawParticle(x, image, particle, lives - std::floor(lives), life);
    }
  }

 private:
  static constexpr qint64 valuesPerParticle = 4;

  [[nodiscard]] double between(const Execution& x, int port, qint64 value) const {
    const double low = x.number(port);
    return low + (x.number(port + 1) - low) * m_noise.uniform(value);
  }

  void drawParticle(Execution& x, const Image& image, qint64 particle, double progress,
                    double life) const {
    const double age = progress * life;
    const QVector3D speed(static_cast<float>(between(x, VelocityX, particle)),
                          static_cast<float>(between(x, VelocityY, particle + 1)),
                          static_cast<float>(between(x, VelocityZ, particle + 2)));
    QVector3D way = speed * static_cast<float>(age);
    way.setY(way.y() - static_cast<float>(x.number(Gravity) * age * age / 2));
    way *= static_cast<float>(std::exp(-std::max(x.number(Attraction), 0.0) * age));
    const QVector3D source(static_cast<float>(x.number(PositionX)),
                           static_cast<float>(x.number(PositionY)),
                           static_cast<float>(x.number(PositionZ)));
    QuadItem quad;
    quad.matrix.translate(x.context().transform.map(source + way));
    const double size = sizeAt(x, between(x, MinSize, particle + 3), progress, age);
    quad.matrix.scale(static_cast<float>(std::max(size, 0.0)));
    quad.color = colorAt(x, progress, age);
    quad.image = image;
    quad.state = x.context().state;
    quad.state.lighting.reset();
    quad.state.blending = blendingOf(x.index(Blend));
    if (size > 0) x.draw(std::move(quad));
  }

  [[nodiscard]] double sizeAt(const Execution& x, double size, double progress, double age) const {
    if (!m_runsToFinals) return size + x.number(Change) * age;
    return size + (x.number(Change) - size) * eased(x.index(Change + 2), progress);
  }

  [[nodiscard]] foundation::Color colorAt(const Execution& x, double progress, double age) const {
    using Part = double foundation::Color::*;
    static constexpr Part parts[] = {&foundation::Color::red, &foundation::Color::green,
                                     &foundation::Color::blue, &foundation::Color::alpha};
    foundation::Color color = x.color(ParticleColor);
    const foundation::Color last = m_runsToFinals ? x.color(Change + 1) : color;
    for (int i = 0; i < 4; ++i) {
      double& part = color.*parts[i];
      if (m_runsToFinals)
        part += (last.*parts[i] - part) * eased(x.index(Change + 3 + i), progress);
      else
        part += x.number(Change + 1 + i) * age;
      part = std::clamp(part, 0.0, 1.0);
    }
    return color;
  }

  SeededNoise m_noise;
  bool m_runsToFinals;
};

void addChangePorts(const NodeDescription& node, PatchPorts& ports) {
  if (node.state.value(u"interpolateSizeAndColor").toBool()) {
    ports.inputs << numberPort("inputFinalSize", 0.1, "Final Size")
                 << colorPort("inputFinalColor", foundation::Color::white(), "Final Color")
                 << curvePort("inputSizeInterpolation", "Size Interpolation")
                 << curvePort("inputRedInterpolation", "Red Interpolation")
                 << curvePort("inputGreenInterpolation", "Green Interpolation")
                 << curvePort("inputBlueInterpolation", "Blue Interpolation")
                 << curvePort("inputOpacityInterpolation", "Opacity Interpolation");
    return;
  }
  ports.inputs << numberPort("inputSizeDelta", 0, "Size Delta")
               << numberPort("inputRedDelta", 0, "Red Delta")
               << numberPort("inputGreenDelta", 0, "Green Delta")
               << numberPort("inputBlueDelta", 0, "Blue Delta")
               << numberPort("inputOpacityDelta", 0, "Opacity Delta");
}

QList<Port> particlePorts() {
  return {indexPort("inputCount", 100, "Particle Count"),
          numberPort("inputPositionX", 0, "X Position"),
          numberPort("inputPositionY", 0, "Y Position"),
          numberPort("inputPositionZ", 0, "Z Position"),
          colorPort("inputColor", foundation::Color::white(), "Color"),
          numberPort("inputVelocityMinX", -0.25, "X Min Velocity"),
          numberPort("inputVelocityMaxX", 0.25, "X Max Velocity"),
          numberPort("inputVelocityMinY", -0.25, "Y Min Velocity"),
          numberPort("inputVelocityMaxY", 0.25, "Y Max Velocity"),
          numberPort("inputVelocityMinZ", 0, "Z Min Velocity"),
          numberPort("inputVelocityMaxZ", 0, "Z Max Velocity"),
          numberPort("inputMinSize", 0.05, "Min Size"),
          numberPort("inputMaxSize", 0.1, "Max Size"),
          numberPort("inputLifeTime", 2, "Lifetime"),
          numberPort("inputAttraction", 0, "Attraction"),
          numberPort("inputGravity", 0, "Gravity"),
          portOf(PortType::Image, "inputImage", "Image"),
          blendingPort(Blending::Replace)};
}

}  // namespace

void registerParticleSystemPatch(PatchRegistry& registry) {
  registry.add({.className = QStringLiteral("QCParticleSystem"),
                .title = QStringLiteral("Particle System"),
                .kind = PatchClass::Kind::Consumer,
                .timeMode = PatchClass::TimeMode::TimeBase,
                .ports = {particlePorts(), {}},
                .dynamicPorts = QStringLiteral("changes per second, or final values and curves"),
                .status = QStringLiteral("laws and random values of our own; living particles "
                                         "follow a source that moves"),
                .addPorts = addChangePorts,
                .make = makeFromNode<ParticleSystemEvaluator>});
}

}  // namespace runtime::patches
