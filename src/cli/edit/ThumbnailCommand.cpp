#include <QBuffer>
#include <QImageWriter>
#include <QTemporaryDir>

#include "cli/DocumentLoader.h"
#include "cli/RenderOptions.h"
#include "cli/edit/EditCommands.h"
#include "cli/edit/EditSession.h"
#include "cli/edit/TimeText.h"
#include "document/PosterFrame.h"
#include "foundation/DurableFile.h"
#include "render/OutputName.h"

namespace cli {

namespace {

const QString timeOption = QStringLiteral("time");
const QString sizeOption = QStringLiteral("size");

void addOptions(CommandOptions& options) {
  options.value({timeOption}, QStringLiteral("TIME"),
                QStringLiteral("another moment than the poster frame's"));
  options.value({sizeOption}, QStringLiteral("WxH"),
                QStringLiteral("pixels; the format's without it"));
}

tl::expected<QImage, LoadFailure> pictureOf(const OpenDocument& open, double time,
                                            EditSession& session) {
  model::Composition& composition = open.composition();
  const QTemporaryDir folder;
  const QString exported = folder.filePath(QStringLiteral("Composition.qtz"));
  const auto done = DocumentLoader::exportWithSetKeys(*open.document, exported, true);
  if (!done) return tl::unexpected(LoadFailure{ExitStatus::OutputFailed, done.error()});
  QStringList warnings;
  const double before = composition.posterFrameTimepoint();
  composition.setPosterFrameTimepoint(time);
  auto picture = document::PosterFrame::render(composition, exported, open.path,
                                               open.valueSets().thumbnailSet(), warnings);
  composition.setPosterFrameTimepoint(before);
  for (const QString& warning : std::as_const(warnings))
    session.addFinding(open.path + QStringLiteral(": ") + warning);
  if (!picture) return tl::unexpected(LoadFailure{ExitStatus::InputUnreadable, picture.error()});
  return *picture;
}

QByteArray encoded(const QImage& picture, render::PictureFormat format) {
  if (format == render::PictureFormat::Jpeg) return document::PosterFrame::jpeg(picture);
  QBuffer bytes;
  return QImageWriter(&bytes, "png").write(picture) ? bytes.data() : QByteArray();
}

EditCommand::Done run(EditCall& call) {
  const auto name = render::OutputName::read(call.words[0]);
  if (!name) return misused(name.error().text());
  if (!name->isSinglePicture())
    return misused(QStringLiteral("a thumbnail is one .png or .jpg file"));
  std::optional<QSize> size;
  if (call.options.isSet(sizeOption)) {
    const auto given = RenderOptions::sizeFromText(call.options.text(sizeOption));
    if (!given) return misused(given.error().text());
    size = *given;
  }
  const model::Composition& composition = call.document->composition();
  std::optional<double> time = composition.posterFrameTimepoint();
  if (call.options.isSet(timeOption)) {
    time = secondsFromText(call.options.text(timeOption), composition);
    if (!time) return misused(QStringLiteral("--time takes seconds or a time code"));
  }
  auto picture = pictureOf(*call.document, *time, call.session);
  if (!picture) return tl::unexpected(picture.error());
  if (size) *picture = picture->scaled(*size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  const auto written = foundation::replaceFile(call.words[0], encoded(*picture, name->format));
  if (!written) return tl::unexpected(LoadFailure{ExitStatus::OutputFailed, written.error()});
  return {};
}

}  // namespace

EditCommand thumbnailCommand() {
  return {QStringLiteral("thumbnail"),
          QStringLiteral("DOC OUT.png|jpg [--time TIME] [--size WxH]"),
          QStringLiteral("Writes the picture that stands for a document, as saving makes it: the "
                         "poster frame, background\nincluded, or else its poster picture."),
          1,
          1,
          run,
          EditCommand::Document::Read,
          addOptions};
}

}  // namespace cli
