#pragma once

#include "cli/CommandOptions.h"
#include "render/RenderSettings.h"

namespace cli {

/// What `tessary render` was asked to do.
struct RenderOptions : render::RenderSettings {
  /// A value sent while playing.
  struct Update {
    double time = 0;     ///< seconds
    QString assignment;  ///< KEY=VALUE
  };
  QString input;
  QStringList assignments;      ///< KEY=VALUE
  QString values;               ///< a file, or the name of a set of the document
  int valuesRow = 0;            ///< of a table, from 1 on; 0: none was named
  std::vector<Update> updates;  ///< in the order given

  /// The command's options, ready to parse.
  [[nodiscard]] static std::unique_ptr<CommandOptions> syntax();
  /// "WIDTHxHEIGHT"; fails with a sentence for what is none or not drawable.
  [[nodiscard]] static foundation::Result<QSize> sizeFromText(const QString& text);
  /// Fails with a sentence for the person.
  [[nodiscard]] static foundation::Result<RenderOptions> read(const CommandOptions& options);
};

}  // namespace cli
