#include <QtMath>

#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/image/ComputedImage.h"
#include "runtime/image/ImageFilter.h"
#include "runtime/image/Resampling.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/PortHelpers.h"

namespace runtime::patches {

namespace {

using image::FilterInput;
using image::ImageFilter;
using Kind = image::FilterInputKind;

/// "CrossAngle" → "Cross Angle".
QString spaced(const QString& name) {
  QString label;
  for (const QChar c : name) {
    if (!label.isEmpty() && !c.isLower() && label.back().isLower()) label += QLatin1Char(' ');
    label += c;
  }
  return label;
}

int componentCount(Kind kind) {
  return kind == Kind::Point ? 2 : 4;
}

void addTransformPorts(const FilterInput& input, QList<Port>& ports) {
  static constexpr std::pair<const char*, const char*> parts[] = {
      {"_OriginX", "Origin X"},        {"_OriginY", "Origin Y"}, {"_ScaleX", "Scaling X"},
      {"_ScaleY", "Scaling Y"},        {"_Rotate", "Rotation"},  {"_TranslateX", "Translation X"},
      {"_TranslateY", "Translation Y"}};
  for (const auto& [suffix, label] : parts)
    ports.append(Port(
        QString::fromLatin1(input.key) + QString::fromLatin1(suffix), PortType::Number,
        QLatin1String(suffix).contains(QLatin1String("Scale")) * 1.0, QString::fromLatin1(label)));
}

void addPorts(const FilterInput& input, QList<Port>& ports) {
  const QString key = QString::fromLatin1(input.key);
  const QString label = spaced(key.mid(5));  // without "input"
  const auto& v = input.standard;
  switch (input.kind) {
    case Kind::Image:
      ports.append(Port(key, PortType::Image, {}, label));
      return;
    case Kind::Number:
    case Kind::Angle:
    case Kind::Length:
      ports.append(Port(key, PortType::Number, v[0], label));
      return;
    case Kind::Color:
      ports.append(Port(key, PortType::Color, foundation::Color{v[0], v[1], v[2], v[3]}, label));
      return;
    case Kind::Transform:
      addTransformPorts(input, ports);
      return;
    case Kind::Point:
    case Kind::Vector:
    case Kind::Rectangle:
      for (int i = 0; i < componentCount(input.kind); ++i) {
        const QChar letter = QLatin1Char("XYZW"[i]);
        ports.append(Port(key + QLatin1Char('_') + letter, PortType::Number,
                          v[static_cast<size_t>(i)], label + QLatin1Char(' ') + letter));
      }
  }
}

/// Applies one filter; the result computes its pixels when they are needed.
class ImageFilterEvaluator : public PatchEvaluator {
 public:
  ImageFilterEvaluator(const ImageFilter& filter, const NodeDescription& node)
      : m_filter(filter), m_normalised(node.state.value(u"normalizeCoordinates").toBool()) {}

  void execute(Execution& x) override {
    const bool takesImage = !m_filter.inputs.empty() && m_filter.inputs.front().kind == Kind::Image;
    const Image first = takesImage ? x.image(0) : Image();
    if (takesImage && first.isNull())
      x.setOutput(0, Value());
    else if (x.boolean(x.inputIndex(QStringLiteral("inputBypass"))))
      x.setOutput(0, first);
    else
      x.setOutput(0, m_filter.apply(arguments(x, first)));
  }

 private:
  image::FilterArguments arguments(const Execution& x, const Image& first) const {
    QSizeF unit(1, 1);
    if (m_normalised && !first.isNull() && !first.isInfinite()) unit = first.size();
    image::FilterArguments all;
    int port = 0;
    for (const FilterInput& input : m_filter.inputs)
      all.values.push_back(argument(x, input.kind, port, unit));
    return all;
  }

  /// Reads the ports of one input and moves on to the next one's. Anything not finite becomes 0.
  static image::FilterArguments::Argument argument(const Execution& x, Kind kind, int& port,
                                                   const QSizeF& unit) {
    image::FilterArguments::Argument a;
    const auto next = [&x, &port] {
      const double v = x.number(port++);
      return std::isfinite(v) ? v : 0;
    };
    switch (kind) {
      case Kind::Image:
        a.image = x.image(port++);
        break;
      case Kind::Number:
        a.numbers = {next()};
        break;
      case Kind::Angle:
        a.numbers = {qDegreesToRadians(next())};
        break;
      case Kind::Length:
        a.numbers = {next() * unit.width()};
        break;
      case Kind::Point:
      case Kind::Rectangle:
        for (int i = 0; i < componentCount(kind); ++i)
          a.numbers[static_cast<size_t>(i)] = next() * (i % 2 ? unit.height() : unit.width());
        break;
      case Kind::Vector:
        for (double& v : a.numbers) v = next();
        break;
      case Kind::Color: {
        const foundation::Color c = x.color(port++);
        a.numbers = {c.red, c.green, c.blue, c.alpha};
        break;
      }
      case Kind::Transform: {
        double v[7];
        for (double& part : v) part = next();
        a.transform = image::imageTransform({v[0] * unit.width(), v[1] * unit.height()}, v[2], v[3],
                                            v[4], {v[5] * unit.width(), v[6] * unit.height()});
      }
    }
    return a;
  }

  const ImageFilter& m_filter;
  bool m_normalised;
};

void addBypassPort(const NodeDescription& node, PatchPorts& ports) {
  if (node.state.value(u"hasBypass").toBool())
    ports.inputs.append(booleanPort("inputBypass", false, "Bypass"));
}

/// All filters; evaluators keep references into it.
const image::ImageFilters& allFilters() {
  static const image::ImageFilters all = [] {
    image::ImageFilters rows;
    for (const auto family :
         {image::generatorFilters, image::lightFilters, image::geometryFilters, image::blurFilters,
          image::colorFilters, image::compositingFilters, image::blendModeFilters,
          image::transitionFilters, image::distortionFilters, image::styleFilters}) {
      const image::ImageFilters more = family();
      rows.insert(rows.end(), more.begin(), more.end());
    }
    return rows;
  }();
  return all;
}

}  // namespace

void registerImageFilterPatches(PatchRegistry& registry) {
  for (const ImageFilter& filter : allFilters()) {
    PatchPorts ports;
    for (const FilterInput& input : filter.inputs) addPorts(input, ports.inputs);
    ports.outputs.append(portOf(PortType::Image, "outputImage", "Image"));
    registry.add({.className = QStringLiteral("QCImageFilter"),
                  .identifier = QString::fromLatin1(filter.name),
                  .title = spaced(QString::fromLatin1(filter.name).mid(2)),  // without "CI"
                  .ports = ports,
                  .dynamicPorts = QStringLiteral("inputBypass with hasBypass"),
                  .status = QString::fromLatin1(filter.status),
                  .addPorts = addBypassPort,
                  .make = [&filter](const NodeDescription& node) {
                    return std::make_unique<ImageFilterEvaluator>(filter, node);
                  }});
  }
}

}  // namespace runtime::patches
