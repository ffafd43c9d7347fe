#include <cstddef>
#include <cstdint>

#include "foundation/archive/KeyedArchive.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using foundation::KeyedArchive;
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  if (const auto value = KeyedArchive::read(bytes)) (void)KeyedArchive::write(*value);
  return 0;
}
