#include "render/FrameWriter.h"

#include <QDir>

#include "render/PictureWriter.h"
#include "render/RawWriter.h"
#include "render/movie/MovieWriter.h"

namespace render {

foundation::Result<std::unique_ptr<FrameWriter>> FrameWriter::forOutput(const FrameTarget& target) {
  const OutputName& output = target.output;
  if (output.isStream) return std::make_unique<RawWriter>(target.alpha);
  if (!QDir().mkpath(output.folder()))
    return foundation::failure(QStringLiteral("cannot make the folder"), output.folder());
  if (const auto movie = target.movie())
    return MovieWriter::create(output.text, *movie, target.alpha);
  return std::make_unique<PictureWriter>(output.name, output.format, target.alpha);
}

}  // namespace render
