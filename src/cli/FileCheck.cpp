#include "cli/FileCheck.h"

#include <QTemporaryDir>

#include "cli/DocumentLoader.h"
#include "model/CompositionFindings.h"
#include "runtime/CompositionChecker.h"

namespace cli {

namespace {

foundation::Result<foundation::Findings> checkComposition(const QString& path) {
  const auto composition = quartz::QuartzComposition::compositionWithFile(path);
  if (!composition) return tl::unexpected(composition.error());
  return runtime::CompositionChecker::check(**composition, path);
}

/// The graphic itself, and the playout composition that it would be exported to.
foundation::Result<foundation::Findings> checkDocument(const QString& path) {
  const auto document = DocumentLoader::load(path);
  if (!document) return tl::unexpected(document.error().error);
  foundation::Findings findings;
  for (const foundation::Finding& finding : model::compositionFindings(document->composition()))
    findings.append(finding);
  for (const QString& warning : document->warnings())
    findings.append({QStringLiteral("store"), QStringLiteral("document"), warning});
  const QTemporaryDir folder;
  const QString exported = folder.filePath(QStringLiteral("Composition.qtz"));
  if (const auto done = document->exportTo(exported, false); !done) {
    findings.append({QStringLiteral("not-exportable"), QStringLiteral("document"),
                     QStringLiteral("cannot be exported: %1").arg(done.error().text())});
    return findings;
  }
  const auto inExport = checkComposition(exported);
  if (!inExport) return tl::unexpected(inExport.error());
  for (const foundation::Finding& finding : *inExport)
    // What the graphic's components lack was told with their names.
    if (finding.code != QLatin1String("unknown-class") &&
        finding.code != QLatin1String("missing-file"))
      findings.append({finding.code, QStringLiteral("export ") + finding.object, finding.sentence});
  return findings;
}

}  // namespace

foundation::Result<foundation::Findings> checkFile(const QString& path) {
  return DocumentLoader::isDocument(path) ? checkDocument(path) : checkComposition(path);
}

}  // namespace cli
