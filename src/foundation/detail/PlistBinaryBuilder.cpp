#include "foundation/detail/PlistBinaryBuilder.h"

#include <bit>

#include "foundation/TextPool.h"
#include "foundation/detail/PlistScalarReading.h"

namespace foundation::detail {

namespace {

class BinaryBuilder {
 public:
  explicit BinaryBuilder(const PlistBinaryLayout& layout)
      : m_layout(layout), m_places(layout.shared.size(), kNotBuilt) {}

  PropertyValue value(quint64 object) {
    if (!m_layout.shared[object]) return build(object);
    return sharedValue(object);
  }

 private:
  static constexpr quint32 kNotBuilt = ~quint32(0);

  const PropertyValue& sharedValue(quint64 object) {
    if (m_places[object] == kNotBuilt) {
      PropertyValue built = build(object);
      m_places[object] = static_cast<quint32>(m_built.size());
      m_built.push_back(std::move(built));
    }
    return m_built[m_places[object]];
  }

  QString key(quint64 object) {
    if (!m_layout.shared[object]) return text(static_cast<size_t>(m_layout.offsetOf(object)));
    return sharedValue(object).toString();
  }

  PropertyValue build(quint64 object) {
    const auto at = static_cast<size_t>(m_layout.offsetOf(object));
    const unsigned low = m_layout.bytes[at] & 0xF;
    switch (m_layout.bytes[at] >> 4) {
      case 0x0:
        return low == 9;
      case 0x1:
        return integer(at, low);
      case 0x2:
        return real(at, low);
      case 0x3:
        return dateFromReference(std::bit_cast<double>(m_layout.number(at + 1, 8)));
      case 0x4:
        return data(at);
      case 0x5:
      case 0x6:
        return text(at);
      case 0x8:
        return PropertyValue::Uid{m_layout.number(at + 1, low + 1)};
      case 0xA:
        return array(at);
      default:
        return dictionary(at);
    }
  }

  // Up to four bytes are unsigned, eight are signed; sixteen hold what is beyond the signed range.
  PropertyValue integer(size_t at, unsigned low) const {
    if (low == 4) return m_layout.number(at + 9, 8);
    return static_cast<qint64>(m_layout.number(at + 1, 1U << low));
  }

  PropertyValue real(size_t at, unsigned low) const {
    if (low == 3) return std::bit_cast<double>(m_layout.number(at + 1, 8));
    const auto bits = static_cast<quint32>(m_layout.number(at + 1, 4));
    return PropertyValue::fromFloat(std::bit_cast<float>(bits));
  }

  QByteArray data(size_t at) const {
    size_t body = 0;
    const auto size = static_cast<qsizetype>(m_layout.length(at, body));
    return {reinterpret_cast<const char*>(m_layout.bytes + body), size};
  }

  QString text(size_t at) {
    size_t body = 0;
    const quint64 count = m_layout.length(at, body);
    if (m_layout.bytes[at] >> 4 == 0x5)
      return m_texts.text({reinterpret_cast<const char*>(m_layout.bytes + body), count});
    if (count == 0) return QString(QLatin1String(""));
    QString out(static_cast<qsizetype>(count), Qt::Uninitialized);
    qFromBigEndian<char16_t>(m_layout.bytes + body, out.size(), out.data());
    return out;
  }

  quint64 reference(size_t list, quint64 index) const {
    const unsigned width = m_layout.referenceWidth;
    return m_layout.number(list + static_cast<size_t>(index) * width, width);
  }

  PropertyArray array(size_t at) {
    size_t list = 0;
    const quint64 count = m_layout.length(at, list);
    PropertyArray out;
    out.reserve(static_cast<qsizetype>(count));
    for (quint64 i = 0; i < count; ++i) out.emplaceBack(value(reference(list, i)));
    return out;
  }

  PropertyDictionary dictionary(size_t at) {
    size_t list = 0;
    const quint64 count = m_layout.length(at, list);
    QList<PropertyDictionary::Entry> entries;
    entries.reserve(static_cast<qsizetype>(count));
    for (quint64 i = 0; i < count; ++i)
      entries.emplaceBack(key(reference(list, i)), value(reference(list, count + i)));
    return PropertyDictionary::fromEntries(std::move(entries));
  }

  const PlistBinaryLayout& m_layout;
  std::vector<quint32> m_places;  // of shared objects in m_built
  std::vector<PropertyValue> m_built;
  TextPool m_texts;
};

}  // namespace

PropertyValue buildCheckedBinary(const PlistBinaryLayout& layout) {
  return BinaryBuilder(layout).value(layout.root);
}

}  // namespace foundation::detail
