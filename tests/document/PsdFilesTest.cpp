// Files written by other programs, against the picture that the same program made of them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "document/psd/PSDLayerImporter.h"
#include "support/GoldenImage.h"

namespace {

using document::PSDLayer;
using document::PSDLayerImporter;

QString pathOf(const QString& name) {
  return QStringLiteral(TESSARY_SOURCE_DIR "/tests/document/files/") + name;
}

std::unique_ptr<PSDLayerImporter> import(const QString& name) {
  auto importer = PSDLayerImporter::layerImporterWithPath(pathOf(name), true);
  EXPECT_TRUE(importer);
  return importer ? std::move(*importer) : nullptr;
}

QStringList linesOf(const PSDLayerImporter& importer) {
  QStringList lines;
  for (const auto& layer : importer.layers())
    lines.append(QStringLiteral("%1 %2,%3 %4x%5 %6%7")
                     .arg(layer->name())
                     .arg(layer->origin().x())
                     .arg(layer->origin().y())
                     .arg(layer->image().width())
                     .arg(layer->image().height())
                     .arg(qRound(layer->opacity() * 100))
                     .arg(layer->visible() ? QString() : QStringLiteral(" hidden")));
  return lines;
}

TEST(PsdFiles, GroupsMasksAndHiddenLayers) {
  const auto importer = import(QStringLiteral("gimp-layers.psd"));
  EXPECT_EQ(linesOf(*importer).join(QLatin1Char('\n')),
            QStringLiteral("Masked 10,35 40x40 100\n"
                           "In hidden group 10,10 60x60 100 hidden\n"
                           "In group, high 95,15 20x20 40\n"
                           "In group, low 60,40 30x30 50\n"
                           "Hidden 30,10 50x50 100 hidden\n"
                           "Überschrift – 字幕 -20,-10 60x40 60\n"
                           "Background 0,0 120x80 100"));
  EXPECT_TRUE(importer->warnings().isEmpty()) << importer->warnings().join(u' ').toStdString();
  EXPECT_LE(support::largestDifference(importer->combinedImageOfVisibleLayers(),
                                       QImage(pathOf(QStringLiteral("gimp-layers.png")))),
            2);
}

TEST(PsdFiles, CompressedSixteenBitAndLarge) {
  const QImage expected(pathOf(QStringLiteral("magick.png")));
  for (const QString& name : {QStringLiteral("magick-8zip.psd"), QStringLiteral("magick-16zip.psd"),
                              QStringLiteral("magick-large.psb")}) {
    SCOPED_TRACE(name.toStdString());
    const auto importer = import(name);
    EXPECT_EQ(
        linesOf(*importer).join(QLatin1Char('\n')),
        QStringLiteral("Glow 40,28 30x24 100\nRed box 5,5 40x30 100\nBackdrop 0,0 64x48 100"));
    EXPECT_LE(support::largestDifference(importer->combinedImageOfVisibleLayers(), expected), 2);
  }
}

}  // namespace
