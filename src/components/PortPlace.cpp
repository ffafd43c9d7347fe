#include "components/PortPlace.h"

#include <QHash>
#include <QStringList>

namespace components {

namespace {

/// Classes whose state creates ports, with the beginnings of their keys; none: all of them.
const QHash<QString, QStringList>& createdPorts() {
  static const QHash<QString, QStringList> ports = {
      {QStringLiteral("QCMath"), {QStringLiteral("operation_"), QStringLiteral("operand_")}},
      {QStringLiteral("QCMultiplexer"), {QStringLiteral("source_")}},
      {QStringLiteral("QCBillboard"),
       {QStringLiteral("inputWidth"), QStringLiteral("inputHeight"), QStringLiteral("inputScale")}},
      {QStringLiteral("QCGradient"),
       {QStringLiteral("inputColor"), QStringLiteral("inputPosition")}},
      {QStringLiteral("QCInterpolation"), {QStringLiteral("inputInterpolation")}},
      {QStringLiteral("QCStructureMember"),
       {QStringLiteral("inputIndex"), QStringLiteral("inputKey")}},
      {QStringLiteral("QCImageDownloader"), {QStringLiteral("inputSignal")}},
      {QStringLiteral("QCSplitter"), {}},
      {QStringLiteral("QCExpression"), {}},
      {QStringLiteral("QCStringFormat"), {}},
      {QStringLiteral("QCJavaScript"), {}},
      {QStringLiteral("QCImageFilter"), {}},
      {QStringLiteral("QCPlugInPatch"), {}}};
  return ports;
}

}  // namespace

QString stateOfPort(const QString& className, const QString& port) {
  if (port.startsWith(QLatin1Char('_'))) return QStringLiteral("systemInputPortStates");
  const auto found = createdPorts().constFind(className);
  if (found != createdPorts().constEnd()) {
    bool created = found->isEmpty();
    for (const QString& beginning : *found) created |= port.startsWith(beginning);
    if (created) return QStringLiteral("customInputPortStates");
  }
  return QStringLiteral("ivarInputPortStates");
}

}  // namespace components
