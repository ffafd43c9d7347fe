#include "model/CompositionSource.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include "model/Composition.h"
#include "model/detail/ComponentSource.h"
#include "model/detail/SourceReader.h"
#include "store/ObjectContext.h"

namespace model {

using foundation::Result;

namespace {

constexpr qint64 largestSource = 16 * 1024 * 1024;

VideoResolution readFormat(const SourceObject& source) {
  const QString member = QStringLiteral("format");
  const QString name = source.text(member);
  const VideoResolution format(name);
  if (format.width() == 0)
    source.fail(member, QStringLiteral("there is no video format \"%1\"").arg(name));
  return format;
}

void readBackground(const SourceObject& source, const QString& folder, Composition& composition) {
  const QString member = QStringLiteral("background");
  if (!source.contains(member)) return;
  const SourceObject background = source.object(member);
  const QString color = QStringLiteral("color");
  const QString image = QStringLiteral("image");
  const QString movie = QStringLiteral("movie");
  background.allowOnly({color, image, movie});
  if (background.members().size() != 1)
    source.fail(member, QStringLiteral("must be one of color, image and movie"));
  if (background.contains(color)) {
    const auto parsed = colorFromText(background.text(color));
    if (!parsed) background.fail(color, QStringLiteral("must be \"#RRGGBB\" or \"#RRGGBBAA\""));
    composition.setBackgroundColor(*parsed);
    composition.setBackgroundMode(BackgroundMode::SolidColor);
    return;
  }
  composition.setBackgroundMode(BackgroundMode::Image);
  const QString name = background.text(background.contains(image) ? image : movie);
  const QString path = QDir(folder).absoluteFilePath(name);
  if (!QFileInfo(path).isFile())
    source.fail(member, QStringLiteral("there is no file \"%1\"").arg(name));
  if (background.contains(movie)) {
    composition.setBackgroundMovie(path);
    return;
  }
  const QImage picture(path);
  if (picture.isNull())
    background.fail(image, QStringLiteral("\"%1\" is no readable image").arg(name));
  composition.setBackgroundImage(picture);
}

void readStopFrames(const SourceObject& source, Composition& composition) {
  const QJsonArray list = source.list(QStringLiteral("stopFrames"));
  for (qsizetype i = 0; i < list.size(); ++i) {
    const SourceObject stopFrame(list[i], QStringLiteral("stopFrames[%1]").arg(i));
    const QString time = QStringLiteral("time");
    const QString trigger = QStringLiteral("trigger");
    stopFrame.allowOnly({time, trigger});
    const double timepoint = stopFrame.number(time);
    if (timepoint < 0 || timepoint > composition.duration())
      stopFrame.fail(time, QStringLiteral("must lie within the duration"));
    composition.addStopFrame(timepoint,
                             stopFrame.contains(trigger) ? stopFrame.text(trigger) : QString());
  }
}

SourcedComposition read(const SourceObject& source, const QString& folder,
                        const StandardComponents& standardComponents) {
  const QString duration = QStringLiteral("duration");
  const QString poster = QStringLiteral("poster");
  const QString components = QStringLiteral("components");
  source.allowOnly({QStringLiteral("format"), duration, poster, QStringLiteral("background"),
                    QStringLiteral("stopFrames"), components});
  SourcedComposition result;
  result.context = std::make_unique<store::ObjectContext>();
  const store::UndoSuspension suspension(*result.context);
  result.composition = result.context->insert(std::make_unique<Composition>(readFormat(source)));
  Composition& composition = *result.composition;
  composition.setDuration(source.number(duration));
  if (composition.duration() <= 0) source.fail(duration, QStringLiteral("must be above 0"));
  composition.setPosterFrameTimepoint(source.optionalNumber(poster).value_or(-1));
  readBackground(source, folder, composition);
  readStopFrames(source, composition);
  const QJsonArray list = source.list(components);
  for (qsizetype i = 0; i < list.size(); ++i) {
    SourceObject component(list[i], QStringLiteral("components[%1]").arg(i));
    const QString title = component.value(QStringLiteral("title")).toString();
    if (!title.isEmpty())
      component.setPlace(component.place() + QStringLiteral(" \"%1\"").arg(title));
    ComponentSource(component, folder, standardComponents).addTo(composition, result.warnings);
  }
  composition.clearSelection();
  result.context->markSaved();
  return result;
}

QString placeOfOffset(const QByteArray& json, qsizetype offset) {
  const QByteArray before = json.left(offset);
  const qsizetype column = before.size() - before.lastIndexOf('\n');
  return QStringLiteral("line %1, column %2").arg(before.count('\n') + 1).arg(column);
}

}  // namespace

SourcedComposition::SourcedComposition() = default;
SourcedComposition::SourcedComposition(SourcedComposition&&) noexcept = default;
SourcedComposition& SourcedComposition::operator=(SourcedComposition&&) noexcept = default;
SourcedComposition::~SourcedComposition() = default;

Result<SourcedComposition> CompositionSource::compositionFromFile(const QString& path) const {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return foundation::failure(file.errorString(), path);
  if (file.size() > largestSource)
    return foundation::failure(QStringLiteral("is too large for a source"), path);
  return compositionFromData(file.readAll(), path);
}

Result<SourcedComposition> CompositionSource::compositionFromData(const QByteArray& json,
                                                                  const QString& path) const {
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(json, &error);
  if (error.error != QJsonParseError::NoError)
    return foundation::failure(error.errorString(), path, placeOfOffset(json, error.offset));
  try {
    return read(
        SourceObject(document.isObject() ? QJsonValue(document.object()) : QJsonValue(), {}),
        QFileInfo(path).absolutePath(), m_standardComponents);
  } catch (const SourceFault& fault) {
    const QString place = fault.place.isEmpty() ? QStringLiteral("the source") : fault.place;
    return foundation::failure(place + QStringLiteral(": ") + fault.message, path);
  }
}

}  // namespace model
