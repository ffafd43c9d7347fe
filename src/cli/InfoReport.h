#pragma once

#include "render/CompositionSummary.h"

namespace cli {

/// The facts about a composition file as text for people and as JSON for programs.
class InfoReport {
 public:
  InfoReport(QString file, render::CompositionSummary summary,
             const runtime::CompositionRenderer& renderer);
  [[nodiscard]] QString text() const;
  [[nodiscard]] QString json() const;

 private:
  QString m_file;
  render::CompositionSummary m_summary;
  std::vector<runtime::PortAttributes> m_inputs;
  std::vector<runtime::PortAttributes> m_outputs;
  QList<runtime::PatchUse> m_patches;
  QStringList m_findings;
};

}  // namespace cli
