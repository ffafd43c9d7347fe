#include <gtest/gtest.h>

#include <QFileInfo>
#include <iostream>

#include "ComponentFiles.h"
#include "model/ComponentProgram.h"
#include "runtime/CompositionRenderer.h"
#include "runtime/draw/RasterBackend.h"
#include "store/StoreSnapshot.h"
#include "support/Samples.h"

namespace model {

namespace {

const QSize canvasSize(192, 108);

QImage drawn(QuartzComponent& component, double time) {
  QImage canvas(canvasSize, QImage::Format_ARGB32_Premultiplied);
  canvas.fill(Qt::transparent);
  runtime::RasterBackend().draw(component.renderForView(canvasSize, time), canvas);
  return canvas;
}

bool isBlank(const QImage& image) {
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (image.pixel(x, y) != 0) return false;
  return true;
}

/// Another value of the same type.
AttributeValue changed(const AttributeValue& value) {
  if (const auto* number = value.as<double>()) return *number * 1.5 + 0.25;
  if (const auto* index = value.as<qint64>()) return *index + 1;
  if (const auto* flag = value.as<bool>()) return !*flag;
  if (const auto* text = value.as<QString>()) return *text + QStringLiteral(" more");
  if (const auto* color = value.as<foundation::Color>())
    return foundation::Color{color->green, color->blue, color->red, 0.5};
  return value;
}

/// Key frames on everything that can have them; they play between two values.
void animateEverything(QuartzComponent& component) {
  for (Attribute* attribute : component.attributes()) {
    if (!attribute->animationPossible()) continue;
    const AttributeValue value = attribute->currentValue();
    attribute->addTimepoint(0.5, value);
    attribute->addTimepoint(1.5, changed(value));
    ASSERT_TRUE(attribute->animateable());
    EXPECT_EQ(attribute->valueAtTimepoint(0), value) << attribute->key().toStdString();
    EXPECT_EQ(attribute->sortedKeyFrames().size(), 2);
    EXPECT_FALSE(attribute->keyFrameInformation().isEmpty());
    attribute->adjustTimepointsBy(-9, Attribute::Moved::All);  // as far as the start
    EXPECT_EQ(attribute->sortedKeyFrames().first(), 0);
  }
}

}  // namespace

TEST(SamplesAsComponents, LoadAnimateCopyDrawAndUndo) {
  const QStringList paths = support::samplePaths();
  if (paths.isEmpty()) GTEST_SKIP() << "no sample compositions here";
  const QTemporaryDir cache;
  qputenv("XDG_CACHE_HOME", cache.path().toUtf8());
  int loaded = 0;
  int seen = 0;
  int wrapped = 0;
  int attributes = 0;
  for (const QString& path : paths) {
    SCOPED_TRACE(QFileInfo(path).fileName().toStdString());
    Graphic graphic = emptyGraphic();
    graphic.context->clearHistory();
    const auto start = store::storeSnapshot(*graphic.context);
    QStringList warnings;
    QuartzComponent* component = graphic->addComponenWithQuartzCompositionFile(path, {}, warnings);
    if (!component) {
      ASSERT_FALSE(warnings.isEmpty());
      continue;
    }
    ++loaded;
    wrapped += component->compositionFilename() == path ? 0 : 1;
    ASSERT_TRUE(component->program()->hasImageOutput());
    EXPECT_GT(component->width(), 0);
    EXPECT_GT(component->height(), 0);
    attributes += static_cast<int>(component->attributes().size());
    seen += isBlank(drawn(*component, 0.5)) ? 0 : 1;
    animateEverything(*component);
    graphic->setEditorTimepoint(0.75);
    drawn(*component, 0.75);

    const auto dictionary = component->dictionaryWithData();
    QuartzComponent* copy =
        QuartzComponent::createWithDictionaryData(dictionary, *graphic, warnings);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->dictionaryWithData() == dictionary, true);
    EXPECT_EQ(drawn(*copy, 1) == drawn(*component, 1) || component->renderer()->isAnimated(), true);

    const auto end = store::storeSnapshot(*graphic.context);
    while (graphic.context->canUndo()) graphic.context->undo();
    EXPECT_EQ(store::storeSnapshot(*graphic.context) == start, true);
    while (graphic.context->canRedo()) graphic.context->redo();
    EXPECT_EQ(store::storeSnapshot(*graphic.context) == end, true);
  }
  std::cout << loaded << " of " << paths.size() << " became components, " << wrapped
            << " of them wrapped, with " << attributes << " attributes; " << seen
            << " draw something at 0.5 s\n";
  EXPECT_EQ(loaded, paths.size());
}

}  // namespace model
