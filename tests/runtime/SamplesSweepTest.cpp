#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <iostream>

#include "runtime/CompositionRenderer.h"

namespace {

/// Compositions from elsewhere, when the machine has any.
QStringList samples() {
  QString folder = qEnvironmentVariable("TESSARY_SAMPLES");
  if (folder.isEmpty()) {
    QDir root(QCoreApplication::applicationDirPath());
    for (int up = 0; up < 6 && !root.exists(QStringLiteral("shared/samples/qtz")); ++up)
      root.cdUp();
    folder = root.filePath(QStringLiteral("shared/samples/qtz"));
  }
  QStringList paths;
  for (const QFileInfo& file :
       QDir(folder).entryInfoList({QStringLiteral("*.qtz")}, QDir::Files, QDir::Name))
    paths.append(file.filePath());
  return paths;
}

TEST(SamplesSweep, everyCompositionLoadsAndRuns) {
  const QStringList paths = samples();
  if (paths.isEmpty()) GTEST_SKIP() << "no sample compositions here";
  QMap<QString, int> missing;
  int complete = 0;
  for (const QString& path : paths) {
    const std::string name = QFileInfo(path).fileName().toStdString();
    const auto loaded = runtime::CompositionRenderer::fromFile(path);
    ASSERT_TRUE(loaded) << name << ": " << loaded.error().message.toStdString();
    bool knowsAll = true;
    for (const runtime::PatchUse& use : (*loaded)->compiled().patchUses()) {
      if (use.known) continue;
      knowsAll = false;
      ++missing[use.identifier.isEmpty() ? use.className
                                         : use.className + QLatin1Char(':') + use.identifier];
    }
    complete += knowsAll ? 1 : 0;
    for (int frame = 0; frame < 10; ++frame) {
      const runtime::DrawList list = (*loaded)->renderAtTime(frame / 25.0, {320, 180});
      EXPECT_LT(list.items.size(), 200'001U) << name;
    }
  }
  QList<std::pair<int, QString>> ranking;
  for (auto it = missing.cbegin(); it != missing.cend(); ++it)
    ranking.append({-it.value(), it.key()});
  std::sort(ranking.begin(), ranking.end());
  std::cout << complete << " of " << paths.size() << " compositions have every patch\n";
  for (const auto& [count, name] : ranking.mid(0, 25))
    std::cout << "  missing in " << -count << ": " << name.toStdString() << "\n";
}

}  // namespace
