#include "foundation/detail/TypeDescription.h"

#include <charconv>

namespace foundation::detail {

qsizetype firstTypeLength(QByteArrayView types) {
  int depth = 0;
  for (qsizetype i = 0; i < types.size(); ++i) {
    const char c = types[i];
    if (c == '[' || c == '{') ++depth;
    if (c == ']' || c == '}') --depth;
    if (depth < 0) return 0;
    if (depth == 0) return i + 1;
  }
  return 0;
}

ArrayType parseArrayType(QByteArrayView type) {
  ArrayType out;
  const char* end = type.data() + type.size() - 1;
  const auto [stop, error] = std::from_chars(type.data() + 1, end, out.count);
  out.element = QByteArrayView(stop, end - stop);
  if (error != std::errc() || firstTypeLength(out.element) != out.element.size()) out.count = -1;
  return out;
}

QByteArrayView structureMembers(QByteArrayView type) {
  const qsizetype equals = type.indexOf('=');
  return equals < 0 ? QByteArrayView() : type.sliced(equals + 1, type.size() - equals - 2);
}

}  // namespace foundation::detail
