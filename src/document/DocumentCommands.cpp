#include "document/DocumentCommands.h"

#include "document/CompositionDocument.h"
#include "model/maintenance/Maintenance.h"

namespace document {

using model::Attribute;
using model::CommandReport;
using model::Composition;
using model::Maintenance;

void DocumentCommands::jumpToBeginning() {
  Composition* composition = m_document.composition();
  if (!composition) return;
  const bool wasPlaying = composition->playMode();
  composition->setPlayMode(false);
  composition->setEditorTimepoint(0);
  composition->setPlayMode(wasPlaying);
}

void DocumentCommands::jumpToEnd() {
  Composition* composition = m_document.composition();
  if (!composition) return;
  composition->setPlayMode(false);  // at the end playing would begin anew at once
  composition->setEditorTimepoint(composition->duration());
}

void DocumentCommands::play() {
  if (Composition* composition = m_document.composition())
    composition->setPlayMode(!composition->playMode());
}

void DocumentCommands::jumpByFrames(int frames) {
  Composition* composition = m_document.composition();
  if (!composition || composition->ticksPerSecond() == 0) return;
  composition->setPlayMode(false);  // a single frame is to be looked at
  const double frame =
      static_cast<double>(1.0F / static_cast<float>(composition->ticksPerSecond()));
  double timepoint = composition->editorTimepoint() + frames * frame;
  if (composition->validateEditorTimepoint(timepoint)) composition->setEditorTimepoint(timepoint);
}

void DocumentCommands::forKeyFrames(const std::function<void(const Attribute&)>& visit) const {
  if (!m_document.composition()) return;
  for (const model::QuartzComponent* component : m_document.composition()->selectedComponents())
    for (const Attribute* attribute : component->attributes())
      if (attribute->animateable()) visit(*attribute);
}

void DocumentCommands::jumpToNextKeyframe() {
  constexpr double none = 1e14;
  double nearest = none;
  forKeyFrames([&](const Attribute& attribute) {
    const double time = attribute.nextTimePoint(m_document.composition()->editorTimepoint());
    if (time != model::noTimepoint) nearest = std::min(nearest, time);
  });
  if (nearest != none) m_document.composition()->setEditorTimepoint(nearest);
}

void DocumentCommands::jumpToPreviousKeyframe() {
  if (!m_document.composition()) return;
  double nearest = 0;
  forKeyFrames([&](const Attribute& attribute) {
    nearest =
        std::max(nearest, attribute.previousTimePoint(m_document.composition()->editorTimepoint()));
  });
  m_document.composition()->setEditorTimepoint(nearest);
}

void DocumentCommands::addStopFrame() {
  Composition* composition = m_document.composition();
  if (composition && !composition->stopFrameAtTimepoint(composition->editorTimepoint()))
    composition->addStopFrame(composition->editorTimepoint());
}

void DocumentCommands::toggleStopframe() {
  Composition* composition = m_document.composition();
  if (!composition) return;
  if (model::StopFrame* present = composition->stopFrameAtTimepoint(composition->editorTimepoint()))
    composition->removeStopFrame(*present);
  else
    addStopFrame();
}

void DocumentCommands::togglePosterframe() {
  Composition* composition = m_document.composition();
  if (!composition) return;
  const store::UndoStep step(m_document.context(), tr("Set Poster Frame"));
  composition->setPosterFrameTimepoint(composition->editorTimepoint());
}

void DocumentCommands::deleteSelection() {
  if (Composition* composition = m_document.composition())
    composition->removeComponents(composition->selectedComponents());
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
