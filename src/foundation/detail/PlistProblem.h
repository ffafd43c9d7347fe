#pragma once

#include <QString>

namespace foundation::detail {

/// What a check of a property list's bytes found wrong, and where.
struct PlistProblem {
  QString reason;
  qsizetype offset = 0;  ///< in bytes from the start of the checked text
};

/// Containers nested deeper are refused, so that recursion over a tree is always safe.
constexpr int kMaxPlistDepth = 512;
/// Values a file may expand to (a shared value of a binary file counts wherever it is used).
constexpr quint64 kMaxPlistNodes = 16'000'000;
/// Bytes of a file, and bytes of text and data it may expand to.
constexpr quint64 kMaxPlistBytes = 512ULL << 20;

}  // namespace foundation::detail
