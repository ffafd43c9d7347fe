#pragma once

#include <QString>
#include <array>
#include <cstring>
#include <limits>
#include <string_view>
#include <vector>

#include "foundation/detail/PlistScalarReading.h"

namespace foundation::detail {

/// Compositions repeat the same few hundred keys and class names; equal short texts share storage.
class PlistTextCache {
 public:
  QString text(std::string_view bytes) {
    if (bytes.size() > kLongest) return textFromUtf8(bytes);
    Slot& slot = m_slots[hash(bytes)];
    if (slot.size == bytes.size() && std::memcmp(slot.bytes.data(), bytes.data(), slot.size) == 0)
      return slot.text;
    slot.size = bytes.size();
    std::memcpy(slot.bytes.data(), bytes.data(), bytes.size());
    slot.text = textFromUtf8(bytes);
    return slot.text;
  }

 private:
  static constexpr size_t kLongest = 40;
  static constexpr size_t kSlots = 1024;
  struct Slot {
    size_t size = std::numeric_limits<size_t>::max();
    std::array<char, kLongest> bytes;
    QString text;
  };

  static size_t hash(std::string_view bytes) {
    quint64 first = 0;
    quint64 last = 0;
    if (bytes.size() >= 8) {
      std::memcpy(&first, bytes.data(), 8);
      std::memcpy(&last, bytes.data() + bytes.size() - 8, 8);
    } else {
      for (const char c : bytes) first = first << 8 | static_cast<quint8>(c);
    }
    const quint64 mixed = (first ^ (last * 31) ^ bytes.size()) * 0x9E3779B97F4A7C15ULL;
    return mixed >> 54;  // the top ten bits: 1024 slots
  }

  std::vector<Slot> m_slots{kSlots};
};

}  // namespace foundation::detail
