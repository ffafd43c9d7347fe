#include "cli/RenderOptions.h"

#include "cli/ValueSource.h"

#include "model/VideoResolution.h"

namespace cli {

using foundation::failure;

std::unique_ptr<CommandOptions> RenderOptions::syntax() {
  auto made = std::make_unique<CommandOptions>(
      QStringLiteral("render FILE -o OUT [OPTIONS]"),
      QStringLiteral(
          "Renders a composition (.qtz) or a document (.composition). OUT is one picture "
          "(picture.png),\na sequence (name_%05d.png, or a folder), a movie (.mov, .mp4, .webm, "
          ".mkv), or - for raw RGBA on\nstandard output. Times are in seconds. Without --frames or "
          "--duration a file that says when it ends\nis played to that end. A movie has its name "
          "only when it is complete;\nits usual codec is prores4444 in .mov, h264 in .mp4, vp9 in "
          ".webm and .mkv."));
  CommandOptions& o = *made;
  const auto s = [](const char* text) { return QString::fromUtf8(text); };
  o.value({s("o"), s("output")}, s("OUT"), s("where the frames go"));
  o.value({s("size")}, s("WxH"), s("picture size in pixels"));
  o.value({s("mode")}, s("NAME"), s("video format, e.g. \"HD 1080i25\": its size and rate"));
  o.value({s("fps")}, s("N"), s("frames a second: 25, 29.97, 60000/1001"));
  o.value({s("from")}, s("T"), s("time of the first frame kept; playing starts at 0"));
  o.value({s("duration")}, s("T"), s("how long"));
  o.value({s("frames")}, s("N"), s("how many frames"));
  o.value({s("set")}, s("KEY=VALUE"), s("value of a published input; may be repeated"));
  o.pair(s("set-at"), s("T KEY=VALUE"), s("sets it at T while playing; may be repeated"));
  o.value({s("values")}, s("FILE|NAME"),
          s("values of published inputs: a file (.json: {\"key\": value, …}; .csv, .tsv, .txt: a "
            "table), or the name of a set in the document"));
  o.value({s("row")}, s("N"), s("of the values' table (.json too): its row, from 1 on"));
  o.value({s("trigger")}, s("T"), s("presses the trigger at T, or 'auto': at every stop"));
  o.value({s("clock")}, s("TIME"),
          s("what clocks show at 0, e.g. 2026-01-31T20:00:00Z; now by default"));
  o.value({s("codec")}, s("NAME"), s("of a movie: prores4444, qtrle, vp9, h264 (without alpha)"));
  o.flag(s("fields"), s("two fields a frame, upper lines first, each at its own time"));
  o.flag(s("background"), s("with the document's background; compositions lie on black"));
  o.value({s("alpha")}, s("KIND"), s("straight (the default) or premultiplied"));
  o.value({s("threads")}, s("N"), s("threads that draw; one a core by default"));
  o.choices(s("trigger"), {s("auto")});
  o.choices(s("codec"), {s("prores4444"), s("qtrle"), s("vp9"), s("h264")});
  o.choices(s("alpha"), {s("straight"), s("premultiplied")});
  return made;
}

namespace {

foundation::Result<double> seconds(const CommandOptions& options, const QString& name) {
  bool ok = false;
  const double value = options.text(name).toDouble(&ok);
  if (!ok || !(value >= 0) || value > 1e6)
    return failure(
        QStringLiteral("--%1 takes a time in seconds, not '%2'").arg(name, options.text(name)));
  return value;
}

foundation::Result<void> readFormat(const CommandOptions& options, RenderOptions& r) {
  if (options.isSet(QStringLiteral("mode"))) {
    const QString name = options.text(QStringLiteral("mode"));
    const auto format = model::VideoResolution::videoResolutionForBroadcastMode(name);
    if (format.width() == 0)
      return failure(QStringLiteral("there is no video format '%1'").arg(name));
    r.size = QSize(format.width(), format.height());
    r.rate = render::frameRate(format.frameRate());
    r.isInterlaced = format.isInterlaced();
  }
  if (options.isSet(QStringLiteral("size"))) {
    const auto size = RenderOptions::sizeFromText(options.text(QStringLiteral("size")));
    if (!size) return tl::unexpected(size.error());
    r.size = *size;
  }
  if (options.isSet(QStringLiteral("fps"))) {
    r.rate = render::FrameRate::fromText(options.text(QStringLiteral("fps")));
    if (!r.rate)
      return failure(QStringLiteral("--fps takes a rate such as 25, 29.97 or 60000/1001, not '%1'")
                         .arg(options.text(QStringLiteral("fps"))));
    r.isInterlaced = false;  // another rate than the format's
  }
  return {};
}

foundation::Result<void> readTimes(const CommandOptions& options, RenderOptions& r) {
  if (options.isSet(QStringLiteral("from"))) {
    const auto from = seconds(options, QStringLiteral("from"));
    if (!from) return tl::unexpected(from.error());
    r.from = *from;
  }
  if (options.isSet(QStringLiteral("duration"))) {
    const auto duration = seconds(options, QStringLiteral("duration"));
    if (!duration) return tl::unexpected(duration.error());
    r.duration = *duration;
  }
  if (options.isSet(QStringLiteral("frames"))) {
    bool ok = false;
    r.frames = options.text(QStringLiteral("frames")).toLongLong(&ok);
    if (!ok || *r.frames < 1 || *r.frames > 10'000'000)
      return failure(QStringLiteral("--frames takes a number from 1, not '%1'")
                         .arg(options.text(QStringLiteral("frames"))));
  }
  if (r.duration && r.frames)
    return failure(QStringLiteral("--duration and --frames exclude each other"));
  for (const QString& text : options.texts(QStringLiteral("trigger"))) {
    bool ok = false;
    const double time = text.toDouble(&ok);
    if (text == QLatin1String("auto"))
      r.automaticTrigger = true;
    else if (!ok || !(time >= 0))
      return failure(
          QStringLiteral("--trigger takes a time in seconds or 'auto', not '%1'").arg(text));
    else
      r.triggers.push_back(time);
  }
  std::sort(r.triggers.begin(), r.triggers.end());
  if (options.isSet(QStringLiteral("clock"))) {
    const QString text = options.text(QStringLiteral("clock"));
    r.clock = QDateTime::fromString(text, Qt::ISODate);
    if (!r.clock.isValid())
      return failure(
          QStringLiteral("--clock takes a time such as 2026-01-31T20:00:00Z, not '%1'").arg(text));
  }
  return {};
}

foundation::Result<void> readUpdates(const CommandOptions& options, RenderOptions& r) {
  for (const auto& [when, assignment] : options.pairs(QStringLiteral("set-at"))) {
    bool ok = false;
    const double time = when.toDouble(&ok);
    if (!ok || !(time >= 0) || time > 1e6 || assignment.isEmpty())
      return failure(QStringLiteral("--set-at takes a time in seconds and KEY=VALUE, not '%1'")
                         .arg(assignment.isEmpty() ? when : when + QLatin1Char(' ') + assignment));
    r.updates.push_back({time, assignment});
  }
  return {};
}

foundation::Result<void> readMovie(const CommandOptions& options, RenderOptions& r) {
  r.fields = options.isSet(QStringLiteral("fields"));
  if (!options.isSet(QStringLiteral("codec"))) return {};
  const QString name = options.text(QStringLiteral("codec"));
  r.codec = runtime::movie::codecFromName(name);
  if (!r.codec)
    return failure(QStringLiteral("--codec takes %1, not '%2'")
                       .arg(runtime::movie::codecNames().join(QStringLiteral(", ")), name));
  const auto movie = render::FrameTarget{.output = r.output, .codec = r.codec}.movie();
  if (!movie) return failure(QStringLiteral("--codec is for movies: .mov, .mp4, .webm or .mkv"));
  return movie->check();
}

}  // namespace

foundation::Result<QSize> RenderOptions::sizeFromText(const QString& text) {
  const QStringList parts = text.split(QLatin1Char('x'));
  bool ok1 = false;
  bool ok2 = false;
  const QSize size =
      parts.size() == 2 ? QSize(parts[0].toInt(&ok1), parts[1].toInt(&ok2)) : QSize();
  if (!ok1 || !ok2 || !isDrawable(size))
    return failure(QStringLiteral("--size takes WIDTHxHEIGHT, at most 16384 a side and 134 million "
                                  "pixels in all, not '%1'")
                       .arg(text));
  return size;
}

foundation::Result<RenderOptions> RenderOptions::read(const CommandOptions& options) {
  RenderOptions r;
  r.input = options.positional(0);
  const QString output = options.text(QStringLiteral("output"));
  if (output.isEmpty()) return failure(QStringLiteral("-o OUT is missing"));
  const auto name = render::OutputName::read(output);
  if (!name) return tl::unexpected(name.error());
  r.output = *name;
  if (const auto ok = readFormat(options, r); !ok) return tl::unexpected(ok.error());
  if (const auto ok = readTimes(options, r); !ok) return tl::unexpected(ok.error());
  if (const auto ok = readMovie(options, r); !ok) return tl::unexpected(ok.error());
  if (const auto ok = readUpdates(options, r); !ok) return tl::unexpected(ok.error());
  r.assignments = options.texts(QStringLiteral("set"));
  r.values = options.text(QStringLiteral("values"));
  if (options.isSet(QStringLiteral("row"))) {
    const auto row = ValueSource::rowFrom(options.text(QStringLiteral("row")));
    if (!row) return tl::unexpected(row.error().error);
    if (r.values.isEmpty()) return failure(QStringLiteral("--row is for the table of --values"));
    r.valuesRow = *row;
  }
  r.background = options.isSet(QStringLiteral("background"));
  if (options.isSet(QStringLiteral("alpha"))) {
    const QString alpha = options.text(QStringLiteral("alpha"));
    if (alpha != QLatin1String("straight") && alpha != QLatin1String("premultiplied"))
      return failure(
          QStringLiteral("--alpha takes 'straight' or 'premultiplied', not '%1'").arg(alpha));
    r.alpha =
        alpha == QLatin1String("straight") ? render::Alpha::Straight : render::Alpha::Premultiplied;
  }
  if (options.isSet(QStringLiteral("threads"))) {
    bool ok = false;
    r.threads = options.text(QStringLiteral("threads")).toInt(&ok);
    if (!ok || r.threads < 1 || r.threads > 256)
      return failure(QStringLiteral("--threads takes a number from 1 to 256"));
  }
  return r;
}

}  // namespace cli
