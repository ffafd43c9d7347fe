// Importing a layered image of 1920 × 1080 pixels with ten layers of that size: reading it, and
// drawing the layers together.
#include <QElapsedTimer>
#include <QGuiApplication>
#include <algorithm>
#include <cstdio>

#include "document/psd/PSDLayerImporter.h"
#include "support/PsdWriter.h"

namespace {

constexpr int kLayers = 10;
constexpr int kRepetitions = 9;

/// Half a smooth gradient, half transparent, as graphics are.
QImage picture(int index) {
  QImage image(1920, 1080, QImage::Format_ARGB32);
  for (int y = 0; y < image.height(); ++y) {
    auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < image.width(); ++x)
      row[x] = x < 960 ? qRgba(x / 4, y / 5, (x * index + y * 7) % 256, 255 - x / 5) : 0;
  }
  return image;
}

support::PsdWriter tenLayers(int depth, quint16 compression) {
  support::PsdWriter writer;
  writer.size = QSize(1920, 1080);
  writer.depth = depth;
  writer.compression = compression;
  writer.layersInBlock = depth == 16;
  for (int i = 0; i < kLayers; ++i)
    writer.layers.push_back({QStringLiteral("Layer %1").arg(i), {}, picture(i)});
  return writer;
}

double medianMilliseconds(const std::function<void()>& operation) {
  std::vector<double> times;
  for (int i = 0; i < kRepetitions; ++i) {
    QElapsedTimer timer;
    timer.start();
    operation();
    times.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
  }
  std::nth_element(times.begin(), times.begin() + kRepetitions / 2, times.end());
  return times[kRepetitions / 2];
}

void measure(const char* name, int depth, quint16 compression) {
  using document::PSDLayerImporter;
  const QByteArray bytes = tenLayers(depth, compression).bytes();
  std::unique_ptr<PSDLayerImporter> importer;
  const double reading = medianMilliseconds(
      [&] { importer = std::move(*PSDLayerImporter::layerImporterWithData(bytes, true)); });
  const double drawing =
      medianMilliseconds([&] { (void)importer->combinedImageOfVisibleLayers(); });
  std::printf("%-28s %6.1f MB  read %6.1f ms  combined %6.1f ms\n", name,
              static_cast<double>(bytes.size()) / 1e6, reading, drawing);
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  measure("8 bits, run length", 8, 1);
  measure("8 bits, raw", 8, 0);
  measure("8 bits, zip, predicted", 8, 3);
  measure("16 bits, run length", 16, 1);
  measure("16 bits, zip, predicted", 16, 3);
}
