#pragma once

#include <QDateTime>
#include <QSize>
#include <QStringList>
#include <optional>

#include "cli/CommandOptions.h"
#include "cli/OutputName.h"
#include "cli/PixelFormat.h"
#include "model/VideoModes.h"

namespace cli {

/// A frame rate as an exact fraction, so that frame times do not drift.
struct FrameRate {
  qint64 numerator = 25;
  qint64 denominator = 1;
  /// Seconds from the first frame to frame `index`.
  [[nodiscard]] double timeOf(qint64 index) const {
    return static_cast<double>(index * denominator) / static_cast<double>(numerator);
  }
  [[nodiscard]] qint64 framesIn(double seconds) const;
  /// "25", "29.97" (30000/1001), "60000/1001". Nothing for other texts and rates out of 0…1000.
  [[nodiscard]] static std::optional<FrameRate> fromText(const QString& text);
};

/// The rate of a video format; 25 where it is unknown.
[[nodiscard]] FrameRate frameRate(model::FrameRateCode code);

/// What `tessary render` was asked to do.
struct RenderOptions {
  QString input;
  OutputName output;
  std::optional<QSize> size;
  std::optional<FrameRate> rate;
  double from = 0;
  std::optional<double> duration;  ///< seconds
  std::optional<qint64> frames;
  QStringList assignments;  ///< KEY=VALUE
  QString valuesFile;
  std::vector<double> triggers;  ///< seconds, ascending
  bool automaticTrigger = false;
  QDateTime clock;  ///< the wall clock at time 0; invalid: now
  bool background = false;
  Alpha alpha = Alpha::Straight;
  int threads = 0;  ///< 0: one a core

  /// The command's options, ready to parse.
  [[nodiscard]] static std::unique_ptr<CommandOptions> syntax();
  /// No side above 16384 pixels and no more than 134 million (16384 x 8192) in all, which is half a
  /// gigabyte a canvas.
  [[nodiscard]] static bool isDrawable(const QSize& size);
  /// Fails with a sentence for the person.
  [[nodiscard]] static foundation::Result<RenderOptions> read(const CommandOptions& options);
};

}  // namespace cli
