#include "document/PosterFrame.h"

#include <QBuffer>
#include <QImageWriter>
#include <QPainter>

#include "model/Composition.h"
#include "playout/InputValues.h"
#include "playout/ValueSets.h"
#include "runtime/CompositionRenderer.h"
#include "runtime/draw/RasterBackend.h"

namespace document {

using foundation::Result;

namespace {

const QString waitingKey = QStringLiteral("waitingForTrigger");
const QString triggerKey = QStringLiteral("trigger");

constexpr int mostSteps = 90'000;  // an hour, for times that nobody means

/// Plays to the time (seconds) in steps of a 25th, in single precision as always, and returns what
/// is drawn then.
runtime::DrawList playedTo(double timepoint, const QSize& size,
                           runtime::CompositionRenderer& renderer) {
  constexpr double step = static_cast<double>(0.04F);
  const bool waits = renderer.outputKeys().contains(waitingKey);
  bool pressed = false;
  runtime::DrawList drawn;
  double time = 0;
  for (int i = 0; time <= timepoint && i < mostSteps; ++i, time += step) {
    drawn = renderer.renderAtTime(time, size);
    if (!waits) continue;
    const bool press = !pressed && renderer.valueForOutputKey(waitingKey).toBoolean();
    if (press || pressed) renderer.setValueForInputKey(press, triggerKey);
    pressed = press;
  }
  return drawn;
}

void setValues(const playout::ValueSet& set, const QString& folder,
               runtime::CompositionRenderer& renderer, QStringList& warnings) {
  QStringList leftOut;
  const auto values = playout::InputValues::fittingOf(set.values, renderer, folder, leftOut);
  for (const playout::InputValue& input : values)
    renderer.setValueForInputKey(input.value, input.key);
  for (const QString& why : std::as_const(leftOut))
    warnings.append(
        QStringLiteral("The thumbnail leaves out a value of \"%1\": %2").arg(set.name, why));
}

}  // namespace

Result<QImage> PosterFrame::render(const model::Composition& composition,
                                   const QString& exportedPath, const QString& packageFolder) {
  QStringList none;
  return render(composition, exportedPath, packageFolder, nullptr, none);
}

Result<QImage> PosterFrame::render(const model::Composition& composition,
                                   const QString& exportedPath, const QString& packageFolder,
                                   const playout::ValueSet* values, QStringList& warnings) {
  const bool hasNoTime = composition.posterFrameMode() == 1;
  if (hasNoTime && !composition.posterFrameImage().isNull()) return composition.posterFrameImage();
  const QSize size(composition.videoResolution().compositionWidth(),
                   composition.videoResolution().compositionHeight());
  QImage picture(size, QImage::Format_ARGB32_Premultiplied);
  if (picture.isNull())
    return foundation::failure(QStringLiteral("the video format has no size"), exportedPath);
  picture.fill(Qt::transparent);
  if (hasNoTime) return picture;
  const auto renderer = runtime::CompositionRenderer::fromFile(exportedPath);
  if (!renderer) return tl::unexpected(renderer.error());
  (*renderer)->userInfo().insert(QStringLiteral("baseFolder"), packageFolder);
  (*renderer)->userInfo().insert(QStringLiteral("com.brevant.Tessary.file"), packageFolder);
  if (values) setValues(*values, packageFolder, **renderer, warnings);
  runtime::RasterBackend().draw(playedTo(composition.posterFrameTimepoint(), size, **renderer),
                                picture);
  return picture;
}

QByteArray PosterFrame::jpeg(const QImage& picture) {
  QImage opaque(picture.size(), QImage::Format_RGB32);
  opaque.fill(Qt::black);
  QPainter(&opaque).drawImage(0, 0, picture);
  QBuffer bytes;
  QImageWriter writer(&bytes, "jpeg");
  writer.setQuality(90);
  return writer.write(opaque) ? bytes.data() : QByteArray();
}

}  // namespace document
