#include "foundation/TextPool.h"

#include <cstring>

namespace foundation {

QString textFromUtf8(std::string_view bytes) {
  const QByteArrayView view(bytes.data(), static_cast<qsizetype>(bytes.size()));
  if (!view.startsWith("\xEF\xBB\xBF")) return QString::fromUtf8(view);
  // A further character in front hides the mark from the decoder.
  return QString::fromUtf8('-' + view.toByteArray()).sliced(1);
}

QString TextPool::text(std::string_view bytes) {
  if (bytes.size() > longest) return textFromUtf8(bytes);
  Slot& slot = m_slots[slotOf(bytes)];
  if (slot.size == bytes.size() && std::memcmp(slot.bytes.data(), bytes.data(), slot.size) == 0)
    return slot.text;
  slot.size = bytes.size();
  std::memcpy(slot.bytes.data(), bytes.data(), bytes.size());
  slot.text = textFromUtf8(bytes);
  return slot.text;
}

size_t TextPool::slotOf(std::string_view bytes) {
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

}  // namespace foundation
