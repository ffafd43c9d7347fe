#include <cstddef>
#include <cstdint>

#include "foundation/archive/NonKeyedArchive.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using foundation::NonKeyedArchive;
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const auto graph = NonKeyedArchive::decode(bytes);
  if (!graph) return 0;
  (void)NonKeyedArchive::encode(*graph);
  (void)NonKeyedArchive::read(bytes);
  return 0;
}
