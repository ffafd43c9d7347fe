#include "render/OutputName.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace render {

namespace {

bool isFolder(const QString& text) {
  return text.endsWith(QLatin1Char('/')) || QFileInfo(text).isDir();
}

foundation::Result<PictureFormat> formatOf(const QString& pattern) {
  const QString suffix = QFileInfo(pattern).suffix().toLower();
  if (suffix == QLatin1String("png")) return PictureFormat::Png;
  if (suffix == QLatin1String("jpg") || suffix == QLatin1String("jpeg")) return PictureFormat::Jpeg;
  return foundation::failure(
      QStringLiteral(
          "cannot write '%1'; pictures end in .png, .jpg or .jpeg, movies in .mov, .mp4, "
          ".webm or .mkv, and - is raw RGBA on standard output")
          .arg(pattern));
}

/// Only the file's own name has a number place; folders are what they are called.
foundation::Result<PictureName> nameOf(const QString& pattern) {
  static const QRegularExpression anyPlace(QStringLiteral("%[0-9]*[A-Za-z]"));
  static const QRegularExpression numberPlace(QStringLiteral("^%(0?)([0-9]{0,2})d$"));
  const qsizetype start = pattern.lastIndexOf(QLatin1Char('/')) + 1;
  auto places = anyPlace.globalMatch(pattern, start);
  if (!places.hasNext()) return PictureName{pattern, {}, 0};
  const QRegularExpressionMatch place = places.next();
  const auto number = numberPlace.match(place.captured());
  if (!number.hasMatch() || places.hasNext())
    return foundation::failure(
        QStringLiteral("'%1' needs one number place such as %05d and no other").arg(pattern));
  return PictureName{pattern.left(place.capturedStart()), pattern.mid(place.capturedEnd()),
                     number.captured(2).toInt(),
                     number.captured(1).isEmpty() ? QLatin1Char(' ') : QLatin1Char('0'), true};
}

}  // namespace

QString PictureName::of(qint64 number) const {
  return isSequence ? before + QStringLiteral("%1").arg(number, digits, 10, padding) + after
                    : before;
}

foundation::Result<OutputName> OutputName::read(const QString& text) {
  if (text == QLatin1String("-")) return OutputName{.text = text, .isStream = true};
  const QString pattern =
      isFolder(text) ? QDir(text).filePath(QStringLiteral("frame_%05d.png")) : text;
  const auto name = nameOf(pattern);
  if (!name) return tl::unexpected(name.error());
  if (const auto movie = runtime::movie::containerOf(pattern)) {
    if (name->isSequence)
      return foundation::failure(
          QStringLiteral("'%1' is one movie and takes no number place").arg(text));
    return OutputName{text, false, *name, PictureFormat::Png, movie};
  }
  const auto format = formatOf(pattern);
  if (!format) return tl::unexpected(format.error());
  return OutputName{text, false, *name, *format, {}};
}

QString OutputName::folder() const {
  return QFileInfo(name.of(0)).absolutePath();
}

}  // namespace render
