#include "preview/BackdropSource.h"

#include <QCoreApplication>
#include <QImageReader>

namespace preview {

using foundation::Result;
using runtime::movie::MovieInfo;
using runtime::movie::MovieReader;

namespace {

Result<QImage> readStill(const QString& path) {
  QImageReader reader(path);
  reader.setAutoTransform(true);
  const QImage image = reader.read();
  if (image.isNull()) return foundation::failure(reader.errorString(), path);
  return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

}  // namespace

Result<BackdropSource> BackdropSource::open(Kind kind, const QString& path,
                                            const std::atomic<bool>& stop) {
  BackdropSource source;
  if (kind == Kind::Still) {
    auto still = readStill(path);
    if (!still) return tl::unexpected(still.error());
    source.m_still = std::move(*still);
  } else {
    auto movie = MovieReader::open(path, {}, &stop);
    if (!movie) return tl::unexpected(movie.error());
    source.m_movie = std::move(*movie);
  }
  return source;
}

Result<BackdropSource::Shown> BackdropSource::pictureAt(double seconds) {
  if (!m_movie) return Shown{m_still};
  const MovieInfo& info = m_movie->info();
  const qint64 tick = info.tickAt(seconds, true);
  auto picture = m_movie->pictureAt(tick);
  if (!picture) return tl::unexpected(picture.error());
  if (info.frames <= 1) return Shown{std::move(picture->image)};
  // The last picture shows until the movie begins anew.
  const double until = std::min(static_cast<double>(picture->until) * info.tick, info.duration);
  const double left = until - static_cast<double>(tick) * info.tick;
  constexpr double shortest = 0.001;
  return Shown{std::move(picture->image), seconds + std::max(left, shortest)};
}

}  // namespace preview
