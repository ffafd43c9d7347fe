#include "widgets/NumberExpression.h"

/// What is typed into a number field: parsed within bounds, applied without surprises.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QString text =
      QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const widgets::NumberExpression::Rules rules{QLocale(QLocale::English),
                                               {{QStringLiteral("px"), 1}}};
  const auto change = widgets::NumberExpression::parse(text, rules);
  if (change && !qIsFinite(change->appliedTo(100))) __builtin_trap();
  return 0;
}
