#include "support/PlistOracle.h"

#include <locale.h>
#include <plist/plist.h>

#include <QTimeZone>
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <utility>

#include "foundation/TextPool.h"

namespace support {

using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::PropertyValue;

namespace {

constexpr qint64 kReferenceDate = 978307200;  // 2001-01-01 in seconds since 1970

struct FreePlist {
  void operator()(void* node) const { plist_free(node); }
};
using PlistPointer = std::unique_ptr<void, FreePlist>;

struct FreeMemory {
  void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using CPointer = std::unique_ptr<T, FreeMemory>;

// The parser reads reals with the thread's locale; a decimal comma must not change files.
class CLocale {
 public:
  CLocale() : m_locale(newlocale(LC_ALL_MASK, "C", nullptr)), m_before(uselocale(m_locale)) {}
  ~CLocale() {
    uselocale(m_before);
    freelocale(m_locale);
  }
  Q_DISABLE_COPY_MOVE(CLocale)

 private:
  locale_t m_locale;
  locale_t m_before;
};

QString text(const char* bytes, size_t size) {
  return foundation::textFromUtf8({bytes, size});
}

class TreeReader {
 public:
  // In XML a reference of a keyed archive is spelled as a dictionary with this one key.
  explicit TreeReader(bool uidDictionaries) : m_uidDictionaries(uidDictionaries) {}

  PropertyValue value(plist_t node) {
    switch (plist_get_node_type(node)) {
      case PLIST_BOOLEAN:
        return boolean(node);
      case PLIST_UINT:
        return integer(node);
      case PLIST_REAL:
        return real(node);
      case PLIST_STRING:
        return string(node);
      case PLIST_DATA:
        return data(node);
      case PLIST_DATE:
        return date(node);
      case PLIST_UID:
        return uid(node);
      case PLIST_ARRAY:
        return array(node);
      case PLIST_DICT:
        return dictionary(node);
      default:
        return {};
    }
  }

 private:
  static PropertyValue boolean(plist_t node) {
    uint8_t value = 0;
    plist_get_bool_val(node, &value);
    return value != 0;
  }

  // The parser keeps the sign in a width that it does not show: a node made from the same bits is
  // always signed, so only an unsigned number differs from it.
  static PropertyValue integer(plist_t node) {
    uint64_t bits = 0;
    plist_get_uint_val(node, &bits);
    if (bits <= static_cast<uint64_t>(std::numeric_limits<qint64>::max()))
      return static_cast<qint64>(bits);
    const PlistPointer negative(plist_new_uint(bits));
    if (plist_compare_node_value(node, negative.get())) return static_cast<qint64>(bits);
    return static_cast<quint64>(bits);
  }

  static PropertyValue real(plist_t node) {
    double value = 0;
    plist_get_real_val(node, &value);
    return value;
  }

  static PropertyValue string(plist_t node) {
    uint64_t size = 0;
    const char* bytes = plist_get_string_ptr(node, &size);
    return bytes ? text(bytes, static_cast<size_t>(size)) : QString(QLatin1String(""));
  }

  static PropertyValue data(plist_t node) {
    uint64_t size = 0;
    const char* bytes = plist_get_data_ptr(node, &size);
    return bytes ? QByteArray(bytes, static_cast<qsizetype>(size)) : QByteArray("");
  }

  static PropertyValue date(plist_t node) {
    int32_t seconds = 0;
    int32_t micro = 0;
    plist_get_date_val(node, &seconds, &micro);
    // Seconds do not fit for dates before 1933 or after 2068; these are read from their text.
    if (seconds <= std::numeric_limits<int32_t>::min() + 1 ||
        seconds >= std::numeric_limits<int32_t>::max() - 1)
      return distantDate(node);
    const qint64 fraction = (seconds < 0 ? -1 : 1) * ((micro + 500) / 1000);
    return QDateTime::fromMSecsSinceEpoch((kReferenceDate + seconds) * 1000 + fraction,
                                          QTimeZone::utc());
  }

  static PropertyValue distantDate(plist_t node) {
    char* raw = nullptr;
    uint32_t size = 0;
    plist_to_xml(node, &raw, &size);
    const CPointer<char> xml(raw);
    const QByteArrayView text(raw, size);
    const qsizetype at = text.indexOf("<date>");
    const qsizetype end = text.indexOf("Z</date>");
    if (at < 0 || end < at) return {};
    // The library does not pad years below 1000.
    const QByteArray digits =
        text.sliced(at + 6, end - at - 6).toByteArray().rightJustified(19, '0');
    QDateTime out =
        QDateTime::fromString(QString::fromLatin1(digits), QStringLiteral("yyyy-MM-ddTHH:mm:ss"));
    out.setTimeZone(QTimeZone::utc());
    return out;
  }

