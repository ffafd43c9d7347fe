#include "cli/DocumentReport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>

#include "model/AttributeWords.h"
#include "model/RichFontValue.h"

namespace cli {

using model::Attribute;
using model::AttributeValue;
using model::AttributeWords;
using model::QuartzComponent;

namespace {

QString colorText(const foundation::Color& color) {
  const QColor c = color.toQColor();
  return QStringLiteral("#%1%2").arg(
      c.name().mid(1).toUpper(),
      QStringLiteral("%1").arg(c.alpha(), 2, 16, QLatin1Char('0')).toUpper());
}

QString fontText(const model::FontValue& font) {
  return QStringLiteral("%1, %2 pt").arg(font.name, runtime::numberText(font.size));
}

QJsonValue valueJson(const AttributeValue& value) {
  if (const auto* v = value.as<bool>()) return *v;
  if (const auto* v = value.as<qint64>()) return *v;
  if (const auto* v = value.as<double>()) return *v;
  if (const auto* v = value.as<QString>()) return *v;
  if (const auto* v = value.as<foundation::Color>()) return colorText(*v);
  if (const auto* v = value.as<QImage>())
    return QStringLiteral("image %1x%2").arg(v->width()).arg(v->height());
  if (const auto* v = value.as<model::FontValue>()) return fontText(*v);
  if (const auto* v = value.as<std::shared_ptr<const model::RichFontValue>>())
    return fontText((*v)->font());
  return QJsonValue::Null;
}

QString valueText(const AttributeValue& value) {
  const QJsonValue json = valueJson(value);
  if (value.as<QString>()) return QLatin1Char('"') + json.toString() + QLatin1Char('"');
  if (json.isNull()) return QStringLiteral("none");
  if (json.isDouble()) return runtime::numberText(json.toDouble());
  if (json.isBool()) return json.toBool() ? QStringLiteral("true") : QStringLiteral("false");
  return json.toString();
}

/// Key frames are kept in single precision; what that adds is not shown.
double shownTime(double time) {
  return std::round(time * 1e5) / 1e5;
}

/// Times and values of an animated attribute; one that is not animated has none.
QList<std::pair<double, AttributeValue>> keyFrames(const Attribute& attribute) {
  QList<std::pair<double, AttributeValue>> frames;
  if (attribute.animateable())
    for (const double time : attribute.values().sortedKeyFrames())
      if (time != model::noTimepoint)
        frames.append({shownTime(time), attribute.valueForTimepoint(time)});
  return frames;
}

QStringList attributeLines(const Attribute& attribute) {
  const QString line = QStringLiteral("    %1  %2")
                           .arg(attribute.key(), -24)
                           .arg(AttributeWords::typeWord(attribute.type()), -9);
  const auto frames = keyFrames(attribute);
  if (frames.isEmpty()) return {line + QStringLiteral(" = ") + valueText(attribute.currentValue())};
  QStringList texts;
  for (const auto& [time, value] : frames)
    texts += QStringLiteral("%1 s: %2").arg(runtime::numberText(time), valueText(value));
  return {line + QStringLiteral("  ") + texts.join(QStringLiteral(", "))};
}

QJsonObject attributeJson(const Attribute& attribute) {
  QJsonObject o{{QStringLiteral("key"), attribute.key()},
                {QStringLiteral("label"), attribute.label()},
                {QStringLiteral("type"), AttributeWords::typeWord(attribute.type())},
                {QStringLiteral("value"), valueJson(attribute.currentValue())},
                {QStringLiteral("mayBeChanged"), attribute.permissionToChange()}};
  QJsonArray frames;
  for (const auto& [time, value] : keyFrames(attribute))
    frames.append(
        QJsonObject{{QStringLiteral("time"), time}, {QStringLiteral("value"), valueJson(value)}});
  if (!frames.isEmpty()) o.insert(QStringLiteral("keyFrames"), frames);
  return o;
}

QJsonObject componentJson(const QuartzComponent& component) {
  QJsonArray attributes;
  for (const auto& attribute : component.attributes()) attributes.append(attributeJson(*attribute));
  return {{QStringLiteral("title"), component.title()},
          {QStringLiteral("startTime"), component.startTime()},
          {QStringLiteral("endTime"), component.endTime()},
          {QStringLiteral("attributes"), attributes}};
}

QString backgroundText(const model::Composition& composition) {
  if (composition.solidColorBackgroundMode()) return colorText(composition.backgroundColor());
  if (!composition.backgroundMovie().isEmpty()) return composition.backgroundMovie();
  const QImage& image = composition.backgroundImage();
  return QStringLiteral("image %1x%2").arg(image.width()).arg(image.height());
}

QString stopName(const model::StopFrame& stop) {
  return stop.triggerInformation();
}

QList<model::StopFrame*> stopFramesByTime(const model::Composition& composition) {
  QList<model::StopFrame*> stops = composition.stopFrames().list();
  std::stable_sort(stops.begin(), stops.end(),
                   [](const auto* a, const auto* b) { return a->timepoint() < b->timepoint(); });
  return stops;
}

QString setFacts(const playout::ValueSet& set, const playout::ValueSets& sets) {
  const QString keys = set.values.keys().join(QStringLiteral(", "));
  const QString shown =
      set.name == sets.thumbnailName() ? QStringLiteral(", in the thumbnail") : QString();
  return (keys.isEmpty() ? QStringLiteral("no values") : keys) + shown;
}

QJsonArray setsJson(const playout::ValueSets& sets) {
  QJsonArray list;
  for (const playout::ValueSet& set : sets.list())
    list.append(QJsonObject{{QStringLiteral("name"), set.name},
                            {QStringLiteral("values"), set.values},
                            {QStringLiteral("isInThumbnail"), set.name == sets.thumbnailName()}});
  return list;
}

}  // namespace

DocumentReport::DocumentReport(QString file, const DocumentLoader& document)
    : m_file(std::move(file)),
      m_composition(document.composition()),
      m_values(document.document->valueSets()),
      m_warnings(document.warnings()) {}

QString DocumentReport::text() const {
  const auto seconds = [](double time) { return runtime::numberText(time) + QStringLiteral(" s"); };
  QStringList lines{m_file,
                    QStringLiteral("format    %1, %2 x %3")
                        .arg(m_composition.broadcastMode())
                        .arg(m_composition.width())
                        .arg(m_composition.height()),
                    QStringLiteral("duration  ") + seconds(m_composition.duration())};
  if (m_composition.posterFrameMode() == 0)
    lines += QStringLiteral("poster    ") + seconds(m_composition.posterFrameTimepoint());
  if (m_composition.backgroundMode() != model::BackgroundMode::None)
    lines += QStringLiteral("background  ") + backgroundText(m_composition);
  if (const auto stops = stopFramesByTime(m_composition); !stops.isEmpty()) {
    lines += QStringLiteral("stop frames (%1)").arg(stops.size());
    for (const model::StopFrame* stop : stops)
      lines += QStringLiteral("  %1  %2").arg(seconds(stop->timepoint()), stopName(*stop));
  }
  const QList<QuartzComponent*> components = m_composition.componentsSortedByZLevel();
  lines += QStringLiteral("components, lowest first (%1)").arg(components.size());
  for (const QuartzComponent* component : components) {
    lines += QStringLiteral("  %1  %2 … %3")
                 .arg(component->title(), seconds(component->startTime()),
                      seconds(component->endTime()));
    for (const auto& attribute : component->attributes()) lines += attributeLines(*attribute);
  }
  if (!m_values.isEmpty())
    lines += QStringLiteral("sets of values (%1)").arg(m_values.list().size());
  for (const playout::ValueSet& set : m_values.list())
    lines += QStringLiteral("  %1  %2").arg(set.name, setFacts(set, m_values));
  for (const QString& warning : m_warnings) lines += QStringLiteral("note: ") + warning;
  return lines.join(QLatin1Char('\n'));
}

QString DocumentReport::json() const {
  QJsonArray stops;
  for (const model::StopFrame* stop : stopFramesByTime(m_composition))
    stops.append(QJsonObject{{QStringLiteral("name"), stopName(*stop)},
                             {QStringLiteral("time"), stop->timepoint()}});
  QJsonArray components;
  for (const QuartzComponent* component : m_composition.componentsSortedByZLevel())
    components.append(componentJson(*component));
  QJsonObject o{{QStringLiteral("file"), m_file},
                {QStringLiteral("format"), m_composition.broadcastMode()},
                {QStringLiteral("width"), m_composition.width()},
                {QStringLiteral("height"), m_composition.height()},
                {QStringLiteral("duration"), m_composition.duration()},
                {QStringLiteral("stopFrames"), stops},
                {QStringLiteral("components"), components},
                {QStringLiteral("valueSets"), setsJson(m_values)},
                {QStringLiteral("findings"), QJsonArray::fromStringList(m_warnings)}};
  if (m_composition.posterFrameMode() == 0)
    o.insert(QStringLiteral("poster"), m_composition.posterFrameTimepoint());
  if (m_composition.backgroundMode() != model::BackgroundMode::None)
    o.insert(QStringLiteral("background"), backgroundText(m_composition));
  return QString::fromUtf8(QJsonDocument(o).toJson(QJsonDocument::Indented)).trimmed();
}

}  // namespace cli
