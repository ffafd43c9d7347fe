#include <QDirIterator>
#include <QTemporaryDir>

#include "model/Composition.h"
#include "model/CompositionSource.h"
#include "runtime/CompositionRenderer.h"

namespace model {

namespace {

QStringList exampleSources() {
  QStringList paths;
  QDirIterator files(QStringLiteral(TESSARY_SOURCE_DIR "/resources/examples"),
                     {QStringLiteral("*.json")}, QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext()) paths.append(files.next());
  paths.sort();
  return paths;
}

}  // namespace

TEST(Examples, AreExportedAndPlayed) {
  const StandardComponents components = StandardComponents::located();
  if (exampleSources().isEmpty() || !components.pathOf(QStringLiteral("Renderer")))
    GTEST_SKIP() << "no examples or no standard components at hand";
  const QTemporaryDir folder;
  for (const QString& source : exampleSources()) {
    SCOPED_TRACE(source.toStdString());
    const auto graphic = CompositionSource(components).compositionFromFile(source);
    ASSERT_TRUE(graphic) << graphic.error().text().toStdString();
    const Composition& composition = *graphic->composition;
    const QString path = folder.filePath(QStringLiteral("playout.qtz"));
    ASSERT_TRUE(composition.exportToPath(path, Composition::Background::Exclude));
    const auto renderer = runtime::CompositionRenderer::fromFile(path);
    ASSERT_TRUE(renderer) << renderer.error().text().toStdString();
    // Up to the first stop frame something must have come on.
    const double shown = composition.posterFrameTimepoint();
    QImage picture;
    for (double time = 0; time <= shown + 0.01; time += 0.04)
      picture = (*renderer)->imageAtTime(time, {480, 270});
    EXPECT_TRUE((*renderer)->findings().isEmpty())
        << (*renderer)->findings().join(u'\n').toStdString();
    QImage empty(picture.size(), picture.format());
    empty.fill(0);
    EXPECT_NE(picture, empty);
  }
}

}  // namespace model
