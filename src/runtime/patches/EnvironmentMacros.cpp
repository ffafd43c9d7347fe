#include <QRegularExpression>

#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/PortHelpers.h"

namespace runtime::patches {

namespace {

constexpr int maximumLights = 8;

class ColorMaskEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    ContentContext context = x.context();
    quint8 mask = 0;
    for (int channel = 0; channel < 4; ++channel)
      if (x.boolean(channel)) mask = static_cast<quint8>(mask | (1 << channel));
    context.state.colorMask &= mask;
    x.runContent(context);
  }
};

/// For surroundings that this runtime does not draw: the content appears as without them.
class PlainEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override { x.runContent(x.context()); }
};

int lightsOf(const NodeDescription& node) {
  const bool named = node.state.value(u"numberOfLights").isNumeric();
  return stateCount(node, named ? u"numberOfLights" : u"lightCount", 1, 0, maximumLights);
}

bool castsShadows(const NodeDescription& node) {
  return node.state.value(u"version").toInteger() >= 3;
}

class LightingEvaluator : public PatchEvaluator {
 public:
  explicit LightingEvaluator(const NodeDescription& node)
      : m_lights(lightsOf(node)), m_portsPerLight(castsShadows(node) ? 8 : 5) {}

  void execute(Execution& x) override {
    enum { Specular, Shininess, Ambient, FirstLight };
    ContentContext context = x.context();
    const QVector3D eye(0, 0, context.state.eyeDistance);
    auto lighting = std::make_shared<Lighting>();
    lighting->specular = static_cast<float>(x.number(Specular));
    lighting->shininess = static_cast<float>(x.number(Shininess));
    lighting->ambient = x.color(Ambient);
    for (int i = 0; i < m_lights; ++i) {
      const int first = FirstLight + i * m_portsPerLight;
      const QVector3D place(static_cast<float>(x.number(first + 1)),
                            static_cast<float>(x.number(first + 2)),
                            static_cast<float>(x.number(first + 3)));
      lighting->lights.push_back({x.color(first), context.transform.map(place) - eye,
                                  static_cast<float>(x.number(first + 4))});
    }
    context.state.lighting = std::move(lighting);
    x.runContent(context);
  }

 private:
  int m_lights;
  int m_portsPerLight;
};

void addLightPorts(const NodeDescription& node, PatchPorts& ports) {
  const auto add = [&](const char* key, int light, PortType type, Value value, const char* label) {
    ports.inputs.append(Port(QStringLiteral("%1_%2").arg(QLatin1String(key)).arg(light), type,
                             std::move(value),
                             QStringLiteral("Light %1 %2").arg(light).arg(QLatin1String(label))));
  };
  for (int n = 1; n <= lightsOf(node); ++n) {
    add("color", n, PortType::Color, foundation::Color::white(), "Color");
    add("positionX", n, PortType::Number, -1.0, "X Position");
    add("positionY", n, PortType::Number, 1.0, "Y Position");
    add("positionZ", n, PortType::Number, 1.0, "Z Position");
    add("attenuation", n, PortType::Number, 0.0, "Attenuation");
    if (!castsShadows(node)) continue;
    add("castShadows", n, PortType::Boolean, false, "Cast Shadows");
    add("shadowColor", n, PortType::Color, foundation::Color::black(), "Shadow Color");
    add("quality", n, PortType::Number, 1.0, "Shadow Quality");
  }
}

