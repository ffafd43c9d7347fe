#include <gtest/gtest.h>

#include <QDir>

#include "quartz/QuartzComposition.h"
#include "runtime/CompositionRenderer.h"

namespace {

using foundation::PropertyDictionary;
using quartz::QuartzComposition;
using quartz::QuartzPatch;

QString pathOf(const QString& name) {
  return QStringLiteral(TESSARY_COMPONENTS) + QLatin1Char('/') + name + QStringLiteral(".qtz");
}

QStringList keysOf(const QuartzPatch& patch, QStringView list) {
  QStringList keys;
  for (const auto& entry : patch.state().value(list).array())
    keys.append(entry.dictionary().value(u"key").toString());
  keys.sort();
  return keys;
}

std::unique_ptr<QuartzComposition> load(const QString& name) {
  auto made = QuartzComposition::compositionWithFile(pathOf(name));
  EXPECT_TRUE(made) << name.toStdString();
  return made ? std::move(*made) : QuartzComposition::composition();
}

/// The names by which an export finds the pieces of a graphic.
TEST(StandardComponents, HoldThePatchesThatAnExportTakesOut) {
  const struct {
    const char* file;
    const char* patch;
    const char* inputs;
    const char* outputs;
  } pieces[] = {{"Background", "Background", "backgroundColor,backgroundImage", ""},
                {"MovieBackground", "Background", "Filename,backgroundColor", ""},
                {"Renderer", "Scaling Factor", "compositionHeight,compositionWidth",
                 "heightScalingFactor,renderHeight,renderWidth,widthScalingFactor"},
                {"Renderer", "Renderer",
                 "image,inputHeight,inputWidth,opacity,originX,originY,renderHeight,renderWidth,"
                 "scaleFactorHeight,scaleFactorWidth,zRotation",
                 ""},
                {"Renderer", "Timer", "endTime,patchTime,startTime", "time"},
                {"Renderer", "Enabler", "endTime,patchTime,startTime", "outputResult"},
                {"Renderer", "Logic_1", "", ""},
                {"FPS", "Background", "", ""}};
  for (const auto& piece : pieces) {
    const auto composition = load(QLatin1String(piece.file));
    const QuartzPatch* patch = composition->rootPatch()->patchWithName(QLatin1String(piece.patch));
    ASSERT_NE(patch, nullptr) << piece.file << ": " << piece.patch;
    EXPECT_EQ(keysOf(*patch, u"publishedInputPorts").join(u','), QLatin1String(piece.inputs));
    EXPECT_EQ(keysOf(*patch, u"publishedOutputPorts").join(u','), QLatin1String(piece.outputs));
  }
}

/// Every connection joins ports that exist, every class is known, and every shelf component is one
/// node with a size and an image.
TEST(StandardComponents, CompileWithoutFindings) {
  const QStringList files =
      QDir(QStringLiteral(TESSARY_COMPONENTS)).entryList({QStringLiteral("*.qtz")}, QDir::Files);
  ASSERT_GE(files.size(), 15);
  for (const QString& file : files) {
    const QString name = file.chopped(4);
    auto renderer = runtime::CompositionRenderer::fromFile(pathOf(name));
    ASSERT_TRUE(renderer) << renderer.error().text().toStdString();
    const QString findings = (*renderer)->findings().join(u'\n');
    // No frame rate is shown.
    EXPECT_EQ(name != QLatin1String("FPS") ? findings.toStdString() : "", "") << name.toStdString();
    if ((*renderer)->outputKeys().isEmpty()) continue;
    EXPECT_EQ(load(name)->rootPatch()->nodes().size(), 1u) << name.toStdString();
    EXPECT_TRUE((*renderer)->outputKeys().contains(QStringLiteral("outputImage")));
    EXPECT_TRUE((*renderer)->inputKeys().contains(QStringLiteral("inputWidth")));
    for (const QString& key : (*renderer)->inputKeys())
      EXPECT_FALSE(key.contains(QLatin1Char(' '))) << key.toStdString();
  }
}

}  // namespace
