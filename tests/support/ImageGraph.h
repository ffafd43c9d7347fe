#pragma once

#include <gtest/gtest.h>

#include "support/GraphBuilder.h"

/// Small graphs of image patches and a look at the pixels that they yield.
namespace support {

inline QString text(const char* s) {
  return QString::fromLatin1(s);
}

inline foundation::PropertyValue colorValue(double r, double g, double b, double a = 1) {
  return foundation::PropertyDictionary{
      {text("red"), r}, {text("green"), g}, {text("blue"), b}, {text("alpha"), a}};
}

/// A graph of image patches: sources are cropped colours.
class ImageGraph {
 public:
  QString filter(const char* name, const foundation::PropertyDictionary& inputs = {},
                 const foundation::PropertyDictionary& state = {}) {
    return m_graph.node(text("QCImageFilter:") + text(name), state, inputs);
  }
  /// A rectangle of one colour.
  QString rectangle(const foundation::PropertyValue& color, double x, double y, double w,
                    double h) {
    const QString source = filter("CIConstantColorGenerator", {{text("inputColor"), color}});
    return crop(source, x, y, w, h);
  }
  QString crop(const QString& source, double x, double y, double w, double h) {
    const QString node = filter("CICrop", {{text("inputRectangle_X"), x},
                                           {text("inputRectangle_Y"), y},
                                           {text("inputRectangle_Z"), w},
                                           {text("inputRectangle_W"), h}});
    into(source, node);
    return node;
  }
  void into(const QString& source, const QString& node, const char* input = "inputImage") {
    m_graph.connect(source, text("outputImage"), node, text(input));
  }
  runtime::Image result(const QString& node) {
    m_graph.publishOutput(node, text("outputImage"), text("result"));
    m_renderer = m_graph.renderer();
    (void)m_renderer->renderAtTime(0, QSize(100, 100));
    return m_renderer->valueForOutputKey(text("result")).toImage();
  }

 private:
  GraphBuilder m_graph;
  std::unique_ptr<runtime::CompositionRenderer> m_renderer;
};

/// Premultiplied components of the pixel at a place of image space.
inline std::array<int, 4> at(const runtime::Image& image, int x, int y) {
  const QImage one = image.pixels(QRect(x, y, 1, 1));
  if (one.isNull()) return {-1, -1, -1, -1};
  const QRgb c = reinterpret_cast<const QRgb*>(one.constScanLine(0))[0];
  return {qRed(c), qGreen(c), qBlue(c), qAlpha(c)};
}

using Rgba = std::array<int, 4>;

}  // namespace support
