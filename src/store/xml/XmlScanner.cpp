#include "store/xml/XmlScanner.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace store::xml {

namespace {

constexpr size_t maxAttributes = 64;

bool isSpace(char c) {
  return c == ' ' || c == '\n' || c == '\t' || c == '\r';
}

bool endsName(char c) {
  return isSpace(c) || c == '>' || c == '/' || c == '=' || c == '<' || c == '"' || c == '\'' ||
         c == '&';
}

QString quoted(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(std::min<size_t>(text.size(), 80)));
}

void appendUtf8(quint32 code, std::string& out) {
  const QString text = QString::fromUcs4(reinterpret_cast<const char32_t*>(&code), 1);
  out += code == 0xFEFF ? std::string("\xEF\xBB\xBF") : text.toStdString();
}

/// A reference without "&" and ";".
bool appendReferenced(std::string_view name, std::string& out) {
  if (name == "amp") return out += '&', true;
  if (name == "lt") return out += '<', true;
  if (name == "gt") return out += '>', true;
  if (name == "quot") return out += '"', true;
  if (name == "apos") return out += '\'', true;
  if (name.size() < 2 || name[0] != '#') return false;
  const bool hex = name[1] == 'x';
  name.remove_prefix(hex ? 2 : 1);
  quint32 code = 0;
  const auto end = std::from_chars(name.data(), name.data() + name.size(), code, hex ? 16 : 10);
  const bool isSurrogate = code >= 0xD800 && code < 0xE000;
  if (end.ec != std::errc() || end.ptr != name.data() + name.size() || isSurrogate ||
      code > 0x10FFFF || (code < ' ' && code != '\t' && code != '\n' && code != '\r'))
    return false;
  appendUtf8(code, out);
  return true;
}

}  // namespace

BytesProblem problemWithBytes(QByteArrayView bytes) {
  if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF"))
    return {QStringLiteral("it is UTF-16 and not UTF-8")};
  const auto isForbidden = [](char c) {
    return static_cast<quint8>(c) < ' ' && c != '\t' && c != '\n' && c != '\r';
  };
  const auto forbidden = std::find_if(bytes.begin(), bytes.end(), isForbidden);
  if (forbidden != bytes.end())
    return {QStringLiteral("a control character, which XML does not allow"),
            size_t(forbidden - bytes.begin())};
  if (bytes.isValidUtf8()) return {};
  qsizetype good = 0;  // lines are independent of each other
  for (qsizetype end = 0; good < bytes.size(); good = end) {
    const auto* next = static_cast<const char*>(
        std::memchr(bytes.data() + good, '\n', size_t(bytes.size() - good)));
    end = next ? next - bytes.data() + 1 : bytes.size();
    if (!bytes.sliced(good, end - good).isValidUtf8()) break;
  }
  return {QStringLiteral("it is not valid UTF-8"), size_t(good)};
}

void XmlScanner::fail(const QString& problem) {
  failAt(m_at, problem);
}

void XmlScanner::failAt(size_t position, const QString& problem) {
  if (failed()) return;
  m_problem = problem;
  m_at = std::min(position, m_bytes.size());
}

bool XmlScanner::decode(std::string_view raw, bool isAttribute, std::string& out) {
  out.clear();
  for (size_t i = 0; i < raw.size(); ++i) {
    const char c = raw[i];
    if (c == '&') {
      const size_t end = raw.find(';', i);
      if (end == std::string_view::npos) return false;
      if (!appendReferenced(raw.substr(i + 1, end - i - 1), out)) return false;
      i = end;
    } else if (c == '\r') {
      if (i + 1 < raw.size() && raw[i + 1] == '\n') ++i;
      out += isAttribute ? ' ' : '\n';
    } else {
      out += isAttribute && isSpace(c) ? ' ' : c;
    }
  }
  return true;
}

void XmlScanner::skipSpace() {
  while (m_at < m_bytes.size() && isSpace(m_bytes[m_at])) ++m_at;
}

