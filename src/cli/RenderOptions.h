#pragma once

#include <QDateTime>
#include <QSize>
#include <QStringList>
#include <optional>

#include "cli/CommandOptions.h"
#include "cli/FrameTarget.h"

namespace cli {

/// What `tessary render` was asked to do.
struct RenderOptions {
  /// A value sent while playing.
  struct Update {
    double time = 0;     ///< seconds
    QString assignment;  ///< KEY=VALUE
  };
  QString input;
  OutputName output;
  std::optional<QSize> size;
  std::optional<FrameRate> rate;
  std::optional<bool> isInterlaced;  ///< as the format named says; none named: the document's
  bool fields = false;               ///< draw each field at its own time
  std::optional<runtime::movie::MovieCodec> codec;
  double from = 0;
  std::optional<double> duration;  ///< seconds
  std::optional<qint64> frames;
  QStringList assignments;  ///< KEY=VALUE
  QString valuesFile;
  std::vector<Update> updates;   ///< in the order given
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
  /// "WIDTHxHEIGHT"; fails with a sentence for what is none or not drawable.
  [[nodiscard]] static foundation::Result<QSize> sizeFromText(const QString& text);
  /// Fails with a sentence for the person.
  [[nodiscard]] static foundation::Result<RenderOptions> read(const CommandOptions& options);
};

}  // namespace cli
