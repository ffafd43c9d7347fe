#include "preview/PreviewProgram.h"

#include <QDir>
#include <QTemporaryDir>

#include "foundation/Log.h"
#include "foundation/UserDefaults.h"
#include "model/VideoInputPoster.h"

namespace preview {

using document::CompositionDocument;
using Failure = PreviewProgram::Failure;

namespace {

/// Video inputs show the picture that they show on the canvas.
void feedVideoInputs(PreviewProgram& program) {
  const QImage poster = model::videoInputPosterImage(foundation::UserDefaults::standard());
  if (poster.isNull()) return;
  const runtime::Value picture(runtime::Image::fromQImage(poster));
  for (const QString& key : runtime::CompositionRenderer(program.compiled).inputKeys())
    if (key.contains(QLatin1String("videoInput"))) program.inputs.emplace_back(key, picture);
}

void takePlace(PreviewProgram& program, const CompositionDocument& document) {
  if (document.fileURL().isEmpty()) return;
  program.userInfo.insert(QStringLiteral("com.brevant.Tessary.file"),
                          document.quartzCompositionURL().toLocalFile());
  program.userInfo.insert(QStringLiteral("baseFolder"), document.fileURL().toLocalFile());
}

/// Frames, or fields of an interlaced format where the user wants them.
double picturesPerSecond(const model::VideoResolution& format) {
  const double rate = format.framesPerSecond();
  if (rate <= 0) return PreviewProgram().framesPerSecond;
  const bool playsFields =
      format.isInterlaced() &&
      foundation::UserDefaults::standard().value(QStringLiteral("previewFields")).toBool();
  return playsFields ? 2 * rate : rate;
}

}  // namespace

tl::expected<PreviewProgram, Failure> PreviewProgram::fromDocument(
    const CompositionDocument& document, Background background) {
  const auto failed = [](Failure::Stage stage, const foundation::Error& error) {
    return tl::unexpected(Failure{stage, error});
  };
  const model::Composition* composition = document.composition();
  if (!composition)
    return failed(Failure::Stage::Export, {QStringLiteral("The document holds no composition"),
                                           document.fileURL().toLocalFile(),
                                           {}});
  if (composition->size().isEmpty())
    return failed(Failure::Stage::Export,
                  {QStringLiteral("The video format is not known"),
                   document.fileURL().toLocalFile(), composition->broadcastMode()});
  // A folder that only this program can reach, and that goes with what is in it.
  const QTemporaryDir folder(QDir::temp().filePath(QStringLiteral("TessaryPreview-XXXXXX")));
  if (!folder.isValid())
    return failed(Failure::Stage::Export, {folder.errorString(), QDir::tempPath(), {}});
  const QString path = folder.filePath(QStringLiteral("TessaryPreview.qtz"));
  if (const auto done = composition->exportToPath(path, background); !done)
    return failed(Failure::Stage::Export, done.error());
  const auto renderer = runtime::CompositionRenderer::fromFile(path);
  if (!renderer) {
    foundation::logError(
        QStringLiteral("The preview could not load its file: %1").arg(renderer.error().text()));
    return failed(Failure::Stage::Load, renderer.error());
  }
  PreviewProgram program{.compiled = (*renderer)->sharedProgram()};
  takePlace(program, document);
  feedVideoInputs(program);
  program.size = composition->size().toSize();
  program.framesPerSecond = picturesPerSecond(composition->videoResolution());
  program.isInterlaced = composition->videoResolution().isInterlaced();
  program.hasOwnBackground = composition->backgroundMode() != model::BackgroundMode::None;
  program.isOpaque = program.hasOwnBackground && background == Background::Include;
  return program;
}

}  // namespace preview
