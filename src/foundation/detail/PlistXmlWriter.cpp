#include "foundation/detail/PlistXmlWriter.h"

#include <array>
#include <charconv>
#include <cmath>

#include "foundation/detail/PlistProblem.h"

namespace foundation::detail {

bool isStorableText(QStringView text, bool strict) {
  for (qsizetype i = 0; i < text.size(); ++i) {
    const QChar c = text[i];
    if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
      ++i;
    } else if (c.isSurrogate()) {
      return false;
    } else if (strict && ((c < u' ' && c != u'\t' && c != u'\n' && c != u'\r') || c >= u'\xFFFE')) {
      return false;
    }
  }
  return true;
}

bool isStorableDate(const QDateTime& date) {
  if (!date.isValid()) return false;
  const int year = date.toUTC().date().year();
  return year >= 1 && year <= 9999;
}

Result<QByteArray> PlistXmlWriter::write(const PropertyValue& value) {
  m_out =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
      "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
      "<plist version=\"1.0\">\n";
  element(value);
  m_out += "</plist>\n";
  if (m_problem.isEmpty()) return std::move(m_out);
  return failure(QStringLiteral("The property list cannot be written"), {}, m_problem);
}

void PlistXmlWriter::fail(const QString& reason) {
  if (!m_problem.isEmpty()) return;
  const QString place = m_path.isEmpty() ? QStringLiteral("root") : m_path.join(QLatin1Char('/'));
  m_problem = place + QStringLiteral(": ") + reason;
}

void PlistXmlWriter::element(const PropertyValue& value) {
  if (!m_problem.isEmpty()) return;
  switch (value.type()) {
    case PropertyValue::Type::Null:
      return fail(QStringLiteral("there is no value"));
    case PropertyValue::Type::Boolean:
      indent();
      m_out += value.toBool() ? "<true/>\n" : "<false/>\n";
      return;
    case PropertyValue::Type::Integer:
      return integer(value);
    case PropertyValue::Type::Real:
      return real(value.toDouble());
    case PropertyValue::Type::String:
      return text("string", value.toString());
    case PropertyValue::Type::Data:
      return data(value.toData());
    case PropertyValue::Type::Date:
      return date(value.toDate());
    case PropertyValue::Type::Uid:
      return uid(value.toUid().index);
    case PropertyValue::Type::Array:
      return array(value.array());
    case PropertyValue::Type::Dictionary:
      return dictionary(value.dictionary());
  }
}

void PlistXmlWriter::indent() {
  m_out.append(m_depth, '\t');
}

void PlistXmlWriter::open(const char* tag) {
  indent();
  m_out.append('<').append(tag).append(">\n");
  if (++m_depth >= kMaxPlistDepth) fail(QStringLiteral("nested too deeply"));
}

void PlistXmlWriter::close(const char* tag) {
  --m_depth;
  indent();
  m_out.append("</").append(tag).append(">\n");
}

void PlistXmlWriter::leaf(const char* tag, const QByteArray& content) {
  indent();
  m_out.append('<').append(tag).append('>').append(content);
  m_out.append("</").append(tag).append(">\n");
}

void PlistXmlWriter::array(const PropertyArray& items) {
  if (items.isEmpty()) {
    indent();
    m_out += "<array/>\n";
    return;
  }
  open("array");
  m_path.append(QString());
  for (qsizetype i = 0; i < items.size() && m_problem.isEmpty(); ++i) {
    m_path.last() = QString::number(i);
    element(items[i]);
  }
  m_path.removeLast();
  close("array");
}

void PlistXmlWriter::dictionary(const PropertyDictionary& entries) {
  if (entries.isEmpty()) {
    indent();
    m_out += "<dict/>\n";
    return;
  }
  open("dict");
  m_path.append(QString());
  for (const auto& [key, value] : entries) {
    if (!m_problem.isEmpty()) break;
    m_path.last() = key;
    text("key", key);
    element(value);
  }
  m_path.removeLast();
  close("dict");
}

void PlistXmlWriter::integer(const PropertyValue& value) {
  const PropertyValue::Integer number = value.toExactInteger();
  leaf("integer", number.isUnsigned ? QByteArray::number(number.bits)
                                    : QByteArray::number(static_cast<qint64>(number.bits)));
}

void PlistXmlWriter::real(double value) {
  if (std::isnan(value)) return leaf("real", "nan");
  if (std::isinf(value)) return leaf("real", value > 0 ? "+infinity" : "-infinity");
  std::array<char, 32> digits{};  // the shortest text that reads back as the same number
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  leaf("real", QByteArray(digits.data(), end - digits.data()));
}

void PlistXmlWriter::data(const QByteArray& bytes) {
  constexpr qsizetype kBytesPerLine = 57;  // 76 characters
  indent();
  m_out += "<data>\n";
  for (qsizetype at = 0; at < bytes.size(); at += kBytesPerLine) {
    indent();
    m_out += bytes.mid(at, kBytesPerLine).toBase64() + '\n';
  }
  indent();
  m_out += "</data>\n";
}

void PlistXmlWriter::date(const QDateTime& date) {
  if (!isStorableDate(date)) return fail(QStringLiteral("a date outside the years 1-9999"));
  leaf("date", date.toUTC().toString(QStringLiteral("yyyy-MM-ddTHH:mm:ssZ")).toLatin1());
}

void PlistXmlWriter::uid(quint64 index) {
  open("dict");
  leaf("key", "CF$UID");
  leaf("integer", QByteArray::number(index));
  close("dict");
}

void PlistXmlWriter::text(const char* tag, const QString& text) {
  if (!isStorableText(text, true))
    return fail(QStringLiteral("text with characters that XML cannot hold"));
  QByteArray content = text.toUtf8();
  content.replace('&', "&amp;").replace('<', "&lt;").replace('>', "&gt;").replace('\r', "&#13;");
  leaf(tag, content);
}

}  // namespace foundation::detail
