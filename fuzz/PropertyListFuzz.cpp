#include <QByteArray>
#include <cstddef>
#include <cstdint>

#include "foundation/PropertyList.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const auto value = foundation::PropertyList::fromData(bytes, {});
  if (!value) return 0;
  const auto binary = foundation::PropertyList::toBinary(*value);
  if (binary && foundation::PropertyList::fromData(*binary, {}) != value) __builtin_trap();
  return 0;
}
