#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "model/Composition.h"
#include "model/CompositionSource.h"
#include "runtime/CompositionRenderer.h"

namespace {

/// A plate that the pieces of the "Renderer" file place, turn, fade and switch.
std::unique_ptr<runtime::CompositionRenderer> graphicWith(const QByteArray& plate) {
  const QTemporaryDir folder;
  const model::StandardComponents components(QStringLiteral(TESSARY_COMPONENTS));
  const QByteArray json = R"({"format": "HD 1080p50", "duration": 2, "components": [
      {"title": "Plate", "component": "Rectangle", "inputs": {"Color": "#FF8000"}, )" +
                          plate + "}]}";
  const auto graphic = model::CompositionSource(components)
                           .compositionFromData(json, folder.filePath(QStringLiteral("a.json")));
  EXPECT_TRUE(graphic) << (graphic ? "" : graphic.error().text().toStdString());
  const QString path = folder.filePath(QStringLiteral("a.qtz"));
  EXPECT_TRUE(graphic->composition->exportToPath(path, model::Composition::Background::Exclude));
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
  const auto graphic = graphicWith(R"("x": 100, "y": 60, "width": 200, "height": 30)");
  const QImage image = graphic->imageAtTime(0, {1920, 1080});
  EXPECT_EQ(drawn(image), QRect(100, 1080 - 60 - 30, 200, 30));
  EXPECT_EQ(image.pixel(100, 990), 0xFFFF8000u);
  // The same place in a picture of another size.
  EXPECT_EQ(drawn(graphic->imageAtTime(0, {960, 540})), QRect(50, 495, 100, 15));
}

TEST(RendererPieces, TurnCounterClockwiseAboutTheCentreAndFade) {
  const auto turned =
      graphicWith(R"("x": 100, "y": 200, "width": 200, "height": 30, "rotation": 90)");
  EXPECT_EQ(drawn(turned->imageAtTime(0, {1920, 1080})), QRect(185, 765, 30, 200));
  const auto leaning =
      graphicWith(R"("x": 800, "y": 500, "width": 200, "height": 20, "rotation": 30)");
  const QImage picture = leaning->imageAtTime(0, {1920, 1080});
  EXPECT_GT(qAlpha(picture.pixel(977, 1080 - 510 - 45)), 200);  // the right end is up
  const auto faded = graphicWith(R"("x": 0, "y": 0, "width": 200, "height": 30, "opacity": 0.5)");
  EXPECT_NEAR(qAlpha(faded->imageAtTime(0, {1920, 1080}).pixel(5, 1075)), 128, 1);
}

TEST(RendererPieces, ShowFromStartToEndWhileEnabled) {
  const auto graphic =
      graphicWith(R"("x": 0, "y": 0, "width": 200, "height": 30, "startTime": 0.5, "endTime": 1)");
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
