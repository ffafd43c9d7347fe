#include "foundation/DurableFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <QFileInfo>
#include <QSaveFile>
#include <cerrno>
#include <cstring>
#include <functional>

namespace foundation {

namespace {

constexpr int maximumLinks = 40;
constexpr qint64 pieceSize = qint64{1} << 20;

using Producer = std::function<Result<void>(QSaveFile& file)>;

/// Where the file itself lies or would lie.
Result<QString> behindLinks(const QString& path) {
  QFileInfo info(path);
  for (int i = 0; info.isSymLink(); ++i) {
    if (i == maximumLinks) return failure(systemErrorText(ELOOP), path);
    info.setFile(info.symLinkTarget());
  }
  if (info.isDir()) return failure(systemErrorText(EISDIR), path);
  return info.absoluteFilePath();
}

Result<void> replaceWith(const QString& path, const Producer& produce) {
  const Result<QString> target = behindLinks(path);
  if (!target) return tl::unexpected(target.error());
  QSaveFile file(*target);
  file.setDirectWriteFallback(false);
  if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
    return failure(QStringLiteral("cannot be written: %1").arg(file.errorString()), path);
  if (const Result<void> produced = produce(file); !produced) return produced;
  // QSaveFile asks for this too, but does not look whether it succeeds.
  if (fsync(file.handle()) != 0)
    return failure(QStringLiteral("cannot be written: %1").arg(systemErrorText(errno)), path);
  if (!file.commit())
    return failure(QStringLiteral("cannot be written: %1").arg(file.errorString()), path);
  return syncFolder(QFileInfo(*target).path());
}

/// Past QSaveFile, which does not always say why it failed.
Result<void> writeAll(QSaveFile& file, const QByteArray& bytes, const QString& path) {
  for (qsizetype done = 0; done < bytes.size();) {
    const ssize_t count =
        write(file.handle(), bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0)
      return failure(QStringLiteral("cannot be written: %1").arg(systemErrorText(errno)), path);
    done += count;
  }
  return {};
}

}  // namespace

QString systemErrorText(int number) {
  const char* text = strerrordesc_np(number);
  return text ? QString::fromLatin1(text) : QStringLiteral("error %1").arg(number);
}

Result<void> replaceFile(const QString& path, const QByteArray& bytes) {
  return replaceWith(path, [&](QSaveFile& file) { return writeAll(file, bytes, path); });
}

Result<void> copyFileDurably(const QString& source, const QString& destination) {
  QFile from(source);
  const QFileInfo info(source);
  if (info.exists() && !info.isFile())
    return failure(QStringLiteral("cannot be copied: it is no file"), source);
  if (!from.open(QIODevice::ReadOnly))
    return failure(QStringLiteral("cannot be read: %1").arg(from.errorString()), source);
  return replaceWith(destination, [&](QSaveFile& file) -> Result<void> {
    while (!from.atEnd()) {
      const QByteArray piece = from.read(pieceSize);
      if (piece.isEmpty()) break;
      if (const Result<void> written = writeAll(file, piece, destination); !written) return written;
    }
    if (from.error() != QFileDevice::NoError)
      return failure(QStringLiteral("cannot be read: %1").arg(from.errorString()), source);
    return {};
  });
}

Result<void> syncFolder(const QString& path) {
  const QByteArray name = QFile::encodeName(path.isEmpty() ? QStringLiteral(".") : path);
  const int folder = open(name.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) return failure(systemErrorText(errno), path);
  const int result = fsync(folder);
  const int number = errno;
  close(folder);
  // Some network file systems know no such thing for folders; there is nothing else to be done.
  if (result != 0 && number != EINVAL && number != ENOTSUP)
    return failure(systemErrorText(number), path);
  return {};
}

}  // namespace foundation
