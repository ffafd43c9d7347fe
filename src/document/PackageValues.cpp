#include "document/PackageValues.h"

#include <QFile>
#include <QFileInfo>

#include "foundation/DurableFile.h"
#include "foundation/Log.h"

namespace document {

using foundation::failure;
using foundation::Result;
using playout::ValueSets;

namespace {

/// Nothing at all when there is no file.
Result<QByteArray> bytesOf(const QString& path) {
  const QFileInfo info(path);
  if (!info.exists() && !info.isSymLink()) return QByteArray();
  // A link out of the package would be written over, or be someone else's file.
  if (!info.isFile() || info.isSymLink())
    return failure(QStringLiteral("is not a plain file"), path);
  if (info.size() > PackageValues::largestFile)
    return failure(QStringLiteral("is too large for sets of values"), path);
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    return failure(QStringLiteral("cannot be read"), path, file.errorString());
  QByteArray bytes = file.readAll();
  if (file.error() != QFileDevice::NoError)
    return failure(QStringLiteral("cannot be read"), path, file.errorString());
  return bytes;
}

/// Keeps bytes beside the file, under a name that nothing else has unless it has the same bytes.
Result<void> keepDamaged(const QString& path, const QByteArray& bytes) {
  for (int number = 1;; ++number) {
    const QString ending = number == 1 ? QString() : QStringLiteral(" %1").arg(number);
    const QFileInfo info(path);
    const QString kept = QStringLiteral("%1/%2 (damaged%3).%4")
                             .arg(info.path(), info.completeBaseName(), ending, info.suffix());
    if (QFileInfo::exists(kept)) {
      const auto there = bytesOf(kept);
      if (there && *there == bytes) return {};
      continue;
    }
    foundation::logError(QStringLiteral("%1 is damaged; what it held is kept as %2")
                             .arg(path, QFileInfo(kept).fileName()));
    return foundation::replaceFile(kept, bytes);
  }
}

}  // namespace

Result<void> PackageValues::read(const PackageLayout& package) {
  *this = {};
  const auto bytes = bytesOf(package.values());
  if (!bytes) return tl::unexpected(bytes.error());
  if (bytes->isEmpty() && !QFileInfo::exists(package.values())) return {};
  auto sets = ValueSets::fromJson(*bytes, package.values());
  if (!sets) return tl::unexpected(sets.error());
  m_sets = m_before = std::move(*sets);
  return {};
}

void PackageValues::hold(const ValueSets& sets) {
  if (sets == m_sets) return;
  m_sets = sets;
  m_isHeld = true;
}

Result<ValueSets> PackageValues::present(const PackageLayout& package) const {
  const auto bytes = bytesOf(package.values());
  if (!bytes) return tl::unexpected(bytes.error());
  if (bytes->isEmpty()) return m_before;
  if (auto sets = ValueSets::fromJson(*bytes, package.values())) return sets;
  if (auto kept = keepDamaged(package.values(), *bytes); !kept) return tl::unexpected(kept.error());
  return m_before;
}

Result<ValueSets> PackageValues::writeCopy(const PackageLayout& package) const {
  if (!m_isHeld) return m_sets;
  const auto theirs = present(package);
  if (!theirs) return theirs;
  ValueSets both = ValueSets::merged(m_before, m_sets, *theirs);
  if (auto written = foundation::replaceFile(package.values(), both.toJson()); !written)
    return tl::unexpected(written.error());
  return both;
}

Result<void> PackageValues::write(const PackageLayout& package) {
  if (!m_isHeld) return {};
  auto written = writeCopy(package);
  if (!written) return tl::unexpected(written.error());
  m_sets = m_before = std::move(*written);
  m_isHeld = false;
  return {};
}

}  // namespace document
