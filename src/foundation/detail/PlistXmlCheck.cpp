#include "foundation/detail/PlistXmlCheck.h"

#include <QUtf8StringView>
#include <array>
#include <cstring>
#include <vector>

#include "foundation/detail/PlistScalarSyntax.h"

namespace foundation::detail {

namespace {

enum class Element : quint8 {
  Plist,
  Dict,
  Array,
  Key,
  String,
  Integer,
  Real,
  Date,
  Data,
  True,
  False,
  Unknown
};

Element elementNamed(std::string_view name) {
  switch (name.empty() ? 0 : name.front()) {
    case 'k':
      return name == "key" ? Element::Key : Element::Unknown;
    case 's':
      return name == "string" ? Element::String : Element::Unknown;
    case 'i':
      return name == "integer" ? Element::Integer : Element::Unknown;
    case 'r':
      return name == "real" ? Element::Real : Element::Unknown;
    case 'a':
      return name == "array" ? Element::Array : Element::Unknown;
    case 't':
      return name == "true" ? Element::True : Element::Unknown;
    case 'f':
      return name == "false" ? Element::False : Element::Unknown;
    case 'p':
      return name == "plist" ? Element::Plist : Element::Unknown;
    case 'd':
      if (name == "dict") return Element::Dict;
      if (name == "data") return Element::Data;
      return name == "date" ? Element::Date : Element::Unknown;
    default:
      return Element::Unknown;
  }
}

bool isSpace(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

class XmlCheck {
 public:
  explicit XmlCheck(std::string_view text) : m_text(text) {}

  std::optional<PlistProblem> run() {
    while (!m_problem) {
      skipSpace();
      if (m_at >= m_text.size()) break;
      if (m_text[m_at] != '<') {
        fail("text where an element should stand");
      } else {
        markup();
      }
    }
    if (!m_problem && m_stack.empty() && !m_rootSeen) fail("there is no plist element");
    if (!m_problem && !m_stack.empty()) fail("the text ends inside an element");
    return std::move(m_problem);
  }

 private:
  struct Open {
    Element element;
    bool expectsValue = false;  // dictionary: a key was read and its value was not
    bool filled = false;        // plist: its one value was read
  };

  void fail(const char* reason) { failAt(m_at, reason); }
  void failAt(size_t at, const char* reason) {
    if (!m_problem)
      m_problem = PlistProblem{QString::fromLatin1(reason), static_cast<qsizetype>(at)};
  }
  void skipSpace() {
    while (m_at < m_text.size() && isSpace(m_text[m_at])) ++m_at;
  }
  bool startsWith(std::string_view prefix) const {
    return m_text.substr(m_at, prefix.size()) == prefix;
  }
  void skipPast(std::string_view end, const char* reason) {
    const size_t found = m_text.find(end, m_at);
    if (found == std::string_view::npos) return fail(reason);
    m_at = found + end.size();
  }

  void markup() {
    if (startsWith("</")) return closeElement();
    if (startsWith("<!--")) return skipPast("-->", "a comment is not closed");
    if (startsWith("<?")) return instruction();
    if (startsWith("<!DOCTYPE")) return documentType();
    if (startsWith("<!")) return fail("unknown markup");
    openElement();
  }

  void instruction() {
    const size_t start = m_at;
    skipPast("?>", "a processing instruction is not closed");
    if (m_problem) return;
    if (!m_stack.empty() || m_rootSeen) return failAt(start, "misplaced processing instruction");
    const std::string_view body = m_text.substr(start, m_at - start);
    const size_t found = body.find("encoding=");
    if (found == std::string_view::npos || found + 10 >= body.size()) return;
    const std::string_view name =
        body.substr(found + 10, body.find(body[found + 9], found + 10) - found - 10);
    const QByteArray lower = QByteArray(name.data(), static_cast<qsizetype>(name.size())).toLower();
    if (lower != "utf-8" && lower != "utf8" && lower != "us-ascii" && lower != "utf-16")
      failAt(start + found, "the text encoding is not supported");
  }

  // Entity declarations are how a small XML text grows without bound; property lists need none.
  void documentType() {
    const size_t end = m_text.find_first_of("[>", m_at);
    if (!m_stack.empty() || m_rootSeen) return fail("misplaced document type");
    if (end == std::string_view::npos) return fail("the document type is not closed");
    if (m_text[end] == '[') return failAt(end, "entity declarations are not allowed");
    m_at = end + 1;
  }

  void openElement() {
    const size_t start = m_at;
    const size_t end = m_text.find('>', m_at);
    if (end == std::string_view::npos) return fail("an element is not closed");
    std::string_view name = m_text.substr(start + 1, end - start - 1);
    const bool closed = !name.empty() && name.back() == '/';
    if (closed) name.remove_suffix(1);
    while (!name.empty() && isSpace(name.back())) name.remove_suffix(1);
    if (name.substr(0, 6) == "plist " && name.find('<') == std::string_view::npos) name = "plist";
    const Element element = elementNamed(name);
    if (element == Element::Unknown) return fail("unknown element");
    if (!mayStand(element)) return;
    if (++m_nodes > kMaxPlistNodes) return fail("too many values");
    m_at = end + 1;
    if (element == Element::Plist || element == Element::Dict || element == Element::Array) {
      if (closed && element == Element::Plist) return failAt(start, "the plist element is empty");
      if (closed) return;
      if (m_stack.size() >= kMaxPlistDepth) return failAt(start, "nested too deeply");
      m_stack.push_back({element});
    } else if (closed) {
      checkContent(element, start, {});
    } else {
      leafContent(element, start);
    }
  }

  // Keeps the order key, value in dictionaries and lets the root hold one value.
  bool mayStand(Element element) {
    if (m_stack.empty()) {
      if (element != Element::Plist || m_rootSeen) fail("an element outside the plist element");
      m_rootSeen = true;
      return !m_problem;
    }
    Open& parent = m_stack.back();
    if (element == Element::Plist) {
      fail("a plist element inside another");
    } else if (parent.element == Element::Dict) {
      if ((element == Element::Key) == parent.expectsValue)
        fail(parent.expectsValue ? "a key has no value" : "a value has no key");
      parent.expectsValue = !parent.expectsValue;
    } else if (element == Element::Key) {
      fail("a key outside a dictionary");
    } else if (parent.element == Element::Plist) {
      if (parent.filled) fail("more than one value in the plist element");
      parent.filled = true;
    }
    return !m_problem;
  }

  void closeElement() {
    const size_t end = m_text.find('>', m_at);
    if (end == std::string_view::npos) return fail("an element is not closed");
    const Element element = elementNamed(m_text.substr(m_at + 2, end - m_at - 2));
    if (m_stack.empty() || m_stack.back().element != element)
      return fail("an end tag without its start");
    if (m_stack.back().expectsValue) return fail("a key has no value");
    if (element == Element::Plist && !m_stack.back().filled)
      return fail("the plist element is empty");
    m_stack.pop_back();
    m_at = end + 1;
  }

  // Text, comments and CDATA up to the end tag of the element that was opened at start.
  void leafContent(Element element, size_t start) {
    const bool isText = element == Element::String || element == Element::Key;
    while (!m_problem) {
      const void* found = std::memchr(m_text.data() + m_at, '<', m_text.size() - m_at);
      if (!found) return failAt(start, "an element is not closed");
      const size_t end = static_cast<size_t>(static_cast<const char*>(found) - m_text.data());
      const std::string_view content = m_text.substr(m_at, end - m_at);
      const size_t contentAt = m_at;
      m_at = end;
      if (startsWith("</")) {
        checkContent(element, contentAt, content);
        const size_t close = m_text.find('>', end);
        if (close == std::string_view::npos ||
            elementNamed(m_text.substr(end + 2, close - end - 2)) != element)
          return fail("an end tag without its start");
        m_at = close + 1;
        return;
      }
      if (!isText) return fail("markup inside a plain value");
      checkText(contentAt, content, true);
      passMarkupInText();
    }
  }

  void passMarkupInText() {
    const size_t start = m_at;
    if (startsWith("<!--")) {
      skipPast("-->", "a comment is not closed");
    } else if (startsWith("<![CDATA[")) {
      skipPast("]]>", "a CDATA section is not closed");
      if (!m_problem) checkText(start, m_text.substr(start, m_at - start), false);
    } else {
      fail("an element inside text");
    }
  }

  void checkContent(Element element, size_t at, std::string_view content) {
    switch (element) {
      case Element::Key:
      case Element::String:
        return checkText(at, content, true);
      case Element::Integer:
        return isPlistInteger(content) ? void() : failAt(at, "not a 64-bit integer");
      case Element::Real:
        return isPlistReal(content) ? void() : failAt(at, "not a number");
      case Element::Date:
        return isPlistDate(content) ? void() : failAt(at, "not a date");
      case Element::Data:
        return isBase64(content) ? void() : failAt(at, "damaged base64 data");
      default:
        return content.empty() ? void() : failAt(at, "content inside a boolean");
    }
  }

  void checkText(size_t at, std::string_view text, bool entities) {
    const quint8 seen = textTraits(text);
    if (seen & kControlCharacter) return failAt(at, "a control character in text");
    if ((seen & kNotAscii) &&
        !QUtf8StringView(text.data(), static_cast<qsizetype>(text.size())).isValidUtf8())
      return failAt(at, "text that is not UTF-8");
    if (!(seen & kAmpersand) || !entities) return;
    for (size_t i = text.find('&'); i != std::string_view::npos; i = text.find('&', i + 1))
      if (!startsWithEntity(text.substr(i))) return failAt(at + i, "an unknown entity");
  }

  std::string_view m_text;
  size_t m_at = 0;
  std::vector<Open> m_stack;
  bool m_rootSeen = false;
  quint64 m_nodes = 0;
  std::optional<PlistProblem> m_problem;
};

}  // namespace

std::optional<PlistProblem> checkPlistXml(QByteArrayView text) {
  return XmlCheck({text.data(), static_cast<size_t>(text.size())}).run();
}

}  // namespace foundation::detail
