#include "store/xml/XmlText.h"

#include <array>
#include <charconv>
#include <cmath>

namespace store::xml {

namespace {

bool isForbidden(QStringView text, qsizetype at) {
  const QChar c = text[at];
  if (c.isHighSurrogate()) return at + 1 >= text.size() || !text[at + 1].isLowSurrogate();
  if (c.isLowSurrogate()) return at == 0 || !text[at - 1].isHighSurrogate();
  return c >= u'\xFFFE' || (c < u' ' && c != u'\t' && c != u'\n' && c != u'\r');
}

void append(QStringView text, bool isAttribute, QByteArray& out) {
  const auto special = [isAttribute](char16_t c) -> const char* {
    switch (c) {
      case u'&':
        return "&amp;";
      case u'<':
        return "&lt;";
      case u'>':
        return "&gt;";
      case u'\r':
        return "&#13;";
      case u'"':
        return isAttribute ? "&quot;" : nullptr;
      case u'\t':
        return isAttribute ? "&#9;" : nullptr;
      case u'\n':
        return isAttribute ? "&#10;" : nullptr;
      default:
        return nullptr;
    }
  };
  qsizetype begin = 0;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] > u'>') continue;
    const char* replacement = special(text[i].unicode());
    if (!replacement) continue;
    out += text.sliced(begin, i - begin).toUtf8();
    out += replacement;
    begin = i + 1;
  }
  out += text.sliced(begin).toUtf8();
}

}  // namespace

bool needsEscapes(QStringView text) {
  for (qsizetype i = 0; i < text.size(); ++i)
    if ((text[i] < u' ' || text[i] >= u'\xD800') && isForbidden(text, i)) return true;
  return false;
}

QString escaped(QStringView text) {
  QString out;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] == u'\\')
      out += QLatin1String("\\\\");
    else if (isForbidden(text, i))
      out += QStringLiteral("\\u%1").arg(text[i].unicode(), 4, 16, QLatin1Char('0'));
    else
      out += text[i];
  }
  return out;
}

std::optional<QString> unescaped(QStringView text) {
  QString out;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] != u'\\') {
      out += text[i];
    } else if (i + 1 < text.size() && text[i + 1] == u'\\') {
      out += text[++i];
    } else {
      const QByteArray digits = text.mid(i + 2, 4).toUtf8();
      quint16 code = 0;
      const auto end = std::from_chars(digits.begin(), digits.end(), code, 16);
      if (text.mid(i, 2) != u"\\u" || digits.size() != 4 || end.ptr != digits.end()) return {};
      out += QChar(code);
      i += 5;
    }
  }
  return out;
}

void appendText(QStringView text, QByteArray& out) {
  append(text, false, out);
}

void appendAttributeText(QStringView text, QByteArray& out) {
  append(text, true, out);
}

QByteArray realText(double value) {
  if (std::isnan(value)) return "nan";
  if (std::isinf(value)) return value > 0 ? "inf" : "-inf";
  std::array<char, 32> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  return QByteArray(digits.data(), end - digits.data());
}

}  // namespace store::xml
