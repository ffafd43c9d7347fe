#include "cli/FrameWriter.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include "cli/PictureWriter.h"
#include "cli/RawWriter.h"

namespace cli {

namespace {
const QRegularExpression& numberPlace() {
  static const QRegularExpression place(QStringLiteral("%(0?)([0-9]{0,2})d"));
  return place;
}
bool isFolder(const QString& output) {
  return output.endsWith(QLatin1Char('/')) || QFileInfo(output).isDir();
}
}  // namespace

bool FrameWriter::isSinglePicture(const QString& output) {
  return output != QLatin1String("-") && !isFolder(output) &&
         !numberPlace().match(output).hasMatch();
}

foundation::Result<std::unique_ptr<FrameWriter>> FrameWriter::forOutput(const QString& output,
                                                                        Alpha alpha) {
  if (output == QLatin1String("-")) return std::make_unique<RawWriter>(alpha);
  const QString pattern =
      isFolder(output) ? QDir(output).filePath(QStringLiteral("frame_%05d.png")) : output;
  const QString suffix = QFileInfo(pattern).suffix().toLower();
  if (suffix != QLatin1String("png") && suffix != QLatin1String("jpg") &&
      suffix != QLatin1String("jpeg"))
    return foundation::failure(
        QStringLiteral("cannot write this format; .png, .jpg or - (raw RGBA) are known"), output);
  const QString folder = QFileInfo(pattern).absolutePath();
  if (!QDir().mkpath(folder))
    return foundation::failure(QStringLiteral("cannot make the folder"), folder);
  PictureName name{pattern, {}, 0};
  if (const auto match = numberPlace().match(pattern); match.hasMatch()) {
    name.before = pattern.left(match.capturedStart());
    name.after = pattern.mid(match.capturedEnd());
    name.digits = match.captured(2).toInt();
    name.padding = match.captured(1).isEmpty() ? QLatin1Char(' ') : QLatin1Char('0');
    name.isSequence = true;
  }
  return std::make_unique<PictureWriter>(
      name, suffix == QLatin1String("png") ? PictureFormat::Png : PictureFormat::Jpeg, alpha);
}

}  // namespace cli
