#include "runtime/script/ScriptSource.h"

#include <QRegularExpression>

#include "runtime/script/ScriptTokens.h"

namespace runtime::script {

namespace {

PortType typeOf(QStringView keyword) {
  static const std::pair<QLatin1String, PortType> types[] = {
      {QLatin1String("__boolean"), PortType::Boolean},
      {QLatin1String("__index"), PortType::Index},
      {QLatin1String("__number"), PortType::Number},
      {QLatin1String("__string"), PortType::String},
      {QLatin1String("__color"), PortType::Color},
      {QLatin1String("__image"), PortType::Image},
      {QLatin1String("__structure"), PortType::Structure}};
  for (const auto& [name, type] : types)
    if (keyword == name) return type;
  return PortType::Virtual;
}

/// "__number Z " is the port "Z ": blanks behind a name belong to the key, as files have it.
std::optional<ScriptParameter> parameter(const QString& text) {
  static const QRegularExpression shape(
      QStringLiteral("^\\s*(?:(__\\w+)\\s+)?([^\\[\\]]*?\\S\\s*)(?:\\[\\s*(\\d+)\\s*\\]\\s*)?$"));
  const QRegularExpressionMatch match = shape.match(text);
  if (!match.hasMatch()) return {};
  ScriptParameter found{match.captured(2), match.captured(2).trimmed(), typeOf(match.captured(1)),
                        0};
  if (match.hasCaptured(3)) {
    found.key = found.name;
    found.count = std::clamp(match.captured(3).left(6).toInt(), 1, ScriptSource::mostPorts);
  }
  return found;
}

QList<ScriptParameter> parameters(const QString& list) {
  static const QRegularExpression comment(QStringLiteral("/\\*.*?\\*/|//[^\\n]*"),
                                          QRegularExpression::DotMatchesEverythingOption);
  QList<ScriptParameter> all;
  int ports = 0;
  for (const QString& text : QString(list).remove(comment).split(QLatin1Char(','))) {
    const auto found = parameter(text);
    if (!found) continue;
    ports += found->portCount();
    if (ports > ScriptSource::mostPorts) break;
    all.append(*found);
  }
  return all;
}

/// What the script assigns without declaring it lives as long as the script, but is its own.
QString declarations(const ScriptTokens& tokens) {
  // Words of the language may follow "++", as in "n++ \n if (…)".
  static const QStringList kept =
      QStringLiteral(
          "Math Date Array Object String Number Boolean JSON RegExp Error main arguments eval this "
          "break case catch class const continue debugger default delete do else enum export "
          "extends false finally for function if implements import in instanceof interface let "
          "new null of package private protected public return static super switch throw true try "
          "typeof undefined var void while with yield NaN Infinity")
          .split(QLatin1Char(' '));
  QStringList names = tokens.assignedNames();
  names.removeIf([](const QString& name) { return kept.contains(name); });
  return names.isEmpty() ? QString() : QStringLiteral("var %1;").arg(names.join(QLatin1Char(',')));
}

QString wrapped(const QString& names, const QString& body) {
  return QStringLiteral("(function(Math,_testMode){") + names +
         QStringLiteral("return function(){") + body + QStringLiteral("\n};})");
}

}  // namespace

ScriptSource::ScriptSource(const QString& script, int inputCount, int outputCount) {
  const ScriptTokens tokens(script);
  if (!readHead(script, tokens)) readPositional(script, inputCount, outputCount);
  m_program = wrapped(declarations(tokens), m_program);
}

bool ScriptSource::readHead(const QString& script, const ScriptTokens& tokens) {
  for (qsizetype i = 0; i < tokens.size(); ++i) {
    if (!tokens.is(i, u"function")) continue;
    const bool hasOutputs = tokens.is(i + 1, u"(");
    // The script of an image filter names the type of its only result instead.
    const bool hasType = !hasOutputs && tokens.is(i + 2, u"main");
    const qsizetype outputsEnd = hasOutputs ? tokens.closing(i + 1) : hasType ? i + 1 : i;
    if (outputsEnd < 0 || !tokens.is(outputsEnd + 1, u"main") || !tokens.is(outputsEnd + 2, u"("))
      continue;
    const qsizetype inputsStart = outputsEnd + 2;
    const qsizetype inputsEnd = tokens.closing(inputsStart);
    if (inputsEnd < 0) continue;
    const auto between = [&](qsizetype open, qsizetype close) {
      return script.mid(tokens.at(open).end(), tokens.at(close).start - tokens.at(open).end());
    };
    if (hasOutputs) m_outputs = parameters(between(i + 1, outputsEnd));
    m_inputs = parameters(between(inputsStart, inputsEnd));
    QStringList names;
    for (const ScriptParameter& input : m_inputs) names.append(input.name);
    const qsizetype start = tokens.at(i).start;
    const qsizetype end = tokens.at(inputsEnd).end();
    // The lines of the head stay, so that messages count right.
    const QString lines(script.mid(start, end - start).count(QLatin1Char('\n')), QLatin1Char('\n'));
    m_program = script.left(start) +
                QStringLiteral("function main(%1)").arg(names.join(QLatin1Char(','))) + lines +
                script.mid(end) + QStringLiteral("\n;return main;");
    return true;
  }
  return false;
}

void ScriptSource::readPositional(const QString& script, int inputCount, int outputCount) {
  if (inputCount > 0)
    m_inputs.append({QStringLiteral("input"), QStringLiteral("inputs"), PortType::Virtual,
                     std::min(inputCount, mostPorts)});
  if (outputCount > 0)
    m_outputs.append({QStringLiteral("output"), QStringLiteral("outputs"), PortType::Virtual,
                      std::min(outputCount, mostPorts)});
  m_program = QStringLiteral("return function(inputs){var outputs=[];") + script +
              QStringLiteral("\n;return {outputs:outputs};};");
}

}  // namespace runtime::script