std::string_view XmlScanner::readName() {
  const size_t begin = m_at;
  while (m_at < m_bytes.size() && !endsName(m_bytes[m_at])) ++m_at;
  return m_bytes.substr(begin, m_at - begin);
}

bool XmlScanner::passOver(std::string_view opening, std::string_view closing) {
  if (!startsWith(opening)) return false;
  const size_t end = m_bytes.find(closing, m_at + opening.size());
  if (end == std::string_view::npos)
    fail(QStringLiteral("a \"%1\" has no end").arg(quoted(opening)));
  else
    m_at = end + closing.size();
  return true;
}

/// Stands at "<" or at the end of the file; passes over one comment or instruction.
XmlScanner::Markup XmlScanner::markup() {
  if (m_at >= m_bytes.size()) return Markup::EndOfFile;
  const char second = m_at + 1 < m_bytes.size() ? m_bytes[m_at + 1] : ' ';
  if (second == '/') return Markup::End;
  if (second == '?' && passOver("<?", "?>")) return Markup::Other;
  if (second != '!') return Markup::Start;
  if (passOver("<!--", "-->")) return Markup::Other;
  if (startsWith("<!DOCTYPE"))
    fail(QStringLiteral("a document type declaration, which is not allowed here"));
  else
    fail(QStringLiteral("a declaration that does not belong here"));
  return Markup::Other;
}

bool XmlScanner::readStart() {
  m_start = m_at++;
  m_name = readName();
  if (m_name.empty()) return fail(QStringLiteral("a \"<\" without a name behind it")), false;
  if (m_open.size() >= size_t(maxDepth))
    return fail(QStringLiteral("elements are nested too deeply")), false;
  if (++m_elements > maxElements) return fail(QStringLiteral("there are too many elements")), false;
  m_open.push_back(m_name);
  return readAttributes();
}

bool XmlScanner::readAttributes() {
  m_attributes.clear();
  for (;;) {
    const size_t before = m_at;
    skipSpace();
    if (m_at >= m_bytes.size())
      return fail(QStringLiteral("the file ends within <%1>").arg(quoted(m_name))), false;
    m_isEmpty = startsWith("/>");
    if (m_isEmpty || m_bytes[m_at] == '>') {
      m_at += m_isEmpty ? 2 : 1;
      return true;
    }
    Attribute attribute{readName(), {}};
    skipSpace();
    const bool hasValue = m_at + 1 < m_bytes.size() && m_bytes[m_at] == '=';
    if (hasValue) ++m_at;
    skipSpace();
    const char quote = m_at < m_bytes.size() ? m_bytes[m_at] : ' ';
    const bool isQuoted = quote == '"' || quote == '\'';
    const size_t end = isQuoted ? m_bytes.find(quote, m_at + 1) : std::string_view::npos;
    if (attribute.name.empty() || before == m_at || !hasValue || end == std::string_view::npos)
      return failAt(before, QStringLiteral("<%1> is damaged").arg(quoted(m_name))), false;
    attribute.raw = m_bytes.substr(m_at + 1, end - m_at - 1);
    const bool isTwice =
        std::any_of(m_attributes.begin(), m_attributes.end(),
                    [&](const Attribute& other) { return other.name == attribute.name; });
    if (isTwice || attribute.raw.find('<') != std::string_view::npos ||
        m_attributes.size() >= maxAttributes)
      return failAt(before, QStringLiteral("<%1> is damaged").arg(quoted(m_name))), false;
    m_attributes.push_back(attribute);
    m_at = end + 1;
  }
}

bool XmlScanner::readEnd() {
  const size_t begin = m_at;
  m_at += 2;
  const std::string_view name = readName();
  skipSpace();
  const bool isClosed = m_at < m_bytes.size() && m_bytes[m_at] == '>';
  if (!isClosed || m_open.empty() || m_open.back() != name) {
    const QString expected = m_open.empty() ? QString() : quoted(m_open.back());
    return failAt(
               begin,
               QStringLiteral("</%1> stands where </%2> is expected").arg(quoted(name), expected)),
           false;
  }
  ++m_at;
  leave();
  return true;
}

