#include "render/RawWriter.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>

namespace render {

RawWriter::RawWriter(Alpha alpha, int descriptor) : m_alpha(alpha), m_descriptor(descriptor) {
  std::signal(SIGPIPE, SIG_IGN);  // a reader that goes away is an error to report, not our end
#ifdef F_SETPIPE_SZ
  (void)fcntl(m_descriptor, F_SETPIPE_SZ, 1 << 20);  // fewer switches between us and the reader
#endif
}

foundation::Result<QByteArray> RawWriter::encode(QImage& frame, const QRect& drawn) {
  convertToRgba(frame, m_alpha, drawn);
  return QByteArray();
}

foundation::Result<void> RawWriter::deliver(const QImage& frame, const QByteArray&, qint64) {
  const uchar* bytes = frame.constBits();
  qsizetype left = frame.sizeInBytes();  // 4 bytes a pixel: rows have no padding
  while (left > 0) {
    const ssize_t written = ::write(m_descriptor, bytes, static_cast<size_t>(left));
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0)
      return foundation::failure(
          QStringLiteral("cannot be written: %1").arg(QString::fromLocal8Bit(std::strerror(errno))),
          QStringLiteral("standard output"));
    bytes += written;
    left -= written;
  }
  return {};
}

}  // namespace render
