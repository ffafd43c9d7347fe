#include <cstddef>
#include <cstdint>

#include "store/StoreSnapshot.h"
#include "store/XmlStore.h"
#include "support/StoreObjects.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  store::ObjectContext context;
  store::XmlStore store(support::storeEntities());
  if (!store.read(bytes, {}, context)) return 0;
  const QByteArray written = store.write(context);
  store::ObjectContext again;
  store::XmlStore second(support::storeEntities());
  if (!second.read(written, {}, again)) __builtin_trap();  // what was written must read back
  if (storeSnapshot(again) != storeSnapshot(context)) __builtin_trap();
  if (second.write(again) != written) __builtin_trap();
  return 0;
}
