#include <cstdint>

#include "document/psd/PSDLayerImporter.h"

// Reads any bytes as a layered image, within the limits, and draws what came of them when small.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const auto importer = document::PSDLayerImporter::layerImporterWithData(bytes, false);
  if (!importer) return 0;
  (void)(*importer)->description();
  const QSizeF canvas = (*importer)->PSDImageSize();
  if (canvas.width() * canvas.height() < 65'536) (void)(*importer)->combinedImageOfVisibleLayers();
  return 0;
}
