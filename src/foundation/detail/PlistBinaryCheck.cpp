#include "foundation/detail/PlistBinaryCheck.h"

#include <QUtf8StringView>
#include <cstring>
#include <string_view>
#include <vector>

#include "foundation/detail/PlistScalarSyntax.h"

namespace foundation::detail {

namespace {

constexpr size_t kTrailerSize = PlistBinaryLayout::kTrailerSize;
constexpr size_t kHeaderSize = 8;
// Seconds between 2001-01-01 and the years 1 and 9999: the dates that both forms can hold.
constexpr double kFirstDate = -63113904000.0;
constexpr double kLastDate = 252423993599.0;

class BinaryCheck {
 public:
  explicit BinaryCheck(PlistBinaryLayout& layout)
      : m_layout(layout), m_bytes(layout.bytes), m_size(layout.size) {}

  std::optional<PlistProblem> run() {
    readTrailer();
    if (!m_problem) walk();
    return std::move(m_problem);
  }

 private:
  // Shared objects are looked at once; what they add to the whole is remembered.
  struct Object {
    quint32 nodes = 0;  // values in the subtree, written out; 0: not seen yet
    quint32 bytes = 0;
    quint16 height = 0;
    bool open = false;   // on the path from the root to the object under inspection
    bool isKey = false;  // known to be text that a key can hold
  };
  struct Frame {
    quint64 object = 0;
    size_t references = 0;  // where its list of references starts
    quint64 count = 0;      // references in the list
    quint64 keys = 0;       // how many of them, from the start, must be strings
    quint64 next = 0;
  };

  void fail(size_t at, const char* reason) {
    if (!m_problem)
      m_problem = PlistProblem{QString::fromLatin1(reason), static_cast<qsizetype>(at)};
  }

  void readTrailer() {
    if (m_size < kHeaderSize + kTrailerSize + 2) return fail(m_size, "the file is cut short");
    if (m_bytes[6] != '0') return fail(6, "unknown version of the binary form");
    const size_t at = m_size - kTrailerSize;
    m_layout.offsetWidth = m_bytes[at + 6];
    m_layout.referenceWidth = m_referenceWidth = m_bytes[at + 7];
    const quint64 count = m_layout.number(at + 8, 8);
    m_layout.root = m_layout.number(at + 16, 8);
    const quint64 table = m_layout.number(at + 24, 8);
    const auto possible = [](unsigned width) { return width >= 1 && width <= 8; };
    if (!possible(m_layout.offsetWidth) || !possible(m_referenceWidth))
      return fail(at + 6, "impossible number widths in the trailer");
    if (table < kHeaderSize || table > at) return fail(at + 24, "the offset table lies outside");
    if (count == 0 || count > (at - table) / m_layout.offsetWidth)
      return fail(at + 8, "more objects than the offset table can hold");
    if (count > kMaxPlistNodes) return fail(at + 8, "too many objects");
    if (m_layout.root >= count) return fail(at + 16, "the root object does not exist");
    m_layout.table = m_table = static_cast<size_t>(table);
    m_layout.shared.assign(static_cast<size_t>(count), 0);
    m_objects.resize(static_cast<size_t>(count));
  }

  // Depth first with a stack of its own: the graph may be as deep as the file likes.
  void walk() {
    enter(m_layout.root);
    while (!m_problem && !m_stack.empty()) {
      Frame& frame = m_stack.back();
      if (frame.next == frame.count) {
        leave();
        continue;
      }
      const size_t at = frame.references + static_cast<size_t>(frame.next * m_referenceWidth);
      const quint64 child = m_layout.number(at, m_referenceWidth);
      const bool isKey = frame.next < frame.keys;
      ++frame.next;
      if (child >= m_objects.size()) return fail(at, "a reference to an object that is missing");
      visit(child, isKey, at);
    }
  }

  void visit(quint64 child, bool isKey, size_t at) {
    Object& object = m_objects[child];
    if (object.open) return fail(at, "a container that contains itself");
    if (object.nodes == 0) {
      if (m_stack.size() >= kMaxPlistDepth) return fail(at, "nested too deeply");
      const size_t depth = m_stack.size();
      enter(child);
      if (m_problem) return;
      if (isKey && !isKeyString(child)) return fail(at, "a key that is not a plain string");
      if (m_stack.size() > depth) return;  // a container: counted when it is left
    } else {
      m_layout.shared[child] = 1;
      if (isKey && !isKeyString(child)) return fail(at, "a key that is not a plain string");
    }
    addToParent(object, at);
  }

  void addToParent(const Object& child, size_t at) {
    Object& parent = m_objects[m_stack.back().object];
    parent.nodes += child.nodes;
    parent.bytes += child.bytes;
    parent.height = qMax(parent.height, static_cast<quint16>(child.height + 1));
    if (parent.nodes > kMaxPlistNodes || parent.bytes > kMaxPlistBytes)
      return fail(at, "shared values expand beyond all bounds");
    if (m_stack.size() + child.height > kMaxPlistDepth) fail(at, "nested too deeply");
  }

  void leave() {
    const Frame frame = m_stack.back();
    m_stack.pop_back();
    m_objects[frame.object].open = false;
    if (!m_stack.empty()) addToParent(m_objects[frame.object], frame.references);
  }

  // ASCII or UTF-16 text without the zero character, which a key cannot hold.
  bool isKeyString(quint64 object) {
    if (!m_objects[object].isKey) m_objects[object].isKey = holdsKey(m_layout.offsetOf(object));
    return m_objects[object].isKey;
  }

