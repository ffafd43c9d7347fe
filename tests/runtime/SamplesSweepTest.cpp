#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <iostream>

#include "runtime/CompositionRenderer.h"
#include "support/Samples.h"

namespace {

using runtime::CompositionRenderer;

constexpr QSize size(320, 180);

/// Memory that the process holds, in bytes.
qint64 residentBytes() {
  QFile file(QStringLiteral("/proc/self/statm"));
  if (!file.open(QIODevice::ReadOnly)) return 0;
  return file.readAll().split(' ').value(1).toLongLong() * 4096;
}

/// Sanitizers make everything slower and larger.
bool isSanitized() {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  return true;
#else
  return false;
#endif
}

/// The patches of the composition that are not known.
QStringList unknownPatches(const CompositionRenderer& renderer) {
  QStringList names;
  for (const runtime::PatchUse& use : renderer.compiled().patchUses())
    if (!use.known)
      names.append(use.identifier.isEmpty() ? use.className
                                            : use.className + QLatin1Char(':') + use.identifier);
  return names;
}

/// Evaluates ten frames and draws the first and the last.
void play(CompositionRenderer& renderer, const std::string& name) {
  for (int frame = 1; frame < 9; ++frame) {
    const runtime::DrawList list = renderer.renderAtTime(frame / 25.0, size);
    EXPECT_LT(list.items.size(), 200'001U) << name;
  }
  for (const int frame : {0, 9}) {
    const QImage image = renderer.imageAtTime(frame / 25.0, size);
    EXPECT_EQ(image.size(), size) << name;
    EXPECT_EQ(image.format(), QImage::Format_ARGB32_Premultiplied) << name;
  }
}

void tell(const QMap<QString, int>& missing) {
  QList<std::pair<int, QString>> ranking;
  for (auto it = missing.cbegin(); it != missing.cend(); ++it)
    ranking.append({-it.value(), it.key()});
  std::sort(ranking.begin(), ranking.end());
  for (const auto& [count, name] : ranking.mid(0, 25))
    std::cout << "  missing in " << -count << ": " << name.toStdString() << "\n";
}

TEST(SamplesSweep, EveryCompositionLoadsRunsAndDraws) {
  const QStringList paths = support::samplePaths();
  if (paths.isEmpty()) GTEST_SKIP() << "no sample compositions here";
  QMap<QString, int> missing;
  int complete = 0;
  const qint64 before = residentBytes();
  for (const QString& path : paths) {
    const std::string name = QFileInfo(path).fileName().toStdString();
    QElapsedTimer timer;
    timer.start();
    const auto loaded = CompositionRenderer::fromFile(path);
    ASSERT_TRUE(loaded) << name << ": " << loaded.error().message.toStdString();
    const QStringList unknown = unknownPatches(**loaded);
    for (const QString& patch : unknown) ++missing[patch];
    complete += unknown.isEmpty() ? 1 : 0;
    play(**loaded, name);
    EXPECT_LT(timer.elapsed(), isSanitized() ? 60'000 : 6'000) << name;
  }
  if (!isSanitized()) {
    EXPECT_LT(residentBytes() - before, qint64(512) << 20);
  }
  std::cout << complete << " of " << paths.size() << " compositions have every patch\n";
  EXPECT_GE(complete, std::min<qsizetype>(25, paths.size() / 3));
  tell(missing);
}

}  // namespace
