#pragma once

#include <QString>
#include <array>
#include <limits>
#include <string_view>
#include <vector>

namespace foundation {

/// UTF-8 as text; unlike QString::fromUtf8() it keeps a byte-order mark at the start.
[[nodiscard]] QString textFromUtf8(std::string_view bytes);

/// Makes texts of bytes. Files repeat the same few hundred keys and names: equal short ones share
/// their storage.
class TextPool {
 public:
  [[nodiscard]] QString text(std::string_view bytes);

 private:
  static constexpr size_t longest = 40;
  static constexpr size_t slotCount = 1024;
  struct Slot {
    size_t size = std::numeric_limits<size_t>::max();
    std::array<char, longest> bytes;
    QString text;
  };
  [[nodiscard]] static size_t slotOf(std::string_view bytes);

  std::vector<Slot> m_slots{slotCount};
};

}  // namespace foundation
