#include "app/RenderChoices.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include "foundation/UserDefaults.h"
#include "model/Composition.h"

namespace app {

using foundation::failure;
using render::RenderSettings;
using runtime::movie::MovieCodec;

namespace {

constexpr double longestHold = 3600;  // seconds
const QString folderKey = QStringLiteral("renderFolder");
const QString kindKey = QStringLiteral("renderKind");
const QString formatKeys[] = {QStringLiteral("renderMovieFormat"),
                              QStringLiteral("renderPicturesFormat"),
                              QStringLiteral("renderStillFormat")};
const QString sizeKey = QStringLiteral("renderSize");
const QString ownSizeKey = QStringLiteral("renderOwnSize");
const QString rateKey = QStringLiteral("renderRate");
const QString fieldsKey = QStringLiteral("renderFields");
const QString holdKey = QStringLiteral("renderStopHold");
const QString backgroundKey = QStringLiteral("renderBackground");
const QString alphaKey = QStringLiteral("renderPremultiplied");

QString codecTitle(MovieCodec codec) {
  switch (codec) {
    case MovieCodec::ProRes4444:
      return QStringLiteral("ProRes 4444");
    case MovieCodec::QuickTimeRle:
      return QStringLiteral("QuickTime RLE");
    case MovieCodec::Vp9:
      return QStringLiteral("VP9");
    case MovieCodec::H264:
      return QStringLiteral("H.264");
  }
  return {};
}

RenderFormat pictureFormat(const char* suffix, const char* name, bool keepsAlpha) {
  const QString title = QString::fromLatin1(name);
  return {.suffix = QString::fromLatin1(suffix),
          .keepsAlpha = keepsAlpha,
          .title = keepsAlpha ? RenderChoices::tr("%1, with alpha").arg(title) : title};
}

QList<RenderFormat> movieFormats() {
  QList<RenderFormat> formats;
  for (const char* ending : {"mov", "mp4", "webm", "mkv"}) {
    const QString suffix = QString::fromLatin1(ending);
    const auto container = runtime::movie::containerOf(QStringLiteral("a.") + suffix);
    for (const MovieCodec codec : runtime::movie::codecsOf(*container)) {
      const bool keepsAlpha = runtime::movie::keepsAlpha(codec);
      const QString title =
          keepsAlpha ? RenderChoices::tr("%1 (.%2), with alpha") : QStringLiteral("%1 (.%2)");
      formats.append({suffix, codec, keepsAlpha, title.arg(codecTitle(codec), suffix)});
    }
  }
  return formats;
}

/// A name for the file beside which nothing of that name lies.
QString freePath(const QString& folder, const QString& name, const QString& ending) {
  QString path = QDir(folder).filePath(name + ending);
  for (int i = 2; QFileInfo::exists(path); ++i)
    path = QDir(folder).filePath(QStringLiteral("%1 %2%3").arg(name).arg(i).arg(ending));
  return path;
}

template <typename E>
E kept(const foundation::UserDefaults& defaults, const QString& key, E last) {
  const int value = defaults.value(key).toInt();
  return value > 0 && value <= static_cast<int>(last) ? static_cast<E>(value) : E{};
}

}  // namespace

QString RenderFormat::identifier() const {
  return codec ? suffix + u' ' + runtime::movie::codecName(*codec) : suffix;
}

QList<RenderFormat> RenderChoices::formats(Kind kind) {
  if (kind == Kind::Movie) return movieFormats();
  return {pictureFormat("png", "PNG", true), pictureFormat("jpg", "JPEG", false)};
}

RenderFormat RenderChoices::chosenFormat() const {
  const QList<RenderFormat> all = formats(kind);
  for (const RenderFormat& each : all)
    if (each.identifier() == format[static_cast<int>(kind)]) return each;
  return all.first();
}

QSize RenderChoices::pixels(const model::Composition& composition) const {
  const QSize whole = composition.size().toSize();
  // Even, as most codecs want it.
  if (size == Size::Half)
    return QSize(std::max(whole.width() / 4 * 2, 2), std::max(whole.height() / 4 * 2, 2));
  return size == Size::Own ? ownSize : whole;
}

bool RenderChoices::hasFields(const model::Composition& composition) const {
  return composition.videoResolution().isInterlaced() && kind != Kind::Still && rate.isEmpty() &&
         size == Size::Format;
}

QString RenderChoices::fittingPath() const {
  static const QStringList known{
      QStringLiteral("mov"), QStringLiteral("mp4"), QStringLiteral("webm"), QStringLiteral("mkv"),
      QStringLiteral("png"), QStringLiteral("jpg"), QStringLiteral("jpeg")};
  if (path.isEmpty()) return {};
  const QFileInfo file(path);
  const bool hasEnding = known.contains(file.suffix(), Qt::CaseInsensitive);
  const QString bare = hasEnding ? path.chopped(file.suffix().size() + 1) : path;
  if (kind == Kind::Pictures) return hasEnding && !file.isDir() ? bare : path;
  const QString ending = chosenFormat().suffix;
  const bool fits = file.suffix().compare(ending, Qt::CaseInsensitive) == 0 ||
                    (ending == QLatin1String("jpg") &&
                     file.suffix().compare(QLatin1String("jpeg"), Qt::CaseInsensitive) == 0);
  return fits ? path : bare + u'.' + ending;
}

foundation::Result<RenderSettings> RenderChoices::settings(
    const model::Composition& composition) const {
  if (path.trimmed().isEmpty())
    return failure(kind == Kind::Pictures ? tr("Choose a folder.") : tr("Choose a file."));
  if (!QDir::isAbsolutePath(path)) return failure(tr("Give the whole path, beginning with \"/\"."));
  if (kind != Kind::Pictures && QFileInfo(path).isDir())
    return failure(tr("A folder of that name is there already."));
  RenderSettings s;
  const RenderFormat file = chosenFormat();
  const QString name = kind == Kind::Pictures
                           ? QDir(path).filePath(QStringLiteral("frame_%05d.") + file.suffix)
                           : fittingPath();
  const auto output = render::OutputName::read(name);
  if (!output) return tl::unexpected(output.error());
  s.output = *output;
  s.codec = file.codec;
  s.size = pixels(composition);
  if (!RenderSettings::isDrawable(*s.size))
    return failure(
        tr("A picture of %1 × %2 cannot be drawn.").arg(s.size->width()).arg(s.size->height()));
  if (!rate.isEmpty()) s.rate = render::FrameRate::fromText(rate);
  const bool twoFields = hasFields(composition);
  s.isInterlaced = twoFields && kind == Kind::Movie;
  s.fields = fields && twoFields;
  s.passesStops = kind == Kind::Still;
  s.automaticTrigger = !s.passesStops;
  s.stopHold = s.passesStops ? 0 : std::clamp(stopHold, 0.0, longestHold);
  if (kind == Kind::Still) {
    s.from = stillAt;
    s.frames = 1;
  } else if (extent == Extent::FromTo) {
    if (to <= from) return failure(tr("The end has to lie behind the beginning."));
    s.from = from;
    s.duration = to - from;
  }
  s.background = background;
  s.alpha = alpha;
  const auto movie =
      render::FrameTarget{.output = s.output, .size = *s.size, .codec = s.codec}.movie();
  if (movie) {
    auto checked = *movie;
    checked.isInterlaced = s.fields || *s.isInterlaced;
    if (const auto ok = checked.check(); !ok) return tl::unexpected(ok.error());
  }
  return s;
}

std::optional<QString> RenderChoices::presentFile() const {
  if (kind != Kind::Pictures) {
    const QString file = fittingPath();
    return QFileInfo::exists(file) ? std::optional(file) : std::nullopt;
  }
  const QDir folder(path);
  const QStringList there = folder.entryList({QStringLiteral("frame_*.") + chosenFormat().suffix},
                                             QDir::Files, QDir::Name);
  return there.isEmpty() ? std::nullopt : std::optional(folder.filePath(there.first()));
}

RenderChoices RenderChoices::proposed(foundation::UserDefaults& defaults,
                                      const model::Composition& composition, const QString& name,
                                      const QString& folder) {
  RenderChoices c;
  c.kind = kept(defaults, kindKey, Kind::Still);
  for (int i = 0; i < 3; ++i) c.format[i] = defaults.value(formatKeys[i]).toString();
  c.size = kept(defaults, sizeKey, Size::Own);
  c.ownSize = defaults.value(ownSizeKey).toSize();
  if (!RenderSettings::isDrawable(c.ownSize)) c.ownSize = composition.size().toSize();
  c.rate = defaults.value(rateKey).toString();
  if (!render::FrameRate::fromText(c.rate)) c.rate.clear();
  const QVariant fields = defaults.value(fieldsKey);
  c.fields = !fields.isValid() || fields.toBool();
  const QVariant hold = defaults.value(holdKey);
  if (hold.isValid()) c.stopHold = std::clamp(hold.toDouble(), 0.0, longestHold);
  c.background = defaults.value(backgroundKey).toBool();
  c.alpha =
      defaults.value(alphaKey).toBool() ? render::Alpha::Premultiplied : render::Alpha::Straight;
  const auto stops = static_cast<double>(composition.stopFrames().size());
  c.to = composition.duration() + stops * c.stopHold;
  c.stillAt = composition.editorTimepoint();
  QString place = defaults.value(folderKey).toString();
  if (place.isEmpty() || !QFileInfo(place).isDir()) place = folder;
  if (place.isEmpty()) place = QStandardPaths::writableLocation(QStandardPaths::MoviesLocation);
  if (place.isEmpty() || !QFileInfo(place).isDir()) place = QDir::homePath();
  const QString ending = c.kind == Kind::Pictures ? QString() : u'.' + c.chosenFormat().suffix;
  c.path = freePath(place, name, ending);
  return c;
}

void RenderChoices::remember(foundation::UserDefaults& defaults) const {
  defaults.setValue(static_cast<int>(kind), kindKey);
  for (int i = 0; i < 3; ++i) defaults.setValue(format[i], formatKeys[i]);
  defaults.setValue(static_cast<int>(size), sizeKey);
  defaults.setValue(ownSize, ownSizeKey);
  defaults.setValue(rate, rateKey);
  defaults.setValue(fields, fieldsKey);
  defaults.setValue(stopHold, holdKey);
  defaults.setValue(background, backgroundKey);
  defaults.setValue(alpha == render::Alpha::Premultiplied, alphaKey);
  defaults.setValue(QFileInfo(path).path(), folderKey);
}

}  // namespace app
