#pragma once

#include "foundation/PropertyValue.h"
#include "foundation/Result.h"

namespace foundation::detail {

/// Writes one value as an XML property list. The parsing library's own writer is not used: it
/// cannot make unsigned numbers above the signed range or distant dates from values, and writes
/// control characters that no reader accepts.
class PlistXmlWriter {
 public:
  [[nodiscard]] Result<QByteArray> write(const PropertyValue& value);

 private:
  void element(const PropertyValue& value);
  void array(const PropertyArray& items);
  void dictionary(const PropertyDictionary& entries);
  void integer(const PropertyValue& value);
  void real(double value);
  void data(const QByteArray& bytes);
  void date(const QDateTime& date);
  void uid(quint64 index);
  void text(const char* tag, const QString& text);
  void open(const char* tag);
  void close(const char* tag);
  void indent();
  void leaf(const char* tag, const QByteArray& content);
  void fail(const QString& reason);

  QByteArray m_out;
  QStringList m_path;  // keys and indices down to the value at hand, for messages
  int m_depth = 0;
  QString m_problem;
};

/// False for halves of surrogate pairs and, in strict text, for characters that XML cannot hold.
[[nodiscard]] bool isStorableText(QStringView text, bool strict);
/// A valid date of the years 1-9999.
[[nodiscard]] bool isStorableDate(const QDateTime& date);

}  // namespace foundation::detail
