#include "quartz/UserInfo.h"

namespace quartz {

UserInfo UserInfo::fromArchive(const QByteArray&) {
  return {};
}

QByteArray UserInfo::toArchive(const QByteArray& previous) const {
  return previous;
}

}  // namespace quartz
