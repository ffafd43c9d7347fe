#include <cmath>

#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/ColorModel.h"
#include "runtime/patches/Easing.h"
#include "runtime/patches/PortHelpers.h"

namespace runtime::patches {

using foundation::Color;

namespace {

bool isHsl(const NodeDescription& node) {
  return node.identifier == QLatin1String("hsl");
}

class ColorFromComponents : public PatchEvaluator {
 public:
  explicit ColorFromComponents(const NodeDescription& node) : m_hsl(isHsl(node)) {}
  void execute(Execution& x) override {
    const double alpha = unit(x.number(3));
    if (m_hsl)
      x.setOutput(0, colorFromHsl({x.number(0), x.number(1), x.number(2), alpha}));
    else
      x.setOutput(0, Color{unit(x.number(0)), unit(x.number(1)), unit(x.number(2)), alpha});
  }

 private:
  bool m_hsl;
};

class ColorToComponents : public PatchEvaluator {
 public:
  explicit ColorToComponents(const NodeDescription& node) : m_hsl(isHsl(node)) {}
  void execute(Execution& x) override {
    const Color color = x.color(0);
    const HslColor hsl = hslFromColor(color);
    x.setOutput(0, m_hsl ? hsl.hue : color.red);
    x.setOutput(1, m_hsl ? hsl.saturation : color.green);
    x.setOutput(2, m_hsl ? hsl.luminosity : color.blue);
    x.setOutput(3, color.alpha);
  }

 private:
  bool m_hsl;
};

class ColorMixer : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const Color a = x.color(0);
    const Color b = x.color(1);
    const double mix = eased(x.index(3), x.number(2));
    const auto between = [mix](double from, double to) { return from + (to - from) * mix; };
    x.setOutput(0, Color{between(a.red, b.red), between(a.green, b.green), between(a.blue, b.blue),
                         between(a.alpha, b.alpha)});
  }
};

class ColorTransform : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    HslColor hsl = hslFromColor(x.color(0));
    const double turned = hsl.hue + x.number(1) / 360;
    hsl.hue = turned - std::floor(turned);
    hsl.saturation *= x.number(2);
    hsl.luminosity *= x.number(3);
    hsl.alpha *= x.number(4);
    x.setOutput(0, colorFromHsl(hsl));
  }
};

Port unitPort(const char* key, const char* label) {
  return numberPort(key, 1, label).range(0, 1);
}

Port colorOutput() {
  return portOf(PortType::Color, "outputColor", "Color");
}

void registerComponents(PatchRegistry& registry) {
  for (const bool hsl : {false, true}) {
    // A node without identifier is of the first kind.
    const QString identifier = hsl ? QStringLiteral("hsl") : QString();
    registry.add({.className = QStringLiteral("QCColorFromComponents"),
                  .identifier = identifier,
                  .title = hsl ? QStringLiteral("HSL Color") : QStringLiteral("RGB Color"),
                  .ports = {{unitPort("input1", hsl ? "Hue" : "Red"),
                             unitPort("input2", hsl ? "Saturation" : "Green"),
                             unitPort("input3", hsl ? "Luminosity" : "Blue"),
                             unitPort("inputAlpha", "Alpha")},
                            {colorOutput()}},
                  .make = makeFromNode<ColorFromComponents>});
    registry.add({.className = QStringLiteral("QCColorToComponents"),
                  .identifier = identifier,
                  .title = hsl ? QStringLiteral("Color to HSL") : QStringLiteral("Color to RGB"),
                  .ports = {{colorPort("inputColor", Color::white(), "Color")},
                            {numberOutput("output1", hsl ? "Hue" : "Red"),
                             numberOutput("output2", hsl ? "Saturation" : "Green"),
                             numberOutput("output3", hsl ? "Luminosity" : "Blue"),
                             numberOutput("outputAlpha", "Alpha")}},
                  .make = makeFromNode<ColorToComponents>});
  }
}

}  // namespace

void registerColorPatches(PatchRegistry& registry) {
  registerComponents(registry);
  registry.add({.className = QStringLiteral("QCColorMixer"),
                .title = QStringLiteral("Color Mixer"),
                .ports = {{colorPort("inputColor1", Color::black(), "First color"),
                           colorPort("inputColor2", Color::white(), "Second color"),
                           numberPort("inputMix", 0.5, "Mixing Point").range(0, 1),
                           curvePort("inputInterpolation", "Interpolation")},
                          {colorOutput()}},
                .make = makeEvaluator<ColorMixer>});
  registry.add({.className = QStringLiteral("QCColorTransform"),
                .title = QStringLiteral("Color Transformation"),
                .ports = {{colorPort("inputColor", Color::white(), "Color"),
                           numberPort("inputHue", 0, "Hue Rotation"),
                           numberPort("inputSaturation", 1, "Saturation Factor"),
                           numberPort("inputLuminosity", 1, "Luminosity Factor"),
                           numberPort("inputAlpha", 1, "Alpha Factor")},
                          {colorOutput()}},
                .status = QStringLiteral("the hue rotation is taken as degrees"),
                .make = makeEvaluator<ColorTransform>});
}

}  // namespace runtime::patches
