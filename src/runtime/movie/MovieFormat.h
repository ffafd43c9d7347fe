#pragma once

#include <QSize>
#include <QString>
#include <QStringList>
#include <optional>

#include "foundation/Result.h"

namespace runtime::movie {

enum class MovieCodec { ProRes4444, QuickTimeRle, Vp9, H264 };
enum class MovieContainer { QuickTime, Mpeg4, WebM, Matroska };

/// The codec's name on the command line, such as "prores4444"; nothing for other texts.
[[nodiscard]] QString codecName(MovieCodec codec);
[[nodiscard]] std::optional<MovieCodec> codecFromName(const QString& name);
[[nodiscard]] QStringList codecNames();
[[nodiscard]] bool keepsAlpha(MovieCodec codec);

/// By the name's ending (.mov, .mp4, .webm, .mkv); nothing for other files.
[[nodiscard]] std::optional<MovieContainer> containerOf(const QString& fileName);
/// What the container holds, its usual codec first.
[[nodiscard]] const QList<MovieCodec>& codecsOf(MovieContainer container);

/// A movie to be written.
struct MovieFormat {
  MovieContainer container = MovieContainer::QuickTime;
  MovieCodec codec = MovieCodec::ProRes4444;
  QSize size = {};  ///< pixels
  qint64 rateNumerator = 25;
  qint64 rateDenominator = 1;
  bool isInterlaced = false;  ///< frames hold two fields, the upper lines first
  /// Of the encoder. 0: one a core, or always the same number where the result depends on it.
  int threads = 0;

  /// Fails where the codec cannot do it, in a sentence for the person. An empty size is not looked
  /// at.
  [[nodiscard]] foundation::Result<void> check() const;
};

}  // namespace runtime::movie
