#include "document/DocumentCommands.h"

#include "document/CompositionDocument.h"
#include "document/DocumentClipboard.h"
#include "model/maintenance/Maintenance.h"

namespace document {

using model::CommandReport;
using model::Composition;
using model::Maintenance;

void DocumentCommands::run(void (TimeCommands::*command)()) {
  if (!m_document.composition()) return;
  TimeCommands commands(*m_document.composition());
  (commands.*command)();
}

void DocumentCommands::deleteSelection() {
  if (Composition* composition = m_document.composition())
    composition->removeComponents(composition->selectedComponents());
}

foundation::Result<void> DocumentCommands::duplicateSelection(QPointF offset,
                                                              QStringList& warnings) {
  DocumentClipboard clipboard(m_document);
  const auto data = clipboard.copy();
  if (!data) return {};
  store::UndoStep step(m_document.context(), tr("Duplicate"));
  if (auto pasted = clipboard.paste(*data, warnings); !pasted) {
    step.cancel();
    return pasted;
  }
  for (model::QuartzComponent* copy : m_document.composition()->selectedComponents())
    copy->moveByDelta(offset.x(), offset.y());
  return {};
}

CommandReport DocumentCommands::upgradeComposition() {
  if (!m_document.composition()) return Maintenance::upgradeReport({});
  QStringList warnings;
  Maintenance maintenance(*m_document.composition(), m_document.standardComponents());
  CommandReport report = Maintenance::upgradeReport(maintenance.upgradeComponents(warnings));
  if (!warnings.isEmpty()) report.text += QStringLiteral("\n\n") + warnings.join(u'\n');
  return report;
}

CommandReport DocumentCommands::makePathsRelative() {
  if (m_document.fileURL().isEmpty()) return Maintenance::saveFirstForRelativePaths();
  if (!m_document.composition()) return Maintenance::relativePathsReport({});
  Maintenance maintenance(*m_document.composition(), m_document.standardComponents());
  return Maintenance::relativePathsReport(maintenance.makePathsRelative());
}

CommandReport DocumentCommands::embedResources() {
  m_document.followPackage();
  if (m_document.fileURL().isEmpty()) return Maintenance::saveFirstForEmbedding();
  if (!m_document.composition()) return Maintenance::embedReport({});
  Maintenance maintenance(*m_document.composition(), m_document.standardComponents());
  const QList<model::EmbeddedResource> resources = maintenance.embedResources();
  CommandReport report = Maintenance::embedReport(resources);
  if (resources.isEmpty()) return report;
  m_document.setResourcesToSave(resources);
  if (auto saved = m_document.saveToURL(m_document.fileURL(), SaveOperation::Save); !saved)
    report.text += QStringLiteral("\n\n") + saved.error().text();
  for (const QString& warning : m_document.saveWarnings())
    report.text += QStringLiteral("\n\n") + warning;
  return report;
}

}  // namespace document
