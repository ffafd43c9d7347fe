#include "model/detail/ComponentSource.h"

#include <QDir>
#include <QFileInfo>
#include <cmath>

#include "model/RichFontValue.h"

namespace model {

using RichFont = std::shared_ptr<const RichFontValue>;

namespace {

const QString widthKey = QStringLiteral("width");
const QString heightKey = QStringLiteral("height");

[[noreturn]] void fail(const QString& place, const QString& message) {
  throw SourceFault{place, message};
}

}  // namespace

ComponentSource::ComponentSource(const SourceObject& source, const QString& baseFolder,
                                 const StandardComponents& standardComponents)
    : m_source(source), m_baseFolder(baseFolder), m_standardComponents(standardComponents) {}

void ComponentSource::addTo(Composition& composition, QStringList& warnings) {
  m_source.allowOnly({QStringLiteral("title"), QStringLiteral("component"), QStringLiteral("x"),
                      QStringLiteral("y"), widthKey, heightKey, QStringLiteral("rotation"),
                      QStringLiteral("opacity"), QStringLiteral("margins"),
                      QStringLiteral("startTime"), QStringLiteral("endTime"),
                      QStringLiteral("enabled"), QStringLiteral("inputs"),
                      QStringLiteral("permissions"), QStringLiteral("keyFrames")});
  QStringList ownWarnings;
  m_component = composition.addComponenWithQuartzCompositionFile(componentPath(), {}, ownWarnings);
  if (!m_component) m_source.fail(QStringLiteral("component"), ownWarnings.join(u' '));
  for (const QString& warning : ownWarnings)
    warnings.append(m_source.place() + QStringLiteral(": ") + warning);
  if (m_source.contains(QStringLiteral("title")))
    m_component->setTitle(m_source.text(QStringLiteral("title")));
  readTimes();
  readInputs();
  readPlace();
  readKeyFrames();
  readPermissions();
}

QString ComponentSource::componentPath() const {
  const QString member = QStringLiteral("component");
  const QString name = m_source.text(member);
  if (name.endsWith(QLatin1String(".qtz"))) {
    const QString path = QDir(m_baseFolder).absoluteFilePath(name);
    if (!QFileInfo::exists(path))
      m_source.fail(member, QStringLiteral("there is no file \"%1\"").arg(name));
    return path;
  }
  const std::optional<QString> path = m_standardComponents.pathOf(name);
  if (!path)
    m_source.fail(member, QStringLiteral("there is no standard component \"%1\"").arg(name));
  return *path;
}

void ComponentSource::readPlace() {
  const auto size = [&](const QString& member) {
    const auto given = m_source.optionalNumber(member);
    if (given && *given < 0) m_source.fail(member, QStringLiteral("must not be negative"));
    return given;
  };
  const auto width = size(widthKey);
  const auto height = size(heightKey);
  const Composition& composition = *m_component->composition();
  if (width) m_component->setWidth(*width);
  if (height) m_component->setHeight(*height);
  const auto x = m_source.optionalNumber(QStringLiteral("x"));
  const auto y = m_source.optionalNumber(QStringLiteral("y"));
  m_component->setOriginX(x.value_or((composition.width() - m_component->width()) / 2));
  m_component->setOriginY(y.value_or((composition.height() - m_component->height()) / 2));
  if (const auto angle = m_source.optionalNumber(QStringLiteral("rotation")))
    m_component->setZRotation(*angle);
  if (const auto opacity = m_source.optionalNumber(QStringLiteral("opacity"))) {
    if (*opacity < 0 || *opacity > 1)
      m_source.fail(QStringLiteral("opacity"), QStringLiteral("must lie between 0 and 1"));
    m_component->setOpacity(*opacity);
  }
  const QString margins = QStringLiteral("margins");
  if (!m_source.contains(margins)) return;
  const QJsonArray pair = m_source.list(margins);
  if (pair.size() != 2 || !pair[0].isDouble() || !pair[1].isDouble())
    m_source.fail(margins, QStringLiteral("must be two numbers, [horizontal, vertical]"));
  m_component->setMarginX(pair[0].toDouble());
  m_component->setMarginY(pair[1].toDouble());
}

void ComponentSource::readTimes() {
  const auto start = m_source.optionalNumber(QStringLiteral("startTime"));
  const auto end = m_source.optionalNumber(QStringLiteral("endTime"));
  if (start) m_component->setStartTime(*start);
  if (end) m_component->setEndTime(*end);
  if (m_component->startTime() < 0)
    m_source.fail(QStringLiteral("startTime"), QStringLiteral("must not be negative"));
  if (m_component->duration() < 0)
    m_source.fail(end ? QStringLiteral("endTime") : QStringLiteral("startTime"),
                  QStringLiteral("the end lies before the start"));
  const QString enabled = QStringLiteral("enabled");
  if (m_source.contains(enabled))
    m_component->setVisibleInCompositionEditor(m_source.flag(enabled));
}

void ComponentSource::readInputs() {
  const SourceObject inputs = m_source.object(QStringLiteral("inputs"));
  for (const QString& key : inputs.members()) setInput(inputs, key);
}

void ComponentSource::setInput(const SourceObject& inputs, const QString& key) {
  const QJsonValue json = inputs.value(key);
  if (setMemberOfRichFont(key, json)) return;
  Attribute& target = attribute(key, inputs.placeOf(key));
  if (!target.quartzAttribute() || key == QLatin1String("inputWidth") ||
      key == QLatin1String("inputHeight"))
    inputs.fail(key, QStringLiteral("is set by x, y, width, height, rotation and opacity"));
  target.setCurrentValue(valueFor(target, json, inputs.placeOf(key)));
}

bool ComponentSource::setMemberOfRichFont(const QString& key, const QJsonValue& json) {
  for (const auto& candidate : m_component->attributes()) {
    const AttributeValue current = candidate->currentValue();
    const auto* font = current.as<RichFont>();
    if (!font || !*font || !(*font)->contains(key)) continue;
    auto changed = std::make_shared<RichFontValue>(**font);
    AttributeValue value;
    if (json.isDouble()) value = json.toDouble();
    if (json.isBool()) value = json.toBool();
    if (const auto color = colorFromText(json.toString()))
      value = *color;
    else if (json.isString())
      value = json.toString();
    if (value.isEmpty())
      fail(m_source.placeOf(QStringLiteral("inputs.") + key),
           QStringLiteral("must be a text, a number or a colour"));
    changed->setValueForFullKey(value, key);
    candidate->setCurrentValue(RichFont(changed));
    return true;
  }
  return false;
}

void ComponentSource::readKeyFrames() {
  const SourceObject keyFrames = m_source.object(QStringLiteral("keyFrames"));
  for (const QString& key : keyFrames.members()) {
    const QString place = keyFrames.placeOf(key);
    Attribute& animated = attribute(key, place);
    if (!animated.animationPossible()) fail(place, QStringLiteral("cannot be animated"));
    addKeyFrames(animated, keyFrames.list(key), place);
  }
}

void ComponentSource::addKeyFrames(Attribute& attribute, const QJsonArray& frames,
                                   const QString& place) {
  if (frames.isEmpty()) fail(place, QStringLiteral("needs at least one [time, value]"));
  for (qsizetype i = 0; i < frames.size(); ++i) {
    const QString framePlace = QStringLiteral("%1[%2]").arg(place).arg(i);
    const QJsonArray pair = frames[i].toArray();
    if (pair.size() != 2 || !pair[0].isDouble())
      fail(framePlace, QStringLiteral("must be [time, value]"));
    const double time = pair[0].toDouble();
    if (!std::isfinite(time) || time < 0)
      fail(framePlace, QStringLiteral("the time must not be negative"));
    attribute.addTimepoint(time, valueFor(attribute, pair[1], framePlace));
  }
}

void ComponentSource::readPermissions() {
  const QString member = QStringLiteral("permissions");
  const QJsonArray keys = m_source.list(member);
  for (const QJsonValue& key : keys) {
    const QString place = m_source.placeOf(member);
    if (!key.isString()) fail(place, QStringLiteral("must be a list of keys"));
    Attribute& granted = attribute(key.toString(), place);
    if (granted.animateable())
      fail(place, QStringLiteral("\"%1\" is animated and cannot be changed").arg(key.toString()));
    granted.setPermissionToChange(true);
  }
}

Attribute& ComponentSource::attribute(const QString& key, const QString& place) const {
  if (Attribute* found = m_component->attributeForKey(key)) return *found;
  QStringList keys;
  for (const auto& known : m_component->attributes()) keys.append(known->key());
  fail(place, QStringLiteral("the component has no input \"%1\" (it has %2)")
                  .arg(key, keys.join(QStringLiteral(", "))));
}

AttributeValue ComponentSource::valueFor(const Attribute& attribute, const QJsonValue& json,
                                         const QString& place) const {
  switch (attribute.type()) {
    case AttributeType::Number:
      if (!json.isDouble()) fail(place, QStringLiteral("must be a number"));
      return json.toDouble();
    case AttributeType::Index:
    case AttributeType::IndexWithMenu:
      return indexValue(attribute, json, place);
    case AttributeType::Boolean:
      if (!json.isBool()) fail(place, QStringLiteral("must be true or false"));
      return json.toBool();
    case AttributeType::Color: {
      const auto color = colorFromText(json.toString());
      if (!color) fail(place, QStringLiteral("must be a colour, \"#RRGGBB\" or \"#RRGGBBAA\""));
      return *color;
    }
    case AttributeType::Image:
    case AttributeType::VideoInput:
      return image(json, place);
    case AttributeType::Font:
      return fontValue(json, place);
    case AttributeType::File:
      if (json.isObject()) return filePath(json, place);
      [[fallthrough]];
    default:
      if (!json.isString()) fail(place, QStringLiteral("must be a text"));
      return json.toString();
  }
}

AttributeValue ComponentSource::indexValue(const Attribute& attribute, const QJsonValue& json,
                                           const QString& place) const {
  if (json.isString()) {
    const qsizetype item = attribute.possibleValues().indexOf(json.toString());
    if (item < 0)
      fail(place, QStringLiteral("\"%1\" is none of: %2")
                      .arg(json.toString(), attribute.possibleValues().join(QStringLiteral(", "))));
    return qint64(item);
  }
  const double number = json.toDouble(-1);
  if (number < 0 || number > 1e9 || number != std::floor(number))
    fail(place, QStringLiteral("must be a whole number from 0"));
  return static_cast<qint64>(number);
}

AttributeValue ComponentSource::fontValue(const QJsonValue& json, const QString& place) const {
  const SourceObject font(json, place);
  font.allowOnly({QStringLiteral("font"), QStringLiteral("size")});
  return FontValue{font.text(QStringLiteral("font")), font.number(QStringLiteral("size"))};
}

QString ComponentSource::filePath(const QJsonValue& json, const QString& place) const {
  const SourceObject file(json, place);
  file.allowOnly({QStringLiteral("file")});
  const QString name = file.text(QStringLiteral("file"));
  const QString path = QDir(m_baseFolder).absoluteFilePath(name);
  if (!QFileInfo(path).isFile()) fail(place, QStringLiteral("there is no file \"%1\"").arg(name));
  return path;
}

QImage ComponentSource::image(const QJsonValue& json, const QString& place) const {
  const QString path = filePath(json, place);
  QImage loaded(path);
  if (loaded.isNull())
    fail(place, QStringLiteral("\"%1\" is no readable image").arg(QFileInfo(path).fileName()));
  return loaded;
}

}  // namespace model
