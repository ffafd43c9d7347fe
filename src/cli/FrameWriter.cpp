#include "cli/FrameWriter.h"

#include <QDir>

#include "cli/PictureWriter.h"
#include "cli/RawWriter.h"

namespace cli {

foundation::Result<std::unique_ptr<FrameWriter>> FrameWriter::forOutput(const OutputName& output,
                                                                        Alpha alpha) {
  if (output.isStream) return std::make_unique<RawWriter>(alpha);
  if (!QDir().mkpath(output.folder()))
    return foundation::failure(QStringLiteral("cannot make the folder"), output.folder());
  return std::make_unique<PictureWriter>(output.name, output.format, alpha);
}

}  // namespace cli
