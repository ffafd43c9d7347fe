#pragma once

#include <gtest/gtest.h>

#include <QPainter>
#include <initializer_list>
#include <utility>

#include "runtime/CompositionRenderer.h"

namespace support {

/// Plays one standard component and gives its image over a plain or chequered ground.
class ComponentPlayer {
 public:
  using Input = std::pair<const char*, runtime::Value>;

  ComponentPlayer(const char* name, std::initializer_list<Input> inputs = {}) {
    auto made = runtime::CompositionRenderer::fromFile(
        QStringLiteral(TESSARY_COMPONENTS "/%1.qtz").arg(QLatin1String(name)));
    EXPECT_TRUE(made) << name;
    if (made) m_renderer = std::move(*made);
    for (const auto& [key, value] : inputs) set(key, value);
  }
  void set(const char* key, const runtime::Value& value) {
    EXPECT_TRUE(m_renderer->setValueForInputKey(value, QLatin1String(key))) << key;
  }
  /// The image as it is, premultiplied; a null one where the component has none.
  QImage image(double time = 0, const runtime::FrameArguments& arguments = {}) {
    (void)m_renderer->renderAtTime(time, QSize(1920, 1080), arguments);
    return m_renderer->valueForOutputKey(QStringLiteral("outputImage")).toImage().bitmap();
  }
  /// Over squares of two greys, so that alpha shows.
  QImage picture(double time = 0, const runtime::FrameArguments& arguments = {}) {
    const QImage front = image(time, arguments);
    QImage ground(front.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < ground.height(); ++y)
      for (int x = 0; x < ground.width(); ++x)
        ground.setPixel(x, y, (x / 16 + y / 16) % 2 ? 0xFF40484F : 0xFF343A40);
    QPainter(&ground).drawImage(0, 0, front);
    return ground;
  }
  runtime::CompositionRenderer& renderer() { return *m_renderer; }

 private:
  std::unique_ptr<runtime::CompositionRenderer> m_renderer;
};

inline runtime::Value size(int pixels) {
  return runtime::Value::index(static_cast<quint64>(pixels));
}
inline runtime::Value menu(int item) {
  return runtime::Value::index(static_cast<quint64>(item));
}
inline runtime::Value text(const char16_t* value) {
  return runtime::Value(QString::fromUtf16(value));
}
inline runtime::Value color(QRgb rgba) {
  return runtime::Value(foundation::Color::fromQColor(QColor::fromRgba(rgba)));
}

}  // namespace support
