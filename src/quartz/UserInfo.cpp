#include "quartz/UserInfo.h"

#include "foundation/archive/NonKeyedArchive.h"

namespace quartz {

using foundation::ArchiveDictionary;
using foundation::ArchiveValue;
using foundation::NonKeyedArchive;

namespace {

const QString nameKey = QStringLiteral("name");
const QString positionKey = QStringLiteral("position");

ArchiveDictionary dictionaryOf(const QByteArray& archive) {
  if (archive.isEmpty()) return {};
  const auto value = NonKeyedArchive::read(archive);
  return value ? value->dictionary() : ArchiveDictionary();
}

}  // namespace

UserInfo UserInfo::fromArchive(const QByteArray& archive) {
  const ArchiveDictionary dictionary = dictionaryOf(archive);
  UserInfo info;
  if (const auto* name = dictionary.value(nameKey).as<QString>()) info.name = *name;
  if (const auto* position = dictionary.value(positionKey).as<QPointF>()) info.position = *position;
  return info;
}

QByteArray UserInfo::toArchive(const QByteArray& previous) const {
  const auto written = [&](ArchiveDictionary dictionary) {
    if (name) dictionary.insert(nameKey, *name);
    if (position) dictionary.insert(positionKey, *position);
    return NonKeyedArchive::write(dictionary);
  };
  if (auto whole = written(dictionaryOf(previous))) return *whole;
  // What others left there cannot be written again: keep at least what is ours.
  return written({}).value_or(QByteArray());
}

}  // namespace quartz