void XmlScanner::leave() {
  m_isEmpty = false;
  m_open.pop_back();
}

bool XmlScanner::enterRoot() {
  if (startsWith("\xEF\xBB\xBF")) m_at = 3;
  for (;;) {
    skipSpace();
    if (failed()) return false;
    if (m_at >= m_bytes.size() || m_bytes[m_at] != '<')
      return fail(m_bytes.empty() ? QStringLiteral("the file is empty")
                                  : QStringLiteral("it is not XML")),
             false;
    switch (markup()) {
      case Markup::Start:
        return readStart();
      case Markup::Other:
        break;
      default:
        return fail(QStringLiteral("it is not XML")), false;
    }
  }
}

bool XmlScanner::nextChild() {
  if (failed()) return false;
  if (m_isEmpty) return leave(), false;
  for (;;) {
    skipSpace();
    if (m_at < m_bytes.size() && m_bytes[m_at] != '<')
      return fail(QStringLiteral("there is text in <%1>, where only elements belong")
                      .arg(quoted(m_open.back()))),
             false;
    switch (markup()) {
      case Markup::Start:
        return readStart();
      case Markup::End:
        return readEnd(), false;
      case Markup::EndOfFile:
        return fail(QStringLiteral("the file ends within <%1>").arg(quoted(m_open.back()))), false;
      case Markup::Other:
        if (failed()) return false;
    }
  }
}

std::string_view XmlScanner::readText(bool& hasElements) {
  hasElements = false;
  if (failed()) return {};
  if (m_isEmpty) return leave(), std::string_view();
  const size_t depth = m_open.size();
  std::string_view whole;  // while it is one piece that can be used as it is
  m_text.clear();
  std::string piece;
  const auto add = [&](std::string_view text) {
    if (!whole.empty()) m_text += std::exchange(whole, {});
    if (m_text.empty())
      whole = text;
    else
      m_text += text;
  };
  while (!failed()) {
    const std::string_view raw =
        m_bytes.substr(m_at, std::min(m_bytes.find('<', m_at), m_bytes.size()) - m_at);
    if (!raw.empty() && m_open.size() == depth) {
      if (raw.find('&') == std::string_view::npos && raw.find('\r') == std::string_view::npos) {
        add(raw);
      } else if (decode(raw, false, piece)) {
        if (!whole.empty()) m_text += std::exchange(whole, {});
        m_text += piece;
      } else {
        fail(QStringLiteral("a reference (&...;) that is not known"));
      }
    }
    m_at += failed() ? 0 : raw.size();
    if (startsWith("<![CDATA[")) {
      const size_t begin = m_at + 9;
      if (!passOver("<![CDATA[", "]]>") || failed()) break;
      if (m_open.size() == depth) add(m_bytes.substr(begin, m_at - 3 - begin));
      continue;
    }
    switch (markup()) {
      case Markup::Start:
        hasElements = true;
        if (readStart() && m_isEmpty) leave();
        break;
      case Markup::End:
        if (readEnd() && m_open.size() < depth) return whole.empty() ? m_text : whole;
        break;
      case Markup::EndOfFile:
        fail(QStringLiteral("the file ends within <%1>").arg(quoted(m_open.back())));
        break;
      case Markup::Other:
        break;
    }
  }
  return {};
}

void XmlScanner::skip() {
  bool hasElements = false;
  (void)readText(hasElements);
}

bool XmlScanner::atEnd() {
  while (!failed()) {
    skipSpace();
    if (m_at >= m_bytes.size()) return true;
    if (m_bytes[m_at] != '<' || markup() != Markup::Other)
      fail(QStringLiteral("something follows the end of the store"));
  }
  return false;
}

}  // namespace store::xml
