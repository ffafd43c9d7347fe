#pragma once

#include <QSize>
#include <QString>
#include <optional>

#include "render/FrameRate.h"
#include "render/OutputName.h"
#include "render/PixelFormat.h"
#include "runtime/movie/MovieFormat.h"

namespace render {

/// Where frames go and what is known of them before the first one.
struct FrameTarget {
  OutputName output = {};
  Alpha alpha = Alpha::Straight;
  QSize size = {};  ///< pixels
  FrameRate rate = {};
  bool isInterlaced = false;
  std::optional<runtime::movie::MovieCodec> codec = {};  ///< none: the container's usual one

  /// The movie to write; nothing where the output is none.
  [[nodiscard]] std::optional<runtime::movie::MovieFormat> movie() const;
};

}  // namespace render
