#pragma once

#include <QHash>
#include <vector>

#include "foundation/PropertyValue.h"
#include "foundation/Result.h"

namespace foundation::detail {

/// Writes one value as a binary property list; see PlistXmlWriter for why not by the library.
class PlistBinaryWriter {
 public:
  [[nodiscard]] Result<QByteArray> write(const PropertyValue& value);

 private:
  /// An object of the file: its encoded scalar, or a container's references.
  struct Object {
    QByteArray scalar;
    std::vector<quint32> references;
    quint8 container = 0;  ///< high half of the marker, 0 for scalars
  };

  quint32 add(const PropertyValue& value, int depth);
  quint32 addContainer(const PropertyValue& value, int depth);
  quint32 addString(const QString& text);
  QByteArray scalar(const PropertyValue& value);
  QByteArray date(const QDateTime& date);
  void append(const Object& object, int referenceWidth);
  void fail(const QString& reason);

  std::vector<Object> m_objects;
  QHash<QString, quint32> m_strings;
  QByteArray m_out;
  QString m_problem;
};

}  // namespace foundation::detail
