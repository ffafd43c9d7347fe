#include "cli/CheckCommand.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "cli/CommandOptions.h"
#include "cli/Console.h"
#include "cli/FileCheck.h"

namespace cli {

namespace {

QString asText(const QString& file, const foundation::Findings& findings) {
  QStringList lines;
  for (const foundation::Finding& finding : findings)
    lines += QStringList{file, finding.code, finding.object, finding.sentence}.join(
        QStringLiteral(": "));
  return lines.join(QLatin1Char('\n'));
}

QJsonObject asJson(const QString& file, const foundation::Findings& findings) {
  QJsonArray list;
  for (const foundation::Finding& finding : findings)
    list.append(QJsonObject{{QStringLiteral("code"), finding.code},
                            {QStringLiteral("object"), finding.object},
                            {QStringLiteral("sentence"), finding.sentence}});
  return {{QStringLiteral("file"), file}, {QStringLiteral("findings"), list}};
}

}  // namespace

std::unique_ptr<CommandOptions> CheckCommand::syntax() {
  auto options = std::make_unique<CommandOptions>(
      QStringLiteral("check FILE… [--json]"),
      QStringLiteral(
          "Looks through composition files (.qtz) for what cannot work as meant: "
          "connections and published\nports that lead nowhere, values of a wrong type, "
          "unknown patches, loops, files that are not there.\nIn documents (.composition) it "
          "names what will surprise: fields that are animated, colours that lose their\n"
          "opacity, files of one name, missing fonts; and looks through their export.\n"
          "One line a finding: FILE: CODE: OBJECT: SENTENCE."));
  options->flag(QStringLiteral("json"), QStringLiteral("as JSON, an array with one object a file"));
  return options;
}

ExitStatus CheckCommand::run(const QStringList& arguments) {
  const std::unique_ptr<CommandOptions> made = syntax();
  CommandOptions& options = *made;
  if (const auto status = options.parseFiles(arguments)) return *status;
  const bool json = options.isSet(QStringLiteral("json"));
  QJsonArray files;
  ExitStatus status = ExitStatus::Ok;
  for (const QString& file : options.positionals()) {
    const auto findings = checkFile(file);
    if (!findings) {
      Console::error(findings.error());
      status = ExitStatus::InputUnreadable;
      continue;
    }
    if (!findings->isEmpty() && status == ExitStatus::Ok) status = ExitStatus::Findings;
    if (json)
      files.append(asJson(file, *findings));
    else if (!findings->isEmpty())
      Console::print(asText(file, *findings));
  }
  if (json) Console::print(QString::fromUtf8(QJsonDocument(files).toJson()).trimmed());
  return status;
}

}  // namespace cli
