#include "document/psd/PSDLayerImporter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>

#include "support/PsdWriter.h"

namespace {

using document::PSDLayer;
using document::PSDLayerImporter;
using support::PsdTestLayer;
using support::PsdWriter;

QImage filled(QSize size, const QColor& color) {
  QImage image(size, QImage::Format_ARGB32);
  image.fill(color);
  return image;
}

/// Red below, blue half over it and reaching out of the canvas at the upper right.
PsdWriter twoLayers() {
  PsdWriter writer;
  writer.layers = {{QStringLiteral("Red"), {1, 1}, filled({4, 4}, Qt::red)},
                   {QStringLiteral("Blue"), {4, -2}, filled({6, 5}, Qt::blue), 128}};
  return writer;
}

std::unique_ptr<PSDLayerImporter> import(const QByteArray& data, bool flipped = true) {
  auto importer = PSDLayerImporter::layerImporterWithData(data, flipped);
  return importer ? std::move(*importer) : nullptr;
}

QString write(const QTemporaryDir& folder, const QString& name, const QByteArray& data) {
  QFile file(folder.filePath(name));
  EXPECT_TRUE(file.open(QFile::WriteOnly));
  file.write(data);
  return file.fileName();
}

TEST(PSDLayerImporter, NeedsAFileWithContent) {
  const QTemporaryDir folder;
  const auto reason = [](const QString& path) {
    const auto importer = PSDLayerImporter::layerImporterWithPath(path, false);
    EXPECT_FALSE(importer);
    EXPECT_EQ(importer.error().file, path);
    return importer.error().message;
  };
  EXPECT_TRUE(reason(folder.filePath(QStringLiteral("none.psd"))).contains(u"not exist"));
  EXPECT_TRUE(reason(folder.path()).contains(u"folder"));
  EXPECT_TRUE(reason(write(folder, QStringLiteral("empty.psd"), {})).contains(u"empty"));
  EXPECT_TRUE(reason(QStringLiteral("/dev/zero")).contains(u"regular"));
  EXPECT_FALSE(PSDLayerImporter::layerImporterWithData({}, false));
}

TEST(PSDLayerImporter, GivesNoLayersForOtherFiles) {
  const QTemporaryDir folder;
  QByteArray png;
  QBuffer buffer(&png);
  ASSERT_TRUE(filled({4, 4}, Qt::red).save(&buffer, "PNG"));
  const QString path = write(folder, QStringLiteral("picture.png"), png);
  const auto importer = PSDLayerImporter::layerImporterWithPath(path, true);
  ASSERT_TRUE(importer);
  EXPECT_EQ((*importer)->layerCount(), 0);
  EXPECT_TRUE((*importer)->allLayersVisible());
  EXPECT_EQ((*importer)->PSDImageSize(), QSizeF(0, 0));
  EXPECT_TRUE((*importer)->combinedImageOfVisibleLayers().isNull());
  EXPECT_EQ((*importer)->path(), path);
  EXPECT_EQ((*importer)->filename(), QStringLiteral("picture.png"));
  EXPECT_THAT((*importer)->warnings(),
              testing::ElementsAre(QStringLiteral("The file is not a layered image (PSD).")));
}

TEST(PSDLayerImporter, ListsTheTopmostLayerFirst) {
  const auto importer = import(twoLayers().bytes());
  ASSERT_EQ(importer->layerCount(), 2);
  const PSDLayer& blue = *importer->layers()[0];
  EXPECT_EQ(blue.name(), QStringLiteral("Blue"));
  EXPECT_EQ(blue.image(), filled({6, 5}, Qt::blue));
  EXPECT_NEAR(blue.opacity(), 128 / 255.0, 1e-9);
  EXPECT_EQ(importer->layers()[1]->name(), QStringLiteral("Red"));
  EXPECT_EQ(importer->PSDImageSize(), QSizeF(8, 6));
  EXPECT_TRUE(importer->warnings().isEmpty());
  EXPECT_EQ(importer->description(),
            QStringLiteral("PSDLayerImporter path: , layer count: 2, layers:\n"
                           "PSDLayer name: Blue, image: 6 x 5, origin: (4, -2), opacity: 0.501961, "
                           "visible: YES\n"
                           "PSDLayer name: Red, image: 4 x 4, origin: (1, 1), opacity: 1, "
                           "visible: YES"));
}

TEST(PSDLayerImporter, OriginsFollowTheDirectionOfY) {
  const auto down = import(twoLayers().bytes(), true);
  EXPECT_EQ(down->layers()[1]->origin(), QPointF(1, 1));
  EXPECT_EQ(down->layers()[0]->origin(), QPointF(4, -2));
  const auto up = import(twoLayers().bytes(), false);
  EXPECT_EQ(up->layers()[1]->origin(), QPointF(1, 1));  // one row above and below
  EXPECT_EQ(up->layers()[0]->origin(), QPointF(4, 3));
  EXPECT_EQ(up->combinedImageOfVisibleLayers(), down->combinedImageOfVisibleLayers());
}

TEST(PSDLayerImporter, CombinesWhatIsVisible) {
  const auto importer = import(twoLayers().bytes());
  const QImage both = importer->combinedImageOfVisibleLayers();
  EXPECT_EQ(both.size(), QSize(8, 6));
  EXPECT_EQ(both.pixelColor(0, 0).alpha(), 0);
  EXPECT_EQ(both.pixelColor(1, 4), QColor(Qt::red));
  EXPECT_NEAR(both.pixelColor(4, 2).red(), 127, 1);  // blue with half its opacity over red
  EXPECT_NEAR(both.pixelColor(4, 2).blue(), 128, 1);
  EXPECT_NEAR(both.pixelColor(7, 0).alpha(), 128, 1);
  importer->layers()[0]->setVisible(false);
  EXPECT_FALSE(importer->allLayersVisible());
  EXPECT_EQ(importer->combinedImageOfVisibleLayers().pixelColor(4, 2), QColor(Qt::red));
}

TEST(PSDLayerImporter, DrawsTheWholeDocumentIntoBounds) {
  const auto importer = import(twoLayers().bytes());
  QImage page = filled({40, 40}, Qt::white);
  {
    QPainter painter(&page);
    importer->drawVisibleLayers(painter, QRectF(10, 20, 16, 6));  // twice as wide
  }
  EXPECT_EQ(page.pixelColor(12, 21), QColor(Qt::red));
  EXPECT_EQ(page.pixelColor(11, 21), QColor(Qt::white));
  EXPECT_EQ(page.pixelColor(25, 20).blue(), 255);
  EXPECT_NEAR(page.pixelColor(25, 20).red(), 127, 1);
  EXPECT_EQ(page.pixelColor(25, 19), QColor(Qt::white));  // outside of the canvas
  EXPECT_EQ(page.pixelColor(26, 20), QColor(Qt::white));
}

TEST(PSDLayer, TellsWhenItsVisibilityChanges) {
  PSDLayer layer(filled({1, 1}, Qt::red), QStringLiteral("Title"), {}, 0.5, true);
  QList<bool> seen;
  auto subscription =
      layer.observeVisible([&](const PSDLayer& changed) { seen.append(changed.visible()); });
  layer.setVisible(true);
  layer.setVisible(false);
  layer.setVisible(true);
  subscription.cancel();
  layer.setVisible(false);
  EXPECT_EQ(seen, (QList<bool>{false, true}));
}

}  // namespace
