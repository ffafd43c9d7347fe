#include "cli/InfoReport.h"

#include <QJsonArray>
#include <QJsonDocument>

#include "playout/ValueJson.h"

namespace cli {

using runtime::PortAttributes;
using runtime::PortType;
using runtime::Value;

namespace {

/// "number", "string" …; "virtual" for ports that take anything.
QString typeWord(PortType type) {
  const QString name = runtime::portTypeName(type);
  return name.isEmpty() ? QStringLiteral("virtual") : name.mid(10).toLower();
}

QString valueText(const Value& value, PortType type) {
  if (const auto* color = value.as<foundation::Color>())
    return playout::ValueJson::colorText(*color);
  if (const auto* image = value.as<runtime::Image>())
    return QStringLiteral("image %1x%2").arg(image->size().width()).arg(image->size().height());
  if (type == PortType::Boolean)
    return value.toBoolean() ? QStringLiteral("true") : QStringLiteral("false");
  if (type == PortType::String) return QLatin1Char('"') + value.toString() + QLatin1Char('"');
  return value.isEmpty() ? QStringLiteral("none") : value.toString();
}

/// Images are only described.
QJsonValue valueJson(const Value& value, PortType type) {
  if (value.isEmpty()) return QJsonValue::Null;
  const QJsonValue json = playout::ValueJson::of(value, type);
  return json.isUndefined() ? valueText(value, type) : json;
}

QJsonObject portJson(const PortAttributes& port, bool isInput) {
  QJsonObject o{{QStringLiteral("key"), port.key},
                {QStringLiteral("label"), port.label},
                {QStringLiteral("type"), typeWord(port.type)}};
  if (isInput) o.insert(QStringLiteral("default"), valueJson(port.defaultValue, port.type));
  if (port.minimum) o.insert(QStringLiteral("minimum"), *port.minimum);
  if (port.maximum) o.insert(QStringLiteral("maximum"), *port.maximum);
  if (!port.menu.isEmpty()) o.insert(QStringLiteral("menu"), QJsonArray::fromStringList(port.menu));
  return o;
}

QString portLine(const PortAttributes& port, bool isInput) {
  QString line = QStringLiteral("  %1  %2  \"%3\"")
                     .arg(port.key, -24)
                     .arg(typeWord(port.type), -9)
                     .arg(port.label);
  if (isInput) line += QStringLiteral(" = ") + valueText(port.defaultValue, port.type);
  if (port.minimum || port.maximum)
    line += QStringLiteral("  %1 … %2")
                .arg(port.minimum ? runtime::numberText(*port.minimum) : QString(),
                     port.maximum ? runtime::numberText(*port.maximum) : QString());
  if (!port.menu.isEmpty())
    line += QStringLiteral("  {%1}").arg(port.menu.join(QStringLiteral(", ")));
  return line;
}

QString patchName(const runtime::PatchUse& use) {
  return use.identifier.isEmpty() ? use.className
                                  : use.className + QLatin1Char(':') + use.identifier;
}

}  // namespace

InfoReport::InfoReport(QString file, render::CompositionSummary summary,
                       const runtime::CompositionRenderer& renderer)
    : m_file(std::move(file)),
      m_summary(std::move(summary)),
      m_patches(renderer.compiled().patchUses()),
      m_findings(renderer.findings()) {
  for (const QString& key : renderer.inputKeys())
    m_inputs.push_back(*renderer.inputAttributes(key));
  for (const QString& key : renderer.outputKeys())
    m_outputs.push_back(*renderer.outputAttributes(key));
}

QString InfoReport::text() const {
  QStringList lines{m_file};
  if (m_summary.size)
    lines += QStringLiteral("size      %1 x %2")
                 .arg(m_summary.size->width())
                 .arg(m_summary.size->height());
  if (m_summary.duration)
    lines += QStringLiteral("duration  %1 s").arg(runtime::numberText(*m_summary.duration));
  const auto ports = [&lines](const QString& title, const std::vector<PortAttributes>& list,
                              bool isInput) {
    lines += QStringLiteral("%1 (%2)").arg(title).arg(list.size());
    for (const PortAttributes& port : list) lines += portLine(port, isInput);
  };
  ports(QStringLiteral("inputs"), m_inputs, true);
  ports(QStringLiteral("outputs"), m_outputs, false);
  if (!m_summary.stopFrames.empty()) {
    lines += QStringLiteral("stop frames (%1)").arg(m_summary.stopFrames.size());
    for (const auto& stop : m_summary.stopFrames)
      lines += QStringLiteral("  %1 s  %2").arg(runtime::numberText(stop.time), stop.name);
  }
  if (!m_summary.components.isEmpty()) {
    lines += QStringLiteral("components, lowest first (%1)").arg(m_summary.components.size());
    for (const QString& title : m_summary.components) lines += QStringLiteral("  ") + title;
  }
  lines += QStringLiteral("patches (%1)").arg(m_patches.size());
  for (const runtime::PatchUse& use : m_patches)
    lines += QStringLiteral("  %1 x %2%3")
                 .arg(use.count, 5)
                 .arg(patchName(use), use.known ? QString() : QStringLiteral("  (unknown)"));
  for (const QString& finding : m_findings) lines += QStringLiteral("note: ") + finding;
  return lines.join(QLatin1Char('\n'));
}

QString InfoReport::json() const {
  QJsonObject o{{QStringLiteral("file"), m_file}};
  if (m_summary.size) {
    o.insert(QStringLiteral("width"), m_summary.size->width());
    o.insert(QStringLiteral("height"), m_summary.size->height());
  }
  if (m_summary.duration) o.insert(QStringLiteral("duration"), *m_summary.duration);
  QJsonArray inputs;
  for (const PortAttributes& port : m_inputs) inputs.append(portJson(port, true));
  QJsonArray outputs;
  for (const PortAttributes& port : m_outputs) outputs.append(portJson(port, false));
  QJsonArray stops;
  for (const auto& stop : m_summary.stopFrames)
    stops.append(
        QJsonObject{{QStringLiteral("name"), stop.name}, {QStringLiteral("time"), stop.time}});
  QJsonArray patches;
  for (const runtime::PatchUse& use : m_patches)
    patches.append(QJsonObject{{QStringLiteral("class"), use.className},
                               {QStringLiteral("identifier"), use.identifier},
                               {QStringLiteral("count"), use.count},
                               {QStringLiteral("known"), use.known}});
  o.insert(QStringLiteral("inputs"), inputs);
  o.insert(QStringLiteral("outputs"), outputs);
  o.insert(QStringLiteral("stopFrames"), stops);
  o.insert(QStringLiteral("components"), QJsonArray::fromStringList(m_summary.components));
  o.insert(QStringLiteral("patches"), patches);
  o.insert(QStringLiteral("findings"), QJsonArray::fromStringList(m_findings));
  return QString::fromUtf8(QJsonDocument(o).toJson(QJsonDocument::Indented)).trimmed();
}

}  // namespace cli