/// One input for each uniform of the programs, or for each component of a vector.
void addUniformPorts(const NodeDescription& node, PatchPorts& ports) {
  static const QRegularExpression uniform(
      QStringLiteral("\\buniform\\s+(?:lowp\\s+|mediump\\s+|highp\\s+)?(\\w+)\\s+(\\w+)\\s*;"));
  static const QRegularExpression comments(QStringLiteral("/\\*.*?\\*/|//[^\\n]*"),
                                           QRegularExpression::DotMatchesEverythingOption);
  constexpr int maximumSource = 1'000'000;
  const auto add = [&](const QString& key, PortType type) {
    for (const Port& port : ports.inputs)
      if (port.key == key) return;
    ports.inputs.append(Port(key, type, {}, key));
  };
  for (const QStringView stage : {u"vertexShader", u"fragmentShader"}) {
    QString source = node.state.value(stage).toString().left(maximumSource);
    source.remove(comments);
    for (auto it = uniform.globalMatch(source); it.hasNext();) {
      const QRegularExpressionMatch match = it.next();
      const QString type = match.captured(1);
      const QString name = match.captured(2);
      if (type == QLatin1String("float")) add(name, PortType::Number);
      if (type == QLatin1String("int")) add(name, PortType::Index);
      if (type == QLatin1String("bool")) add(name, PortType::Boolean);
      if (type.startsWith(QLatin1String("sampler2D"))) add(name, PortType::Image);
      const int size =
          type.size() == 4 && type.startsWith(QLatin1String("vec")) ? type.back().digitValue() : 0;
      for (int i = 0; i < std::min(size, 4); ++i)
        add(name + QLatin1Char('_') + QLatin1Char("XYZW"[i]), PortType::Number);
    }
  }
}

PatchClass environment(const char* className, const char* title, QList<Port> inputs,
                       const char* status) {
  PatchClass patch;
  patch.className = QString::fromLatin1(className);
  patch.title = QString::fromLatin1(title);
  patch.kind = PatchClass::Kind::Macro;
  patch.ports.inputs = std::move(inputs);
  patch.dynamicPorts = QStringLiteral("its published ports");
  patch.status = QString::fromLatin1(status);
  patch.alwaysConsumer = true;
  patch.make = makeEvaluator<PlainEvaluator>;
  return patch;
}

}  // namespace

void registerEnvironmentMacros(PatchRegistry& registry) {
  PatchClass mask = environment("QCColorMask", "Color Mask",
                                {booleanPort("inputRed", true, "Red Channel"),
                                 booleanPort("inputGreen", true, "Green Channel"),
                                 booleanPort("inputBlue", true, "Blue Channel"),
                                 booleanPort("inputAlpha", true, "Alpha Channel")},
                                "");
  mask.make = makeEvaluator<ColorMaskEvaluator>;
  registry.add(std::move(mask));

  registry.add(environment(
      "QCFog", "Fog",
      {menuPort("inputType", 0, "Type", {"Linear", "Exponential", "Exponential 2"}),
       colorPort("inputColor", foundation::Color::black(), "Color"),
       numberPort("inputDensity", 1, "Exponential Density"),
       numberPort("inputStart", 0, "Linear Start"), numberPort("inputEnd", 1, "Linear End"),
       menuPort("inputQuality", 0, "Quality", {"Per Vertex Computation", "Per Pixel Computation"}),
       menuPort("inputMode", 0, "Distance Mode", {"Plane Absolute", "Plane", "Radial"})},
      "the content is drawn without fog"));

  PatchClass lighting =
      environment("QCLighting", "Lighting",
                  {numberPort("inputObjectSpecular", 0.5, "Material Specularity"),
                   numberPort("inputObjectShininess", 128, "Material Shininess"),
                   colorPort("inputAmbientColor", {0.1, 0.1, 0.1, 1}, "Ambient Light")},
                  "no shadows; an inner Lighting replaces an outer one");
  lighting.dynamicPorts = QStringLiteral("color_n, positionX_n … for each light; published ports");
  lighting.addPorts = addLightPorts;
  lighting.make = makeFromNode<LightingEvaluator>;
  registry.add(std::move(lighting));

  PatchClass shader =
      environment("QCGLSLShader", "GLSL Shader", {}, "the content is drawn without the program");
  shader.dynamicPorts = QStringLiteral("the uniforms of the programs; published ports");
  shader.addPorts = addUniformPorts;
  registry.add(std::move(shader));
}

}  // namespace runtime::patches
