#include "foundation/PropertyList.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include "foundation/detail/PlistBinaryBuilder.h"
#include "foundation/detail/PlistBinaryCheck.h"
#include "foundation/detail/PlistBinaryWriter.h"
#include "foundation/detail/PlistXmlBuilder.h"
#include "foundation/detail/PlistXmlCheck.h"
#include "foundation/detail/PlistXmlWriter.h"

namespace foundation {

namespace {

constexpr auto kMaxBytes = static_cast<qint64>(detail::kMaxPlistBytes);

QString unreadable() {
  return QStringLiteral("The property list cannot be read");
}

tl::unexpected<Error> tooLarge(const QString& fileName) {
  return failure(unreadable(), fileName, QStringLiteral("larger than 512 MiB"));
}

Result<PropertyValue> fromXml(QByteArrayView text, const QString& fileName) {
  if (const auto problem = detail::checkPlistXml(text)) {
    const auto line = text.first(qMin(problem->offset, text.size())).count('\n') + 1;
    return failure(unreadable(), fileName,
                   QStringLiteral("line %1: %2").arg(line).arg(problem->reason));
  }
  return detail::buildCheckedXml(text);
}

Result<PropertyValue> fromBinary(QByteArrayView bytes, const QString& fileName) {
  detail::PlistBinaryLayout layout;
  if (const auto problem = detail::checkPlistBinary(bytes, layout))
    return failure(unreadable(), fileName,
                   QStringLiteral("byte %1: %2").arg(problem->offset).arg(problem->reason));
  return detail::buildCheckedBinary(layout);
}

bool isUtf16(const QByteArray& bytes) {
  return bytes.startsWith("\xFE\xFF") || bytes.startsWith("\xFF\xFE");
}

}  // namespace

Result<PropertyValue> PropertyList::fromData(const QByteArray& bytes, const QString& fileName) {
  if (bytes.isEmpty()) return failure(unreadable(), fileName, QStringLiteral("the file is empty"));
  if (bytes.size() > kMaxBytes) return tooLarge(fileName);
  if (bytes.startsWith("bplist")) return fromBinary(bytes, fileName);
  if (isUtf16(bytes)) {
    QStringDecoder decoder(QStringDecoder::Utf16);
    const QString text = decoder(bytes);
    if (decoder.hasError())
      return failure(unreadable(), fileName, QStringLiteral("text that is not UTF-16"));
    return fromXml(text.toUtf8(), fileName);
  }
  QByteArrayView text(bytes);
  if (text.startsWith("\xEF\xBB\xBF")) text = text.sliced(3);
  if (!text.trimmed().startsWith('<'))
    return failure(unreadable(), fileName,
                   QStringLiteral("neither an XML nor a binary property list"));
  return fromXml(text, fileName);
}

Result<PropertyValue> PropertyList::fromFile(const QString& path) {
  const QFileInfo info(path);
  if (info.exists() && !info.isFile())  // reading a pipe or a device might never end
    return failure(unreadable(), path, QStringLiteral("it is no regular file"));
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return failure(unreadable(), path, file.errorString());
  if (file.size() > kMaxBytes) return tooLarge(path);
  const QByteArray bytes = file.read(kMaxBytes + 1);
  if (file.error() != QFileDevice::NoError) return failure(unreadable(), path, file.errorString());
  return fromData(bytes, path);
}

Result<QByteArray> PropertyList::toXml(const PropertyValue& value) {
  return detail::PlistXmlWriter().write(value);
}

Result<QByteArray> PropertyList::toBinary(const PropertyValue& value) {
  return detail::PlistBinaryWriter().write(value);
}

}  // namespace foundation
