#pragma once

#include <QImage>

#include "model/Composition.h"
#include "model/StandardComponents.h"
#include "store/ObjectContext.h"

/// A graphic of twenty components as a station might have on air, for programs that need one.
class CanvasGraphic {
 public:
  CanvasGraphic() {
    graphic = context.insert(
        std::make_unique<model::Composition>(model::VideoResolution(QStringLiteral("HD 1080i25"))));
    graphic->setDuration(10);
    fill();
    graphic->clearSelection();
    context.clearHistory();
  }

  [[nodiscard]] model::QuartzComponent* component(const QString& title) const {
    for (model::QuartzComponent* component : graphic->components())
      if (component->title() == title) return component;
    return nullptr;
  }

  store::ObjectContext context;
  model::Composition* graphic = nullptr;

 private:
  using Color = foundation::Color;

  model::QuartzComponent* add(const char* file, const char* title, const QRectF& frame,
                              const QMap<QString, model::AttributeValue>& values = {}) {
    const auto standard = model::StandardComponents::located();
    const auto path = standard.pathOf(QLatin1String(file));
    if (!path) qFatal("no component %s in %s", file, qPrintable(standard.folder()));
    QStringList warnings;
    auto* made = graphic->addComponenWithQuartzCompositionFile(*path, values, warnings);
    if (!made) qFatal("%s", qPrintable(warnings.join(u' ')));
    made->setTitle(QLatin1String(title));
    made->setOriginX(frame.x());
    made->setOriginY(frame.y());
    made->setWidth(frame.width());
    made->setHeight(frame.height());
    for (auto it = values.begin(); it != values.end(); ++it)
      if (model::Attribute* attribute = made->attributeForKey(it.key()))
        attribute->setCurrentValue(it.value());
    return made;
  }

  void text(const char* title, const char* words, const QRectF& frame, double size) {
    add("Text", title, frame,
        {{QStringLiteral("Text"), QString::fromUtf8(words)},
         {QStringLiteral("Font_Name"), model::FontValue{QStringLiteral("Inter"), size}},
         {QStringLiteral("Color"), Color{1, 1, 1, 1}}});
  }

  static QImage picture(const QSize& size, const QColor& from, const QColor& to) {
    QImage image(size, QImage::Format_ARGB32);
    for (int y = 0; y < size.height(); ++y)
      for (int x = 0; x < size.width(); ++x) {
        const float share =
            static_cast<float>(x + y) / static_cast<float>(size.width() + size.height());
        image.setPixelColor(x, y,
                            QColor::fromRgbF(from.redF() + share * (to.redF() - from.redF()),
                                             from.greenF() + share * (to.greenF() - from.greenF()),
                                             from.blueF() + share * (to.blueF() - from.blueF())));
      }
    return image;
  }

  void fill() {
    const auto color = [](double r, double g, double b) {
      return model::AttributeValue(Color{r, g, b, 1});
    };
    const QString key = QStringLiteral("Color");
    add("ImageComponent", "Sky", {0, 400, 1920, 680},
        {{QStringLiteral("Image"),
          picture({1920, 680}, QColor(52, 70, 110), QColor(240, 180, 140))}});
    add("GradientBar", "Water", {0, 0, 1920, 420});
    add("Rectangle", "Horizon", {0, 412, 1920, 14}, {{key, color(0.1, 0.12, 0.25)}});
    add("ImageComponent", "Photo", {1300, 560, 400, 300},
        {{QStringLiteral("Image"),
          picture({800, 600}, QColor(20, 110, 90), QColor(230, 220, 120))}});
    add("GradientBar", "Strap", {120, 80, 1485, 150});
    add("Rectangle", "Rule", {120, 80, 1485, 6}, {{key, color(1, 0.69, 0.18)}});
    add("Rectangle", "Logo Plate", {120, 80, 152, 150}, {{key, color(1, 0.69, 0.18)}});
    add("Ellipse", "Logo", {150, 110, 92, 92}, {{key, color(0.04, 0.1, 0.27)}});
    text("Headline", "Harbour Bridge reopens to traffic", {290, 148, 1312, 80}, 66);
    text("Second Line", "First cars cross at six, ferries keep running until Sunday",
         {290, 90, 1312, 50}, 34);
    add("RoundedRectangle", "Clock Plate", {1604, 950, 196, 68}, {{key, color(0.04, 0.1, 0.27)}});
    text("Clock", "07:42", {1624, 954, 160, 60}, 44);
    add("Rectangle", "Clock Rule", {1604, 950, 6, 68}, {{key, color(1, 0.69, 0.18)}});
    add("Rectangle", "Ticker", {0, 0, 1920, 56}, {{key, color(0.77, 0.13, 0.23)}});
    text("Ticker Text", "Markets open higher after a quiet week, ferries on time",
         {40, 4, 1800, 48}, 34);
    add("RoundedRectangle", "Score Box", {120, 860, 420, 140}, {{key, color(0.06, 0.48, 0.29)}});
    text("Home", "HARBOUR 2", {150, 930, 360, 56}, 40);
    text("Guests", "ISLANDS 1", {150, 872, 360, 56}, 40);
    add("Ellipse", "Live Dot", {1460, 968, 30, 30}, {{key, color(1, 0.3, 0.3)}});
    text("Live", "LIVE", {1500, 954, 100, 60}, 40);
    text("Place", "Harbour, east bank", {1300, 500, 400, 50}, 30);
    graphic->removeComponents({component(QStringLiteral("Horizon"))});
  }
};
