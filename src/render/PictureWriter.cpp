#include "render/PictureWriter.h"

#include <QBuffer>
#include <QFile>
#include <QPainter>

namespace render {

PictureWriter::PictureWriter(PictureName name, PictureFormat format, Alpha alpha)
    : m_name(std::move(name)), m_format(format), m_alpha(alpha) {}

foundation::Result<QByteArray> PictureWriter::encode(QImage& frame, const QRect& drawn) {
  QByteArray bytes;
  if (m_format == PictureFormat::Png) {
    convertToRgba(frame, m_alpha, drawn);
    std::unique_ptr<PngEncoder> encoder = takeEncoder();
    bytes = encoder->encode(frame.constBits(), frame.bytesPerLine(), frame.size(), drawn);
    giveBack(std::move(encoder));
  } else {
    QImage opaque(frame.size(), QImage::Format_RGB32);
    opaque.fill(Qt::black);
    QPainter(&opaque).drawImage(0, 0, frame);
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    opaque.save(&buffer, "JPEG", 92);
  }
  if (bytes.isEmpty()) return foundation::failure(QStringLiteral("the picture cannot be encoded"));
  return bytes;
}

foundation::Result<void> PictureWriter::deliver(const QImage&, const QByteArray& bytes,
                                                qint64 number) {
  const QString path = m_name.of(number);
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) ||
      file.write(bytes) != bytes.size()) {
    const QString reason = file.errorString();
    if (file.isOpen()) file.remove();  // no half picture stays
    return foundation::failure(QStringLiteral("cannot be written: %1").arg(reason), path);
  }
  return {};
}

std::unique_ptr<PngEncoder> PictureWriter::takeEncoder() {
  const QMutexLocker lock(&m_mutex);
  if (m_encoders.empty()) return std::make_unique<PngEncoder>();
  std::unique_ptr<PngEncoder> encoder = std::move(m_encoders.back());
  m_encoders.pop_back();
  return encoder;
}

void PictureWriter::giveBack(std::unique_ptr<PngEncoder> encoder) {
  const QMutexLocker lock(&m_mutex);
  m_encoders.push_back(std::move(encoder));
}

}  // namespace render
