#pragma once

#include <QString>

#include "foundation/Result.h"
#include "runtime/movie/MovieFormat.h"

namespace render {

enum class PictureFormat { Png, Jpeg };

/// The name of each picture: a fixed one, or one with the frame's number in it.
struct PictureName {
  QString before = {};
  QString after = {};
  int digits = 0;
  QLatin1Char padding = QLatin1Char('0');
  bool isSequence = false;
  [[nodiscard]] QString of(qint64 number) const;
};

/// Where rendered frames go, as a person writes it: "-" is raw RGBA on standard output; a name with
/// a number place such as "name_%05d.png", or a folder, is a sequence; .mov, .mp4, .webm and .mkv
/// are movies; else it is one picture.
struct OutputName {
  QString text = {};
  bool isStream = false;
  PictureName name = {};
  PictureFormat format = PictureFormat::Png;
  std::optional<runtime::movie::MovieContainer> movie = {};

  /// Fails with a sentence for the person. Touches no file but to see whether it is a folder.
  [[nodiscard]] static foundation::Result<OutputName> read(const QString& text);
  [[nodiscard]] bool isSinglePicture() const { return !isStream && !name.isSequence && !movie; }
  /// The folder of the files, with all its parents.
  [[nodiscard]] QString folder() const;
};

}  // namespace render