  static PropertyValue uid(plist_t node) {
    uint64_t index = 0;
    plist_get_uid_val(node, &index);
    return PropertyValue::Uid{index};
  }

  PropertyValue array(plist_t node) {
    PropertyArray out;
    out.reserve(plist_array_get_size(node));
    plist_array_iter rawIterator = nullptr;
    plist_array_new_iter(node, &rawIterator);
    const CPointer<void> iterator(rawIterator);
    for (;;) {
      plist_t item = nullptr;
      plist_array_next_item(node, iterator.get(), &item);
      if (!item) break;
      out.emplaceBack(value(item));
    }
    return out;
  }

  PropertyValue dictionary(plist_t node) {
    QList<PropertyDictionary::Entry> entries;
    entries.reserve(plist_dict_get_size(node));
    plist_dict_iter rawIterator = nullptr;
    plist_dict_new_iter(node, &rawIterator);
    const CPointer<void> iterator(rawIterator);
    for (;;) {
      char* rawKey = nullptr;
      plist_t item = nullptr;
      plist_dict_next_item(node, iterator.get(), &rawKey, &item);
      const CPointer<char> key(rawKey);
      if (!item) break;
      entries.emplaceBack(text(rawKey, std::strlen(rawKey)), value(item));
    }
    if (m_uidDictionaries && entries.size() == 1 && isUid(entries.first()))
      return PropertyValue::Uid{entries.first().second.toExactInteger().bits};
    return PropertyDictionary::fromEntries(std::move(entries));
  }

  static bool isUid(const PropertyDictionary::Entry& entry) {
    return entry.first == QLatin1String("CF$UID") &&
           entry.second.type() == PropertyValue::Type::Integer && entry.second.toInteger() >= 0;
  }

  bool m_uidDictionaries;
};

bool sameDate(const QDateTime& ours, const QDateTime& library) {
  const qint64 reference = ours.toMSecsSinceEpoch() - kReferenceDate * 1000;
  const int year = ours.date().year();
  const bool wholeSeconds = year < 1934 || year > 2067;
  const bool signLost = reference < 0 && reference > -1000;
  const qint64 tolerance = signLost ? 2000 : wholeSeconds ? 1000 : 1;
  return qAbs(ours.msecsTo(library)) <= tolerance;
}

// The library looks for the ends of these beyond a quotation mark that is not closed.
bool hasOpenQuote(QByteArrayView xml) {
  constexpr std::pair<const char*, const char*> kMarkup[] = {
      {"<?", "?>"}, {"<!DOCTYPE", ">"}, {"<plist", ">"}};
  for (const auto& [start, end] : kMarkup)
    for (qsizetype at = xml.indexOf(start); at >= 0; at = xml.indexOf(start, at + 1))
      if (xml.first(qMax(at, xml.indexOf(end, at))).sliced(at).count('"') % 2 != 0) return true;
  return false;
}

}  // namespace

std::optional<PropertyValue> readWithLibrary(QByteArrayView bytes) {
  if (bytes.startsWith("\xFE\xFF") || bytes.startsWith("\xFF\xFE")) return std::nullopt;
  if (bytes.startsWith("\xEF\xBB\xBF")) bytes = bytes.sliced(3);
  const bool binary = bytes.startsWith("bplist");
  if (!binary && hasOpenQuote(bytes)) return std::nullopt;
  plist_t root = nullptr;
  {
    const CLocale locale;
    const auto size = static_cast<uint32_t>(bytes.size());
    if (binary) {
      plist_from_bin(bytes.data(), size, &root);
    } else {
      plist_from_xml(bytes.data(), size, &root);
    }
  }
  const PlistPointer tree(root);
  if (!root) return std::nullopt;
  return TreeReader(!binary).value(root);
}

bool sameButForDates(const PropertyValue& ours, const PropertyValue& library) {
  using Type = PropertyValue::Type;
  if (ours.type() != library.type()) return false;
  if (ours.type() == Type::Date) return sameDate(ours.toDate(), library.toDate());
  if (ours.isArray())
    return std::equal(ours.array().begin(), ours.array().end(), library.array().begin(),
                      library.array().end(), sameButForDates);
  if (!ours.isDictionary()) return ours == library;
  const auto sameEntry = [](const auto& a, const auto& b) {
    return a.first == b.first && sameButForDates(a.second, b.second);
  };
  return std::equal(ours.dictionary().begin(), ours.dictionary().end(),
                    library.dictionary().begin(), library.dictionary().end(), sameEntry);
}

}  // namespace support
