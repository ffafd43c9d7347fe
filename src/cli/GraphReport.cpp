#include "cli/GraphReport.h"

#include <QMap>
#include <QSet>

#include "foundation/Color.h"
#include "playout/ValueJson.h"
#include "runtime/Value.h"

namespace cli {

using foundation::PropertyDictionary;
using foundation::PropertyValue;
using quartz::QuartzPatch;

namespace {

constexpr qsizetype longestText = 72;
constexpr int indent = 2;

/// What the graph shows in other ways, or what only editors look at.
bool isStructural(const QString& key) {
  static const QSet<QString> keys{QStringLiteral("nodes"),
                                  QStringLiteral("connections"),
                                  QStringLiteral("publishedInputPorts"),
                                  QStringLiteral("publishedOutputPorts"),
                                  QStringLiteral("ivarInputPortStates"),
                                  QStringLiteral("customInputPortStates"),
                                  QStringLiteral("systemInputPortStates"),
                                  QStringLiteral("customOutputPortStates"),
                                  QStringLiteral("timebase"),
                                  QStringLiteral("userInfo")};
  return keys.contains(key);
}

bool isColor(const PropertyDictionary& value) {
  return value.size() == 4 && value.contains(u"red") && value.contains(u"green") &&
         value.contains(u"blue") && value.contains(u"alpha");
}

QString quoted(QString text) {
  if (text.size() > longestText) text = text.left(longestText) + QStringLiteral("…");
  text.replace(u'\\', QLatin1String("\\\\")).replace(u'"', QLatin1String("\\\""));
  return u'"' + text.replace(u'\n', QLatin1String("\\n")) + u'"';
}

QString written(const PropertyValue& value);

QString written(const PropertyDictionary& value) {
  if (isColor(value)) {
    const auto part = [&](QStringView key) { return value.value(key).toDouble(); };
    return playout::ValueJson::colorText(
        {part(u"red"), part(u"green"), part(u"blue"), part(u"alpha")});
  }
  QStringList entries;
  for (const auto& [key, entry] : value)
    entries.append(key + QStringLiteral(": ") + written(entry));
  return u'{' + entries.join(QStringLiteral(", ")) + u'}';
}

QString written(const PropertyValue& value) {
  switch (value.type()) {
    case PropertyValue::Type::Boolean:
      return value.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    case PropertyValue::Type::Integer:
      return QString::number(value.toInteger());
    case PropertyValue::Type::Real:
      return runtime::numberText(value.toDouble());
    case PropertyValue::Type::String:
      return quoted(value.toString());
    case PropertyValue::Type::Data:
      return QStringLiteral("%1 bytes").arg(value.toData().size());
    case PropertyValue::Type::Array: {
      QStringList elements;
      for (const PropertyValue& element : value.array()) elements.append(written(element));
      return u'[' + elements.join(QStringLiteral(", ")) + u']';
    }
    case PropertyValue::Type::Dictionary:
      return written(value.dictionary());
    default:
      return QStringLiteral("none");
  }
}

/// The lines of one macro's content.
class Outline {
 public:
  Outline(const quartz::QuartzComposition& composition, const QuartzPatch& macro, int depth)
      : m_composition(composition), m_macro(macro), m_depth(depth) {
    note(u"publishedInputPorts", m_published);
    note(u"publishedOutputPorts", m_publishedOutputs);
    for (const auto& entry : macro.state().value(u"connections").array()) link(entry.dictionary());
    for (const auto& [name, entry] : macro.state().value(u"connections").dictionary())
      link(entry.dictionary());
  }

  void appendTo(QString& text) const {
    for (const auto& node : m_macro.nodes()) {
      const QString pad(m_depth * indent, u' ');
      text += pad + head(*node) + u'\n';
      for (const QString& line : lines(*node))
        text += pad + QString(2 * indent, u' ') + line + u'\n';
      Outline(m_composition, *node, m_depth + 1).appendTo(text);
    }
  }

 private:
  using Entries = QMultiHash<QString, PropertyDictionary>;  ///< by the node's key

  void note(QStringView list, Entries& entries) const {
    const auto& array = m_macro.state().value(list).array();
    for (auto entry = array.crbegin(); entry != array.crend(); ++entry)
      entries.insert(entry->dictionary().value(u"node").toString(), entry->dictionary());
  }
  void link(const PropertyDictionary& connection) {
    m_links.insert(connection.value(u"destinationNode").toString(), connection);
  }

  [[nodiscard]] static QString head(const QuartzPatch& node) {
    QString line = node.key() + QStringLiteral(": ") + node.patchClass();
    if (!node.identifier().isEmpty()) line += u':' + node.identifier();
    if (node.name() != node.key()) line += u' ' + quoted(node.name());
    if (node.timebased()) line += QStringLiteral(", timebase ") + node.timebase().toString();
    return line;
  }

  [[nodiscard]] QString published(const PropertyDictionary& entry) const {
    const QString key = entry.value(u"key").toString();
    QString line = QStringLiteral(" <= ") + key;
    const QString label = QuartzPatch::labelOfPublishedPort(entry);
    if (!label.isEmpty() && label != key) line += u' ' + quoted(label);
    const PropertyValue value = m_macro.isRootPatch()
                                    ? m_composition.inputParameterForKey(key)
                                    : entry.value(u"state").dictionary().value(u"value");
    return value.isNull() ? line : line + QStringLiteral(" = ") + written(value);
  }

  /// Inputs by their names, then settings, then outputs.
  [[nodiscard]] QStringList lines(const QuartzPatch& node) const {
    QMap<QString, QString> inputs;
    for (const QStringView states :
         {u"ivarInputPortStates", u"customInputPortStates", u"systemInputPortStates"})
      for (const auto& [port, state] : node.state().value(states).dictionary())
        if (const PropertyValue& value = state.dictionary().value(u"value"); !value.isNull())
          inputs.insert(port, QStringLiteral(" = ") + written(value));
    for (const PropertyDictionary& entry : m_published.values(node.key()))
      inputs.insert(entry.value(u"port").toString(), published(entry));
    for (const PropertyDictionary& entry : m_links.values(node.key()))
      inputs.insert(entry.value(u"destinationPort").toString(),
                    QStringLiteral(" <- ") + entry.value(u"sourceNode").toString() + u'.' +
                        entry.value(u"sourcePort").toString());
    QStringList lines;
    for (auto input = inputs.cbegin(); input != inputs.cend(); ++input)
      lines.append(input.key() + input.value());
    for (const auto& [key, value] : node.state())
      if (!isStructural(key))
        lines.append(QStringLiteral("state %1 = %2").arg(key, written(value)));
    for (const PropertyDictionary& entry : m_publishedOutputs.values(node.key()))
      lines.append(entry.value(u"port").toString() + QStringLiteral(" => ") +
                   entry.value(u"key").toString());
    return lines;
  }

  const quartz::QuartzComposition& m_composition;
  const QuartzPatch& m_macro;
  int m_depth;
  Entries m_published;
  Entries m_publishedOutputs;
  Entries m_links;
};

}  // namespace

QString GraphReport::text() const {
  QString text;
  if (m_composition.rootPatch())
    Outline(m_composition, *m_composition.rootPatch(), 0).appendTo(text);
  return text.chopped(text.endsWith(u'\n') ? 1 : 0);  // as the other reports end
}

}  // namespace cli
