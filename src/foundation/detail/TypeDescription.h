#pragma once

#include <QByteArrayView>

namespace foundation::detail {

/// The extent of the first type in a description: "d" of "dd", "[12c]", "{CGPoint=dd}". 0 when the
/// description is damaged.
[[nodiscard]] qsizetype firstTypeLength(QByteArrayView types);

/// A character array such as "[12c]": its bytes are stored as they are.
struct ArrayType {
  qint64 count = -1;  ///< -1 when the description is damaged
  QByteArrayView element;
  [[nodiscard]] bool isBytes() const { return element == "c" || element == "C"; }
};
[[nodiscard]] ArrayType parseArrayType(QByteArrayView type);
/// The members of "{name=members}".
[[nodiscard]] QByteArrayView structureMembers(QByteArrayView type);

}  // namespace foundation::detail
