#include "cli/PatchesReport.h"

#include "runtime/PatchRegistry.h"

namespace cli {

namespace {

QString kindWord(runtime::PatchClass::Kind kind) {
  switch (kind) {
    case runtime::PatchClass::Kind::Processor:
      return QStringLiteral("processor");
    case runtime::PatchClass::Kind::Consumer:
      return QStringLiteral("renderer");
    case runtime::PatchClass::Kind::Provider:
      return QStringLiteral("provider");
    case runtime::PatchClass::Kind::Macro:
      return QStringLiteral("macro");
  }
  return {};
}

QString portsText(const QList<runtime::Port>& ports, const QString& dynamic) {
  QStringList texts;
  for (const runtime::Port& port : ports) texts.append(QStringLiteral("`%1`").arg(port.key));
  if (!dynamic.isEmpty()) texts.append(dynamic);
  QString text = texts.isEmpty() ? QStringLiteral("–") : texts.join(QStringLiteral(", "));
  return text.replace(QLatin1Char('|'), QLatin1String("\\|"));
}

}  // namespace

QString patchesReport() {
  std::map<QString, const runtime::PatchClass*> sorted;
  for (const auto& known : runtime::PatchRegistry::shared().classes())
    sorted[known->identifier.isEmpty() ? known->className
                                       : known->className + QLatin1Char(':') + known->identifier] =
        known.get();
  QStringList lines{
      QStringLiteral("# Patches"),
      QString(),
      QStringLiteral(
          "Made by `tessary patches` from the registrations; %1 classes. A patch without "
          "a remark does what its original does, as far as that is known.")
          .arg(sorted.size()),
      QString(),
      QStringLiteral("| Class | Name | Kind | Inputs | Outputs | Remark |"),
      QStringLiteral("|---|---|---|---|---|---|")};
  for (const auto& [name, known] : sorted)
    lines += QStringLiteral("| `%1` | %2 | %3 | %4 | %5 | %6 |")
                 .arg(name, known->title, kindWord(known->kind),
                      portsText(known->ports.inputs, known->dynamicPorts),
                      portsText(known->ports.outputs, {}), known->status);
  return lines.join(QLatin1Char('\n'));
}

}  // namespace cli
