#include <QByteArray>
#include <cstddef>
#include <cstdint>

#include "foundation/PropertyList.h"
#include "support/PlistOracle.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const auto value = foundation::PropertyList::fromData(bytes, {});
  if (!value) return 0;
  const auto library = support::readWithLibrary(bytes);
  if (library && !support::sameButForDates(*value, *library)) __builtin_trap();
  const auto binary = foundation::PropertyList::toBinary(*value);
  if (!binary) return 0;
  const auto again = foundation::PropertyList::fromData(*binary, {});
  if (!again || *again != *value) __builtin_trap();  // what was written must read back the same
  return 0;
}
