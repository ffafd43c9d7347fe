#include <gtest/gtest.h>

#include <QPainter>

#include "runtime/PatchRegistry.h"
#include "support/GoldenImage.h"
#include "support/ImageGraph.h"

using foundation::PropertyDictionary;
using support::colorValue;
using support::ImageGraph;
using support::text;

namespace {

constexpr int cell = 96;

/// A square with colours, soft edges and transparency: a ramp with a disc and stripes over it.
QString testPicture(ImageGraph& g) {
  const QString ramp =
      g.filter("CILinearGradient", {{text("inputPoint1_X"), 96.0},
                                    {text("inputPoint1_Y"), 0.0},
                                    {text("inputColor0"), colorValue(0.1, 0.3, 0.8)},
                                    {text("inputColor1"), colorValue(0.9, 0.9, 0.2, 0.4)}});
  const QString disc =
      g.filter("CIRadialGradient", {{text("inputCenter_X"), 56.0},
                                    {text("inputCenter_Y"), 40.0},
                                    {text("inputRadius0"), 19.5},
                                    {text("inputRadius1"), 20.5},
                                    {text("inputColor0"), colorValue(1, 0.2, 0.1)},
                                    {text("inputColor1"), colorValue(0, 0, 0, 0)}});
  const QString both = g.filter("CISourceOverCompositing");
  g.into(disc, both);
  g.into(ramp, both, "inputBackgroundImage");
  return g.crop(both, 8, 8, 80, 80);
}

/// A second, opaque picture.
QString backdrop(ImageGraph& g) {
  const QString board =
      g.filter("CICheckerboardGenerator", {{text("inputCenter_X"), 0.0},
                                           {text("inputCenter_Y"), 0.0},
                                           {text("inputWidth"), 16.0},
                                           {text("inputColor0"), colorValue(0.2, 0.6, 0.3)}});
  return g.crop(board, 0, 0, 64, 96);
}

/// Input values that suit small pictures.
PropertyDictionary smallValues(const runtime::PatchClass& filter) {
  PropertyDictionary values;
  for (const runtime::Port& port : filter.ports.inputs) {
    const QString& key = port.key;
    if (key == QLatin1String("inputCenter_X") || key == QLatin1String("inputCenter_Y"))
      values.insert(key, 48.0);
    if (key == QLatin1String("inputTime")) values.insert(key, 0.4);
    const double v = port.defaultValue.toNumber();
    const bool isLength =
        key.contains(QLatin1String("Radius")) || key.contains(QLatin1String("Width")) ||
        key.contains(QLatin1String("Point")) || key.contains(QLatin1String("Left_")) ||
        key.contains(QLatin1String("Right_"));
    if (isLength && v >= 50) values.insert(key, v / 5);
    if (key.startsWith(QLatin1String("inputExtent")) && v > 0) values.insert(key, 96.0);
  }
  return values;
}

QImage cellOf(const runtime::PatchClass& filter) {
  ImageGraph g;
  const QByteArray name = filter.identifier.toLatin1();
  const QString node = g.filter(name.constData(), smallValues(filter));
  int images = 0;
  for (const runtime::Port& port : filter.ports.inputs)
    if (port.type == runtime::PortType::Image)
      g.into(images++ == 0 ? testPicture(g) : backdrop(g), node, port.key.toLatin1().constData());
  return g.result(node).pixels(QRect(0, 0, cell, cell));
}

/// All filters with or without an image input, in order of registration.
QImage sheet(const std::function<bool(const runtime::PatchClass&)>& wanted, int columns) {
  std::vector<QImage> cells;
  for (const auto& known : runtime::PatchRegistry::shared().classes())
    if (known->className == QLatin1String("QCImageFilter") && wanted(*known))
      cells.push_back(cellOf(*known));
  const int rows = (static_cast<int>(cells.size()) + columns - 1) / columns;
  QImage all(columns * cell, rows * cell, QImage::Format_ARGB32_Premultiplied);
  all.fill(Qt::lightGray);  // shows white and holes alike
  QPainter painter(&all);
  for (size_t i = 0; i < cells.size(); ++i) {
    EXPECT_FALSE(cells[i].isNull()) << i;
    painter.drawImage(static_cast<int>(i) % columns * cell, static_cast<int>(i) / columns * cell,
                      cells[i]);
  }
  return all;
}

bool takesImage(const runtime::PatchClass& filter) {
  return !filter.ports.inputs.isEmpty() &&
         filter.ports.inputs.front().type == runtime::PortType::Image;
}

}  // namespace

TEST(ImageSheet, Generators) {
  support::expectGolden(sheet([](const auto& f) { return !takesImage(f); }, 5),
                        text("image-generators"));
}

TEST(ImageSheet, FiltersOfOneImage) {
  support::expectGolden(
      sheet([](const auto& f) { return takesImage(f) && f.ports.inputs.size() < 2; }, 4),
      text("image-plain-filters"));
  support::expectGolden(sheet(
                            [](const auto& f) {
                              return takesImage(f) && f.ports.inputs.size() > 1 &&
                                     f.ports.inputs[1].type != runtime::PortType::Image;
                            },
                            8),
                        text("image-adjustments"));
}

TEST(ImageSheet, FiltersOfTwoImages) {
  support::expectGolden(sheet(
                            [](const auto& f) {
                              return takesImage(f) && f.ports.inputs.size() > 1 &&
                                     f.ports.inputs[1].type == runtime::PortType::Image;
                            },
                            8),
                        text("image-compositing"));
}
