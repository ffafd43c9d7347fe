#include "foundation/detail/PlistXmlBuilder.h"

#include <cstring>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/Base64.h"
#include "foundation/TextPool.h"
#include "foundation/detail/PlistScalarReading.h"

namespace foundation::detail {

namespace {

// Relies on all that the check made sure of: tags match, names are known, nesting is bounded.
class XmlBuilder {
 public:
  explicit XmlBuilder(std::string_view text) : m_text(text) {}

  PropertyValue run() {
    nextTag();  // the plist element
    return value(nextTag());
  }

 private:
  using Entry = PropertyDictionary::Entry;
  struct Tag {
    const char* name = nullptr;  // an end tag's begins with a slash
    bool closed = false;         // <name/>
    bool isEnd() const { return *name == '/'; }
  };

  // The position of the byte, which is there.
  size_t find(char c, size_t from) const {
    const char* start = m_text.data();
    return static_cast<size_t>(
        static_cast<const char*>(std::memchr(start + from, c, m_text.size() - from)) - start);
  }
  bool startsWith(std::string_view prefix) const {
    return m_text.compare(m_at, prefix.size(), prefix) == 0;
  }
  void skipPast(std::string_view end) { m_at = m_text.find(end, m_at) + end.size(); }

  Tag nextTag() {
    for (;;) {
      m_at = find('<', m_at);
      if (m_text[m_at + 1] == '?') {
        skipPast("?>");
      } else if (startsWith("<!--")) {
        skipPast("-->");
      } else if (m_text[m_at + 1] == '!') {
        skipPast(">");
      } else {
        const size_t end = find('>', m_at);
        const Tag tag{m_text.data() + m_at + 1, m_text[end - 1] == '/'};
        m_at = end + 1;
        return tag;
      }
    }
  }

  PropertyValue value(Tag tag) {
    switch (*tag.name) {
      case 'a':
        return array(tag);
      case 's':
        return text(tag);
      case 'i':
        return readPlistInteger(content(tag));
      case 'r':
        return readPlistReal(content(tag));
      case 't':
      case 'f':
        content(tag);
        return *tag.name == 't';
      default:
        if (tag.name[1] == 'i') return dictionary(tag);
        if (tag.name[3] == 'e') return readPlistDate(content(tag));
        return bytesFromSoundBase64(content(tag));
    }
  }

  // The text between the tags of a value without markup inside; moves behind the end tag.
  std::string_view content(Tag tag) {
    if (tag.closed) return {};
    const size_t start = m_at;
    const size_t end = find('<', start);
    m_at = find('>', end) + 1;
    return m_text.substr(start, end - start);
  }

  QString text(Tag tag) {
    if (tag.closed) return QString(QLatin1String(""));
    const size_t end = find('<', m_at);
    const std::string_view plain = m_text.substr(m_at, end - m_at);
    if (m_text[end + 1] != '/' || plain.find('&') != std::string_view::npos) return mixedText();
    m_at = find('>', end) + 1;
    return m_texts.text(plain);
  }

  // Text with entities, comments or CDATA sections.
  QString mixedText() {
    std::string out;
    for (;;) {
      const size_t end = find('<', m_at);
      appendWithoutEntities(m_text.substr(m_at, end - m_at), out);
      m_at = end;
      if (m_text[end + 1] == '/') break;
      const bool comment = startsWith("<!--");
      skipPast(comment ? "-->" : "]]>");
      constexpr size_t kOpening = 9;  // <![CDATA[
      if (!comment) out.append(m_text.substr(end + kOpening, m_at - 3 - end - kOpening));
    }
    m_at = find('>', m_at) + 1;
    return m_texts.text(out);
  }

  // Items wait on a stack until their number is known, so every list is allocated once.
  template <typename T>
  static QList<T> takeFrom(std::vector<T>& waiting, size_t first) {
    QList<T> out;
    out.reserve(static_cast<qsizetype>(waiting.size() - first));
    for (size_t i = first; i < waiting.size(); ++i) out.emplaceBack(std::move(waiting[i]));
    waiting.resize(first);
    return out;
  }

  PropertyValue array(Tag tag) {
    const size_t first = m_items.size();
    if (!tag.closed)
      for (Tag next = nextTag(); !next.isEnd(); next = nextTag()) m_items.push_back(value(next));
    return takeFrom(m_items, first);
  }

  PropertyValue dictionary(Tag tag) {
    const size_t first = m_entries.size();
    if (!tag.closed)
      for (Tag next = nextTag(); !next.isEnd(); next = nextTag()) {
        QString key = text(next);
        PropertyValue held = value(nextTag());
        m_entries.emplace_back(std::move(key), std::move(held));
      }
    PropertyDictionary out = PropertyDictionary::fromEntries(takeFrom(m_entries, first));
    if (out.size() == 1 && isUid(*out.begin()))
      return PropertyValue::Uid{out.begin()->second.toExactInteger().bits};
    return out;
  }

  static bool isUid(const Entry& entry) {
    return entry.second.type() == PropertyValue::Type::Integer && entry.second.toInteger() >= 0 &&
           entry.first == QLatin1String("CF$UID");
  }

  std::string_view m_text;
  size_t m_at = 0;
  std::vector<PropertyValue> m_items;
  std::vector<Entry> m_entries;
  TextPool m_texts;
};

}  // namespace

PropertyValue buildCheckedXml(QByteArrayView text) {
  return XmlBuilder({text.data(), static_cast<size_t>(text.size())}).run();
}

}  // namespace foundation::detail
