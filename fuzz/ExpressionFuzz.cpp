#include "runtime/patches/Expression.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QString text =
      QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const runtime::patches::Expression expression(text);
  const std::vector<double> values(static_cast<size_t>(expression.variables().size()), -1.5);
  quint64 random = size;
  static_cast<void>(expression.evaluate(values, random));
  return 0;
}
