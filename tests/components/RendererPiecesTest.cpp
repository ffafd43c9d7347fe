#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "model/Composition.h"
#include "runtime/CompositionRenderer.h"
#include "store/ObjectContext.h"

namespace {

/// A plate that the pieces of the "Renderer" file place, turn, fade and switch.
struct Plate {
  QRectF frame;
  double rotation = 0;
  double opacity = 1;
  double start = 0;
  double end = 2;
};

std::unique_ptr<runtime::CompositionRenderer> graphicWith(const Plate& plate) {
  const QTemporaryDir folder;
  store::ObjectContext context;
  model::Composition& graphic = *context.insert(
      std::make_unique<model::Composition>(model::VideoResolution(QStringLiteral("HD 1080p50"))));
  graphic.setDuration(2);
  QStringList warnings;
  model::QuartzComponent* component = graphic.addComponenWithQuartzCompositionFile(
      QStringLiteral(TESSARY_COMPONENTS "/Rectangle.qtz"),
      {{QStringLiteral("Color"), foundation::Color{1, 128 / 255.0, 0, 1}}}, warnings);
  component->setTitle(QStringLiteral("Plate"));
  component->setOriginX(plate.frame.x());
  component->setOriginY(plate.frame.y());
  component->setWidth(plate.frame.width());
  component->setHeight(plate.frame.height());
  component->setZRotation(plate.rotation);
  component->setOpacity(plate.opacity);
  component->setStartTime(plate.start);
  component->setEndTime(plate.end);
  const QString path = folder.filePath(QStringLiteral("a.qtz"));
  EXPECT_TRUE(graphic.exportToPath(path, model::Composition::Background::Exclude));
  auto made = runtime::CompositionRenderer::fromFile(path);
  EXPECT_TRUE(made);
  return std::move(*made);
}

/// The rows and columns that anything was drawn to; empty when nothing was.
QRect drawn(const QImage& image) {
  QRect area;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (qAlpha(image.pixel(x, y)) > 8) area |= QRect(x, y, 1, 1);
  return area;
}

TEST(RendererPieces, PlaceOnWholePixelsFromTheLowerLeft) {
  const auto graphic = graphicWith({.frame = {100, 60, 200, 30}});
  const QImage image = graphic->imageAtTime(0, {1920, 1080});
  EXPECT_EQ(drawn(image), QRect(100, 1080 - 60 - 30, 200, 30));
  EXPECT_EQ(image.pixel(100, 990), 0xFFFF8000u);
  // The same place in a picture of another size.
  EXPECT_EQ(drawn(graphic->imageAtTime(0, {960, 540})), QRect(50, 495, 100, 15));
}

TEST(RendererPieces, TurnCounterClockwiseAboutTheCentreAndFade) {
  const auto turned = graphicWith({.frame = {100, 200, 200, 30}, .rotation = 90});
  EXPECT_EQ(drawn(turned->imageAtTime(0, {1920, 1080})), QRect(185, 765, 30, 200));
  const auto leaning = graphicWith({.frame = {800, 500, 200, 20}, .rotation = 30});
  const QImage picture = leaning->imageAtTime(0, {1920, 1080});
  EXPECT_GT(qAlpha(picture.pixel(977, 1080 - 510 - 45)), 200);  // the right end is up
  const auto faded = graphicWith({.frame = {0, 0, 200, 30}, .opacity = 0.5});
  EXPECT_NEAR(qAlpha(faded->imageAtTime(0, {1920, 1080}).pixel(5, 1075)), 128, 1);
}

TEST(RendererPieces, ShowFromStartToEndWhileEnabled) {
  const auto graphic = graphicWith({.frame = {0, 0, 200, 30}, .start = 0.5, .end = 1});
  const auto shows = [&](double time) {
    return !drawn(graphic->imageAtTime(time, {480, 270})).isEmpty();
  };
  EXPECT_FALSE(shows(0.48));
  EXPECT_TRUE(shows(0.5));
  EXPECT_TRUE(shows(1.0));
  EXPECT_FALSE(shows(1.02));
  graphic->setValueForInputKey(false, QStringLiteral("Plate_Enable"));
  EXPECT_FALSE(shows(0.7));
}

}  // namespace
