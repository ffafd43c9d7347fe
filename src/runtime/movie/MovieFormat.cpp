#include "runtime/movie/MovieFormat.h"

#include <QFileInfo>

namespace runtime::movie {

using foundation::failure;

namespace {

struct CodecName {
  MovieCodec codec;
  QLatin1String name;
};
constexpr CodecName names[] = {{MovieCodec::ProRes4444, QLatin1String("prores4444")},
                               {MovieCodec::QuickTimeRle, QLatin1String("qtrle")},
                               {MovieCodec::Vp9, QLatin1String("vp9")},
                               {MovieCodec::H264, QLatin1String("h264")}};

QString containerName(MovieContainer container) {
  switch (container) {
    case MovieContainer::QuickTime:
      return QStringLiteral(".mov");
    case MovieContainer::Mpeg4:
      return QStringLiteral(".mp4");
    case MovieContainer::WebM:
      return QStringLiteral(".webm");
    case MovieContainer::Matroska:
      return QStringLiteral(".mkv");
  }
  return {};
}

}  // namespace

QString codecName(MovieCodec codec) {
  for (const CodecName& entry : names)
    if (entry.codec == codec) return entry.name;
  return {};
}

std::optional<MovieCodec> codecFromName(const QString& name) {
  for (const CodecName& entry : names)
    if (entry.name == name) return entry.codec;
  return {};
}

QStringList codecNames() {
  QStringList list;
  for (const CodecName& entry : names) list.append(entry.name);
  return list;
}

bool keepsAlpha(MovieCodec codec) {
  return codec != MovieCodec::H264;
}

std::optional<MovieContainer> containerOf(const QString& fileName) {
  const QString suffix = QLatin1Char('.') + QFileInfo(fileName).suffix().toLower();
  for (const MovieContainer container : {MovieContainer::QuickTime, MovieContainer::Mpeg4,
                                         MovieContainer::WebM, MovieContainer::Matroska})
    if (suffix == containerName(container)) return container;
  return {};
}

const QList<MovieCodec>& codecsOf(MovieContainer container) {
  using C = MovieCodec;
  static const QList<C> quickTime{C::ProRes4444, C::QuickTimeRle, C::H264};
  static const QList<C> mpeg4{C::H264};
  static const QList<C> webM{C::Vp9};
  static const QList<C> matroska{C::Vp9, C::H264, C::ProRes4444};
  switch (container) {
    case MovieContainer::QuickTime:
      return quickTime;
    case MovieContainer::Mpeg4:
      return mpeg4;
    case MovieContainer::WebM:
      return webM;
    case MovieContainer::Matroska:
      return matroska;
  }
  return quickTime;
}

foundation::Result<void> MovieFormat::check() const {
  const QList<MovieCodec>& known = codecsOf(container);
  if (!known.contains(codec)) {
    QStringList list;
    for (const MovieCodec each : known) list.append(codecName(each));
    return failure(
        QStringLiteral("%1 files hold %2, not %3")
            .arg(containerName(container), list.join(QStringLiteral(", ")), codecName(codec)));
  }
  if (size.isEmpty()) return {};
  if (codec == MovieCodec::H264 && (size.width() % 2 != 0 || size.height() % 2 != 0))
    return failure(QStringLiteral("h264 needs an even width and height, not %1x%2")
                       .arg(size.width())
                       .arg(size.height()));
  if (isInterlaced && size.height() % 4 != 0 && codec == MovieCodec::H264)
    return failure(
        QStringLiteral("interlaced h264 needs a height that 4 divides, not %1").arg(size.height()));
  return {};
}

}  // namespace runtime::movie
