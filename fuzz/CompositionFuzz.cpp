#include <QGuiApplication>

#include "runtime/CompositionRenderer.h"

/// Loads the bytes as a composition and plays three small frames under a tight budget.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static int argc = 1;
  static char name[] = "fuzz";
  static char* argv[] = {name, nullptr};
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("XDG_RUNTIME_DIR", "/tmp");
  static const QGuiApplication application(argc, argv);
  const runtime::Budget budget{2000, 500, 2000, 250'000, 50, 24};
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  auto renderer = runtime::CompositionRenderer::fromData(bytes, QStringLiteral("fuzz"), budget);
  if (!renderer) return 0;
  for (const double time : {0.0, 0.5, 0.25}) (void)(*renderer)->imageAtTime(time, QSize(32, 18));
  return 0;
}