  bool holdsKey(size_t at) const {
    const int kind = m_bytes[at] >> 4;
    if (kind != 0x5 && kind != 0x6) return false;
    size_t body = 0;
    const auto count = static_cast<size_t>(m_layout.length(at, body));
    if (kind == 0x5) return true;  // checkBytes() refuses the zero character
    for (size_t i = 0; i < count; ++i)
      if (m_layout.number(body + 2 * i, 2) == 0) return false;
    return true;
  }

  void enter(quint64 object) {
    const auto at = static_cast<size_t>(qMin<quint64>(m_layout.offsetOf(object), m_size));
    if (at < kHeaderSize || at >= m_table) return fail(at, "an object lies outside the objects");
    m_objects[object].nodes = 1;
    const unsigned low = m_bytes[at] & 0xF;
    switch (m_bytes[at] >> 4) {
      case 0x0:
        if (low != 8 && low != 9) fail(at, "an unknown kind of object");
        return;
      case 0x1:
        return checkInteger(at, low);
      case 0x2:
        if (low != 2 && low != 3) return fail(at, "a real of unknown width");
        return needBytes(at, at + 1, quint64(1) << low);
      case 0x3:
        return checkDate(at, low);
      case 0x4:
      case 0x5:
      case 0x6:
        return checkBytes(object, at);
      case 0x8:
        if (low > 7) return fail(at, "a reference number that is too wide");
        return needBytes(at, at + 1, low + 1);
      case 0xA:
        return openContainer(object, at, 1);
      case 0xD:
        return openContainer(object, at, 2);
      default:
        return fail(at, "an unknown kind of object");
    }
  }

  void needBytes(size_t at, size_t body, quint64 count) {
    if (body > m_table || count > m_table - body) fail(at, "an object reaches beyond the objects");
  }

  void checkInteger(size_t at, unsigned low) {
    if (low > 4) return fail(at, "an integer of unknown width");
    needBytes(at, at + 1, quint64(1) << low);
    if (!m_problem && low == 4 && m_layout.number(at + 1, 8) != 0)
      fail(at, "an integer of more than 64 bits");
  }

  void checkDate(size_t at, unsigned low) {
    if (low != 3) return fail(at, "a date of unknown width");
    needBytes(at, at + 1, 8);
    if (m_problem) return;
    const quint64 bits = m_layout.number(at + 1, 8);
    double seconds = 0;
    std::memcpy(&seconds, &bits, sizeof seconds);
    if (!(seconds >= kFirstDate && seconds <= kLastDate))
      fail(at, "a date outside the years 1-9999");
  }

  // The count of a string, data or container; moves body behind it.
  quint64 length(size_t at, size_t& body) {
    const unsigned low = m_bytes[at] & 0xF;
    body = at + 1;
    if (low != 0xF) return low;
    const unsigned marker = body < m_table ? m_bytes[body] : 0;
    if (marker >> 4 != 1 || (marker & 0xF) > 3) return fail(at, "a length that is not a number"), 0;
    needBytes(at, body + 1, quint64(1) << (marker & 0xF));
    return m_problem ? 0 : m_layout.length(at, body);
  }

  void checkBytes(quint64 object, size_t at) {
    size_t body = 0;
    const quint64 count = length(at, body);
    if (m_problem) return;
    if (count > m_size) return fail(at, "an object reaches beyond the objects");
    const bool wide = m_bytes[at] >> 4 == 0x6;
    const size_t size = static_cast<size_t>(count) * (wide ? 2 : 1);
    needBytes(at, body, size);
    if (m_problem) return;
    m_objects[object].bytes = static_cast<quint32>(size);
    if (wide) return checkUtf16(body, size);
    if (m_bytes[at] >> 4 != 0x5) return;
    if (size > 0 && std::memchr(m_bytes + body, 0, size))
      return fail(at, "a zero character in text");
    const std::string_view text(reinterpret_cast<const char*>(m_bytes + body), size);
    if ((textTraits(text) & kNotAscii) &&
        !QUtf8StringView(text.data(), static_cast<qsizetype>(size)).isValidUtf8())
      fail(at, "text in an unknown encoding");
  }

  void checkUtf16(size_t body, size_t size) {
    for (size_t i = 0; i < size; i += 2) {
      const quint64 unit = m_layout.number(body + i, 2);
      if ((unit & 0xF800) != 0xD800) continue;
      const bool paired = unit < 0xDC00 && i + 3 < size && m_bytes[body + i + 2] >> 2 == 0x37;
      if (!paired) return fail(body + i, "half of a surrogate pair in text");
      i += 2;
    }
  }

  void openContainer(quint64 object, size_t at, unsigned lists) {
    Frame frame;
    frame.object = object;
    const quint64 count = length(at, frame.references);
    if (m_problem) return;
    if (count > m_size) return fail(at, "an object reaches beyond the objects");
    frame.count = count * lists;
    frame.keys = lists == 2 ? count : 0;
    needBytes(at, frame.references, frame.count * m_referenceWidth);
    if (m_problem) return;
    m_objects[object].open = true;
    m_stack.push_back(frame);
  }

  PlistBinaryLayout& m_layout;
  const uchar* m_bytes;
  size_t m_size;
  size_t m_table = 0;
  unsigned m_referenceWidth = 0;
  std::vector<Object> m_objects;
  std::vector<Frame> m_stack;
  std::optional<PlistProblem> m_problem;
};

}  // namespace

std::optional<PlistProblem> checkPlistBinary(QByteArrayView bytes, PlistBinaryLayout& layout) {
  layout.bytes = reinterpret_cast<const uchar*>(bytes.data());
  layout.size = static_cast<size_t>(bytes.size());
  return BinaryCheck(layout).run();
}

}  // namespace foundation::detail
