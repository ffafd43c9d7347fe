#include <QSet>

#include "runtime/check/Checks.h"

namespace runtime::check {

using foundation::Findings;
using foundation::PropertyDictionary;
using foundation::PropertyValue;

namespace {

struct Side {
  QStringView list;
  QString word;
  QHash<QString, Port> PatchOutline::*ports;
};

void checkEntry(const PropertyDictionary& entry, const Side& side, const PatchOutline& macro,
                Findings& findings) {
  const QString key = entry.value(u"key").toString();
  const QString nodeKey = entry.value(u"node").toString();
  const QString port = entry.value(u"port").toString();
  const PatchOutline* node = macro.node(nodeKey);
  if (!node) {
    findings.append({QStringLiteral("published-port-missing-node"), macro.path,
                     QStringLiteral("the published %1 '%2' belongs to %3, which is not there")
                         .arg(side.word, key, nodeKey)});
  } else if (node->portsAreKnown && !(node->*side.ports).contains(port)) {
    findings.append({QStringLiteral("published-port-missing-port"), node->path,
                     QStringLiteral("there is no %1 %2 of %3 to publish as '%4'")
                         .arg(side.word, port, node->className(), key)});
  }
}

}  // namespace

void checkPublishedPorts(const PatchOutline& macro, Findings& findings) {
  const Side sides[] = {
      {u"publishedInputPorts", QStringLiteral("input"), &PatchOutline::inputs},
      {u"publishedOutputPorts", QStringLiteral("output"), &PatchOutline::outputs}};
  for (const Side& side : sides) {
    QSet<QString> seen;
    for (const PropertyValue& entry : macro.patch.state().value(side.list).array()) {
      const QString key = entry.dictionary().value(u"key").toString();
      if (seen.contains(key))
        findings.append(
            {QStringLiteral("published-key-twice"), macro.path,
             QStringLiteral("more than one %1 is published as '%2'").arg(side.word, key)});
      seen.insert(key);
      checkEntry(entry.dictionary(), side, macro, findings);
    }
  }
}

}  // namespace runtime::check
