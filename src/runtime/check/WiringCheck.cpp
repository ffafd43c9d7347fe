#include <QSet>

#include "runtime/check/Checks.h"

namespace runtime::check {

using foundation::Findings;
using foundation::PropertyDictionary;

namespace {

struct Connection {
  QString name;
  QString sourceNode;
  QString sourcePort;
  QString destinationNode;
  QString destinationPort;

  explicit Connection(const PropertyDictionary::Entry& entry) : name(entry.first) {
    const PropertyDictionary& d = entry.second.dictionary();
    sourceNode = d.value(u"sourceNode").toString();
    sourcePort = d.value(u"sourcePort").toString();
    destinationNode = d.value(u"destinationNode").toString();
    destinationPort = d.value(u"destinationPort").toString();
  }
  [[nodiscard]] QString from() const { return sourceNode + QLatin1Char('.') + sourcePort; }
  [[nodiscard]] QString to() const { return destinationNode + QLatin1Char('.') + destinationPort; }
};

void checkEnds(const Connection& c, const PatchOutline& macro, Findings& findings) {
  const PatchOutline* source = macro.node(c.sourceNode);
  const PatchOutline* destination = macro.node(c.destinationNode);
  if (!source)
    findings.append(
        {QStringLiteral("connection-from-missing-node"),
         destination ? destination->path : macro.path,
         QStringLiteral("%1 is connected to %2, which is not there").arg(c.to(), c.sourceNode)});
  if (!destination)
    findings.append({QStringLiteral("connection-to-missing-node"),
                     source ? source->path : macro.path,
                     QStringLiteral("%1 is connected to %2, which is not there")
                         .arg(c.from(), c.destinationNode)});
  if (!source || !destination) return;
  const auto output = source->outputs.constFind(c.sourcePort);
  const auto input = destination->inputs.constFind(c.destinationPort);
  const bool hasOutput = output != source->outputs.constEnd();
  const bool hasInput = input != destination->inputs.constEnd();
  if (!hasOutput && source->portsAreKnown)
    findings.append({QStringLiteral("connection-from-missing-port"), source->path,
                     QStringLiteral("there is no output %1 of %2 to connect to %3")
                         .arg(c.sourcePort, source->className(), c.to())});
  if (!hasInput && destination->portsAreKnown)
    findings.append({QStringLiteral("connection-to-missing-port"), destination->path,
                     QStringLiteral("there is no input %1 of %2 to connect to %3")
                         .arg(c.destinationPort, destination->className(), c.from())});
  if (hasOutput && hasInput && !isConvertible(output->type, input->type))
    findings.append(
        {QStringLiteral("connection-type-mismatch"), destination->path,
         QStringLiteral("%1 gives %2, which does not become %3 at %4")
             .arg(c.from(), portTypeWord(output->type), portTypeWord(input->type), c.to())});
}

void checkKeys(const PatchOutline& macro, Findings& findings) {
  QSet<QString> seen;
  QSet<QString> told;
  for (const auto& node : macro.nodes) {
    const QString key = node->patch.key();
    if (seen.contains(key) && !told.contains(key)) {
      told.insert(key);
      findings.append({QStringLiteral("duplicate-node-key"), node->path,
                       QStringLiteral("several nodes have the key '%1'").arg(key)});
    }
    seen.insert(key);
  }
}

}  // namespace

void checkWiring(const PatchOutline& macro, Findings& findings) {
  checkKeys(macro, findings);
  QHash<QString, QString> sources;  // of each input that is connected
  for (const auto& entry : macro.patch.state().value(u"connections").dictionary()) {
    const Connection connection(entry);
    checkEnds(connection, macro, findings);
    if (const auto first = sources.constFind(connection.to()); first != sources.constEnd())
      findings.append({QStringLiteral("input-connected-twice"),
                       macro.path + QLatin1Char('/') + connection.destinationNode,
                       QStringLiteral("%1 is connected to %2 and to %3")
                           .arg(connection.to(), *first, connection.from())});
    else
      sources.insert(connection.to(), connection.from());
  }
}

}  // namespace runtime::check
